#include <FrameworkBase/FileNames/Extensions.h>
#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/FileNames/RelativePaths.h>

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <boost/filesystem/path.hpp>
#include <cstring>
#include <filesystem>
#include <glib.h>

using namespace Tolvex::FileNames;
using BoostPath = boost::filesystem::path;
using StdPath = std::filesystem::path;
using String = std::string;

namespace {

void Lengths(benchmark::internal::Benchmark* job) { job->ArgName("bytes")->Arg(20)->Arg(80)->Arg(320); }

/// Returns the path of a folder, of `length` bytes and without "/" at the end.
std::string FolderOf(std::int64_t length) {
    std::string folder;
    while (static_cast<std::int64_t>(folder.size()) < length) {
        folder += "/Album two/Audio files";
    }
    folder.resize(static_cast<std::size_t>(length), 'x');
    std::replace(folder.end() - 1, folder.end(), '/', 'x');
    return folder;
}

/// Returns the path of a file, of `length` bytes.
std::string FileOf(std::int64_t length) { return FolderOf(length - 10) + "/take1.wav"; }

/// Frees a result of GLib, as its callers have to.
char* Freed(char* text) {
    g_free(text);
    return text;
}

// Every peer gets its paths in its own type: that of `path`, which comes in empty.

constexpr auto OnFile = [](benchmark::State& state, auto path, auto call) {
    const std::string text = FileOf(state.range());
    path = text.c_str();
    for (auto _ : state) {
        benchmark::DoNotOptimize(call(path));
    }
};

constexpr auto LastComponent = OnFile;

BENCHMARK_CAPTURE(LastComponent, FrameworkBase, String(), [](auto& path) { return GetFilenameWithoutPath(path); })
    -> Apply(Lengths);
BENCHMARK_CAPTURE(LastComponent, floor, String(), [](auto& path) { return path.substr(0, 9); }) -> Apply(Lengths);
BENCHMARK_CAPTURE(LastComponent, std::filesystem, StdPath(), [](auto& path) { return path.filename(); })
    -> Apply(Lengths);
BENCHMARK_CAPTURE(LastComponent, Boost, BoostPath(), [](auto& path) { return path.filename(); }) -> Apply(Lengths);
BENCHMARK_CAPTURE(LastComponent, Qt, QString(), [](auto& path) { return QFileInfo(path).fileName(); })
    -> Apply(Lengths);
BENCHMARK_CAPTURE(LastComponent, GLib, "", [](auto path) { return Freed(g_path_get_basename(path)); })
    -> Apply(Lengths);

constexpr auto FolderPart = OnFile;

BENCHMARK_CAPTURE(FolderPart, FrameworkBase, String(), GetFolderPathFromFilename)->Apply(Lengths);
BENCHMARK_CAPTURE(FolderPart, floor, String(), [](auto& path) { return path.substr(10); }) -> Apply(Lengths);
BENCHMARK_CAPTURE(FolderPart, std::filesystem, StdPath(), [](auto& path) { return path.parent_path(); })
    -> Apply(Lengths);
BENCHMARK_CAPTURE(FolderPart, Boost, BoostPath(), [](auto& path) { return path.parent_path(); }) -> Apply(Lengths);
BENCHMARK_CAPTURE(FolderPart, Qt, QString(), [](auto& path) { return QFileInfo(path).path(); }) -> Apply(Lengths);
BENCHMARK_CAPTURE(FolderPart, GLib, "", [](auto path) { return Freed(g_path_get_dirname(path)); }) -> Apply(Lengths);

constexpr auto Extension = OnFile;

BENCHMARK_CAPTURE(Extension, FrameworkBase, String(), GetExtension)->Apply(Lengths);
BENCHMARK_CAPTURE(Extension, floor, String(), [](auto& path) { return path.substr(0, 4); }) -> Apply(Lengths);
BENCHMARK_CAPTURE(Extension, std::filesystem, StdPath(), [](auto& path) { return path.extension(); }) -> Apply(Lengths);
BENCHMARK_CAPTURE(Extension, Boost, BoostPath(), [](auto& path) { return path.extension(); }) -> Apply(Lengths);
BENCHMARK_CAPTURE(Extension, Qt, QString(), [](auto& path) { return QFileInfo(path).suffix(); }) -> Apply(Lengths);

constexpr auto ChangeExtension = OnFile;

BENCHMARK_CAPTURE(ChangeExtension, FrameworkBase, String(), [](auto& path) { return ExtensionChange(path, ".aif"); })
    -> Apply(Lengths);
BENCHMARK_CAPTURE(ChangeExtension, floor, String(), [](auto path) { return path; }) -> Apply(Lengths);
BENCHMARK_CAPTURE(ChangeExtension, std::filesystem, StdPath(), [](auto path) { return path.replace_extension(".aif"); })
    -> Apply(Lengths);
BENCHMARK_CAPTURE(ChangeExtension, Boost, BoostPath(), [](auto path) { return path.replace_extension(".aif"); })
    -> Apply(Lengths);
BENCHMARK_CAPTURE(ChangeExtension, Qt, QString(), [](auto& path) {
    const QFileInfo file(path);
    return QString(file.path() + '/' + file.completeBaseName() + ".aif");
}) -> Apply(Lengths);

constexpr auto IsBelow = [](benchmark::State& state, auto path, auto call) {
    const std::string text = FileOf(state.range());
    const std::string folderText = FolderOf(state.range() - 10);
    path = text.c_str();
    auto folder = path;
    folder = folderText.c_str();
    for (auto _ : state) {
        benchmark::DoNotOptimize(call(path, folder));
    }
};

/// There is no function for it in std::filesystem and Boost.
constexpr auto BeginsWith = [](auto& path, auto& folder) {
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first == folder.end();
};

BENCHMARK_CAPTURE(IsBelow, FrameworkBase, String(), IsPathBelow)->Apply(Lengths);
BENCHMARK_CAPTURE(IsBelow, floor, String(), [](auto& path, auto& folder) {
    return std::memcmp(path.data(), folder.data(), folder.size());
}) -> Apply(Lengths);
BENCHMARK_CAPTURE(IsBelow, std::filesystem, StdPath(), BeginsWith)->Apply(Lengths);
BENCHMARK_CAPTURE(IsBelow, Boost, BoostPath(), BeginsWith)->Apply(Lengths);
BENCHMARK_CAPTURE(IsBelow, Qt, QString(), [](auto& path, auto& folder) { return path.startsWith(folder + '/'); })
    -> Apply(Lengths);

/// The folders share the first half of their paths.
constexpr auto RelativePath = [](benchmark::State& state, auto from, auto call) {
    const std::string text = FolderOf(state.range() - 1) + '/';
    std::string otherText = text;
    const auto half = otherText.begin() + state.range() / 2;
    std::replace_if(
        half, otherText.end(), [](char each) { return each != '/'; }, 'z');
    from = text.c_str();
    auto to = from;
    to = otherText.c_str();
    for (auto _ : state) {
        benchmark::DoNotOptimize(call(from, to));
    }
};

BENCHMARK_CAPTURE(RelativePath, FrameworkBase, String(), [](auto& from, auto& to) {
    bool nothingShared = false;
    return GetRelativePath(to, from, nothingShared);
}) -> Apply(Lengths);
BENCHMARK_CAPTURE(RelativePath, floor, String(), [](auto& /*from*/, auto& to) { return to; }) -> Apply(Lengths);
BENCHMARK_CAPTURE(RelativePath, std::filesystem, StdPath(),
                  [](auto& from, auto& to) { return to.lexically_relative(from); }) -> Apply(Lengths);
BENCHMARK_CAPTURE(RelativePath, Boost, BoostPath(), [](auto& from, auto& to) { return to.lexically_relative(from); })
    -> Apply(Lengths);
BENCHMARK_CAPTURE(RelativePath, Qt, QString(), [](auto& from, auto& to) { return QDir(from).relativeFilePath(to); })
    -> Apply(Lengths);

} // namespace
