#include "Database.h"

#include "Text.h"

#include <FrameworkBase/Files/FileHandle.h>
#include <FrameworkBase/Files/FileStream.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// A file that is closed at the end of its scope, which the library leaves to its users.
struct File : FlapFiles::CFile {
    File(const std::string& path, unsigned int access, unsigned int disposition) {
        DoCreate(path.c_str(), access, FILE_SHARE_READ, disposition);
    }
    ~File() override { CFile::Close(); }
};

/// The text at the position of `file`. On a bad one the library's reader returns what it can; the number of bytes that
/// it took tells: 4 for the length, the text, and its one zero byte.
std::string ReadText(File& file) {
    const long long start = file.GetCurrentPosition();
    std::string text = DeSerializeString(file);
    if (file.GetCurrentPosition() - start != 4 + static_cast<long long>(text.size()) + 1) {
        throw TolvexException("bad text");
    }
    return text;
}

void WriteText(File& file, const std::string& text) {
    const int size = static_cast<int>(text.size()) + 1;
    file.WriteData(size);
    file.Write(text.c_str(), size);
}

Records ReadRecords(File file) {
    int version = 0;
    int count = 0;
    file.ReadData(version);
    file.ReadData(count);
    Records records;
    for (int i = 0; i < count; ++i) {
        Record& record = records[ReadText(file)];
        file.ReadData(record.added);
        record.origin = version == 2 ? ReadText(file) : "";
    }
    if (version < 1 || version > 2 || static_cast<int>(records.size()) != count || file.GetSizeLeft() != 0) {
        throw TolvexException("bad version, count or size");
    }
    return records;
}

void WriteRecords(File file, const Records& records) {
    file.WriteData(2);
    file.WriteData(static_cast<int>(records.size()));
    for (const auto& [path, record] : records) {
        WriteText(file, path);
        file.WriteData(record.added);
        WriteText(file, record.origin);
    }
    if (!file.Close()) { // only now is it certain that the disk took it all
        throw TolvexException("Error writing to file");
    }
}

} // namespace

Records ReadDatabase(const std::string& path, bool toChange) {
    const std::string name = "the trash database " + Shown(path);
    const fs::file_status status = fs::symlink_status(path);
    if (!exists(status)) {
        return {};
    }
    RefuseIf(!is_regular_file(status), name + " is not a file");
    if (access(path.c_str(), toChange ? R_OK | W_OK : R_OK) != 0) {
        throw Refusal(name + " may not be " + (toChange ? "changed: " : "read: ") + std::strerror(errno));
    }
    try {
        return ReadRecords({path, GENERIC_READ, OPEN_EXISTING});
    } catch (const TolvexException& exception) {
        throw Refusal(name + " is damaged (" + exception.message + "). Nothing was changed. docs/trash-database.md " +
                      "tells what can be saved from it; without the file, the items are listed as not recorded");
    }
}

void WriteDatabase(const std::string& path, const Records& records, bool inPlace) {
    const std::string draft = inPlace ? path : path + ".new";
    try {
        WriteRecords({draft, GENERIC_WRITE, CREATE_ALWAYS}, records);
        fs::rename(draft, path);
    } catch (const TolvexException& exception) {
        inPlace || fs::remove(draft);
        throw Refusal("the trash database " + Shown(path) + " cannot be written: " + exception.message);
    }
}
