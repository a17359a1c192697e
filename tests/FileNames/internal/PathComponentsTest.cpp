#include <FrameworkBase/FileNames/internal/PathComponents.h>

#include "tests/FileNames/PathTables.h"
#include <FrameworkBase/FileNames/PathNames.h>
#include <FrameworkBase/FileNames/internal/ExtensionRules.h>
#include <FrameworkBase/FileNames/internal/FolderStream.h>

#include <strings.h>

using namespace Tolvex::FileNames;

TEST(PathComponents, Tables) {
    EXPECT_TRUE(Maps(ComposePath, ",  =>  | , /b => /b | a,  => a/ | a/,  => a/ | a, b => a/b | a/, b => a/b | "
                                  "a, /b => a//b | a/, /b => a//b | a\\, b => a\\/b"));
    EXPECT_TRUE(Maps(RemoveExtension, "a.b.c => a.b | /x.y/a => /x.y/a | .x => "));
    EXPECT_TRUE(Maps(EndsWithExtension,
                     "Mix.SNG, sng => true | .sng, sng => true | sng, sng => false | "
                     "xsng, sng => false | on the heap as it is long, on the heap as it is long => false | a.,  => "
                     "true | a,  => false | ,  => false"));
    const auto split = [](const std::string& path) {
        std::vector<std::string> parts = {"kept"};
        SplitPath(path, parts);
        return Joined(parts, ";");
    };
    EXPECT_TRUE(Maps(split,
                     " => kept | / => kept | // => kept; | //a => kept;;a | /a/b/ => kept;a;b | a//b => kept;a;;b | "
                     "\\a\\b\\ => kept;a;b | /a/./../b => kept;a;.;..;b"));
}

TEST(PathComponents, CorpusIsSplitAndJoinedByTheRules) {
    for (const std::string& path : pathCorpus) {
        SCOPED_TRACE(path);
        std::vector<std::string> parts;
        SplitPath(path, parts);
        EXPECT_EQ(parts, Components(path));
        for (const std::string& other : pathCorpus) {
            EXPECT_EQ(ComposePath(path, other), CheckFolderHasSeparator(path) + other) << other;
            EXPECT_TRUE(IsPathBelow(ComposePath(path, other), path)) << other;
            EXPECT_EQ(SameComponent(path, other), strcasecmp(path.c_str(), other.c_str()) == 0) << other;
        }
    }
}

TEST(FolderStream, ListIsReplacedOnlyWhenTheFolderOpens) {
    std::vector<std::string> names = {"before"};
    EXPECT_FALSE(DoGetFolderFiles<false>("/none", names) || DoGetFolderFiles<true>("/none", names));
    EXPECT_EQ(Joined(names), "before");
    EXPECT_TRUE(DoGetFolderFiles<false>("/", names) && std::count(names.begin(), names.end(), "before") == 0);
}
