#include <FrameworkBase/FileNames/Extensions.h>

#include "tests/FileNames/PathTables.h"

#include <cstring>
#include <strings.h>

using namespace Tolvex::FileNames;
using namespace std::string_literals;

namespace {

std::string ChangeInPlace(std::string name, std::string ext) {
    std::vector<char> buffer(name.size() + ext.size() + 2);
    std::strcpy(buffer.data(), name.c_str());
    EXPECT_EQ(extension_change(buffer.data(), ext.data()), 1);
    return buffer.data();
}

} // namespace

TEST(Extensions, Tables) {
    EXPECT_TRUE(Maps(GetExtension,
                     "song.sng => .sng | song => song | /a.b/song => /a.b/song | /a.b/c.sng => .sng |  =>  | "
                     "a.tar.gz => .gz | .hidden => .hidden | a. => . | a.b\\c => .b\\c"));
    EXPECT_TRUE(Maps(GetExtensionWithoutDot,
                     ".wav => wav | a.tar.gz => gz | a. => . | . => . | wav =>  |  =>  | /a.b/c => b/c"));
    EXPECT_TRUE(
        Maps(ChangeInPlace,
             "take.aif, wav => take.wav | take, wav => take.wav | /a.b/c, wav => /a.wav | ,  => . | a.b,  => a."));
    EXPECT_TRUE(Maps(ExtensionChange, "a.txt, .wav => a.wav | a, .wav => a.wav | /x.y/a, .wav => /x.y/a.wav | "
                                      "a.txt, wav => awav | a.b.c,  => a.b | a.b\\c, .d => a.d"));
    EXPECT_TRUE(Maps(ForceExtension,
                     "Take.WAV, .wav => Take.WAV | take.aif, .wav => take.wav | take, .wav => take.wav | "
                     "wav, .wav => wav.wav | .wav, .wav => .wav | xwav, .wav => xwav.wav | a., wav => a. | "
                     "a.b, wav => awav | a.gz, .tar.gz => a.gz"));
    EXPECT_TRUE(Maps(CheckAppendExtension, "a.wav, .wav => a.wav | a.WAV, .wav => a.WAV | a, .wav => a.wav | "
                                           "a.mp3, .wav => a.mp3.wav | a.mp3, wav => a.mp3wav"));
    EXPECT_TRUE(Maps(HasExtension, "/a.b/c => true | .x => true | a. => true | abc => false |  => false"));
    EXPECT_TRUE(
        Maps(GetFilenameWithoutExtension, "/a/b/take.wav => /a/b/take | /a.b/take => /a | a => a | a. => a | .x => "));
    EXPECT_TRUE(Maps(AppendStringBeforeExtension,
                     "take.wav,  2 => take 2.wav | take,  2 => take 2take | /a.b/c, x => /a.b/cx/a.b/c"));
    EXPECT_TRUE(Maps(AppendStringBeforeFilename,
                     "/a/take.wav, old  => /a/old take.wav | take.wav, old  => old take.wav | /a/, old  => /a/old "));
    EXPECT_EQ(AppendStringBeforeFilename("/a\0/b\0c"s, "x"), "/a\0/xa"s);
    const std::string known(48, 'e'); // no more than that is compared
    EXPECT_EQ(CheckAppendExtension("long name." + known, '.' + known + "tail"), "long name." + known);
    EXPECT_EQ(CheckAppendExtension("x." + known, '.' + known + "tail"), "x." + known + '.' + known + "tail");
}

TEST(Extensions, StemAndExtensionOfEveryCorpusPathMakeItUpAgain) {
    for (std::string path : pathCorpus) {
        const std::size_t dot = path.rfind('.');
        const bool inName = dot != std::string::npos && path.find('/', dot) == std::string::npos;
        EXPECT_EQ(GetExtension(path), inName ? path.substr(dot) : path);
        EXPECT_EQ(ExtensionChange(path, "+"), inName ? path.substr(0, dot) + "+" : path + "+") << path;
        EXPECT_EQ(GetFilenameWithoutExtension(path), path.substr(0, dot));
        for (const std::string extension : {".wav", ".SNG", "."}) {
            const std::string forced = ForceExtension(path, extension);
            EXPECT_EQ(ForceExtension(forced, extension), forced) << path;
            EXPECT_TRUE(forced == path || forced == ExtensionChange(path, extension)) << path;
        }
    }
}
