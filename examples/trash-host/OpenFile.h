#pragma once

#include <FrameworkBase/Files/FileHandle.h>
#include <FrameworkBase/Files/FileStream.h>

#include <memory>
#include <string>

struct CloseFile {
    void operator()(FlapFiles::CFile* file) const {
        file->Close();
        delete file;
    }
};

/// A file that is closed at the end of its scope, which the library leaves to its users.
using OpenFile = std::unique_ptr<FlapFiles::CFile, CloseFile>;

/// Throws what CFile::DoCreate throws.
inline OpenFile Open(const std::string& path, unsigned int access, unsigned int disposition) {
    OpenFile file(new FlapFiles::CFile);
    file->DoCreate(path.c_str(), access, FILE_SHARE_READ, disposition);
    return file;
}
