#include "FrameworkBase/Files/internal/ReadProbe.h"

#include "tests/support/DiskTest.h"

#include <sys/stat.h>

using ReadProbe = DiskTest;

TEST_F(ReadProbe, WhatOpensForReadingIsThere) {
    EXPECT_TRUE(OpensForReading(MakeFile("file", "text")));
    EXPECT_TRUE(OpensForReading(MakeFolder("folder"))) << "callers rely on folders passing";
    for (const char* missing : {"missing", "file/", "missing/file"}) {
        EXPECT_FALSE(OpensForReading(Path(missing)));
    }
    EXPECT_FALSE(OpensForReading(""));
    chmod(Path("file").c_str(), 0222);
    const AsOrdinaryUser user;
    EXPECT_FALSE(OpensForReading(Path("file")));
}
