#include <FrameworkBase/FileNames/Extensions.h>

#include "tests/support/Tables.h"

using namespace Tolvex::FileNames;
using namespace std::string_literals;

// What must hold for all paths is checked by PathsFuzz, whose inputs the tests replay.

TEST(Extensions, DotsAndSlashesAreMistaken) {
    EXPECT_TRUE(Maps(GetExtension, "song.sng => .sng | /a.b/song => /a.b/song | a.b\\c => .b\\c"));
    EXPECT_TRUE(Maps(GetExtensionWithoutDot,
                     ".wav => wav | a.tar.gz => gz | a. => . | . => . | wav =>  |  =>  | /a.b/c => b/c"));
    EXPECT_TRUE(Maps(ExtensionChange, "a.txt, .wav => a.wav | /x.y/a, .wav => /x.y/a.wav | a.txt, wav => awav"));
    EXPECT_TRUE(Maps(ForceExtension,
                     "Take.WAV, .wav => Take.WAV | take.aif, .wav => take.wav | take, .wav => take.wav | "
                     "wav, .wav => wav.wav | .wav, .wav => .wav | xwav, .wav => xwav.wav | a., wav => a. | "
                     "a.b, wav => awav | a.gz, .tar.gz => a.gz | ,  => "));
    EXPECT_TRUE(Maps(CheckAppendExtension, "a.wav, .wav => a.wav | a.WAV, .wav => a.WAV | a, .wav => a.wav | "
                                           "a.mp3, .wav => a.mp3.wav | a.mp3, wav => a.mp3wav | b, .a => b.a | "
                                           "the heap as it is long, .the heap as it is long => "
                                           "the heap as it is long.the heap as it is long"));
    EXPECT_TRUE(Maps(AppendStringBeforeFilename,
                     "/a/take.wav, old  => /a/old take.wav | take.wav, old  => old take.wav | /a/, old  => /a/old "));
    EXPECT_EQ(AppendStringBeforeFilename("/a\0/b\0c"s, "x"), "/a\0/xa"s);
    const std::string known(48, 'e'); // no more than that is compared
    EXPECT_EQ(CheckAppendExtension("long name." + known, '.' + known + "tail"), "long name." + known);
    EXPECT_EQ(CheckAppendExtension("x." + known, '.' + known + "tail"), "x." + known + '.' + known + "tail");
    std::string name = "/a.b/c", extension = "wav";
    EXPECT_EQ(extension_change(name.data(), extension.data()), 1);
    EXPECT_STREQ(name.c_str(), "/a.wav");
}
