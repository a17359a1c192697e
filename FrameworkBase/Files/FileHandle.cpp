#include <FrameworkBase/Files/FileHandle.h>

namespace {

const char* OpenMode(unsigned int desiredAccess, unsigned int creationDisposition) {
    if ((desiredAccess & GENERIC_WRITE) == 0) {
        return "rb";
    }
    const bool readsToo = desiredAccess >= (GENERIC_READ | GENERIC_WRITE);
    if (creationDisposition == CREATE_ALWAYS) {
        return readsToo ? "w+b" : "wb";
    }
    if (creationDisposition == OPEN_EXISTING || (creationDisposition == OPEN_ALWAYS && readsToo)) {
        return "r+b";
    }
    throw TolvexException("Unsupported");
}

} // namespace

std::FILE* CreateFile(const char* fileName, unsigned int desiredAccess, unsigned int /*shareMode*/,
                      unsigned int /*securityAttributes*/, unsigned int creationDisposition,
                      unsigned int /*flagsAndAttributes*/, unsigned int /*templateFile*/) {
    std::FILE* file = std::fopen(fileName, OpenMode(desiredAccess, creationDisposition));
    if (file == nullptr && creationDisposition == OPEN_ALWAYS) {
        file = std::fopen(fileName, "w+b");
    }
    return file == nullptr ? INVALID_HANDLE_VALUE : file;
}

int WriteFile(std::FILE* file, const void* buffer, long long bytesToWrite, unsigned int* bytesWritten,
              unsigned int /*overlapped*/) {
    if (bytesToWrite == 0) {
        return 1;
    }
    if (file == nullptr) {
        return 0;
    }
    const auto written =
        static_cast<unsigned int>(std::fwrite(buffer, 1, static_cast<std::size_t>(bytesToWrite), file));
    if (bytesWritten != nullptr) {
        *bytesWritten = written;
    }
    return written != 0 ? 1 : 0;
}

int CloseHandle(std::FILE* file) {
    if (file == nullptr || file == INVALID_HANDLE_VALUE) {
        return 0;
    }
    return std::fclose(file) == 0 ? 1 : 0;
}

int TolvexFlushFileBuffers(std::FILE* file) {
    if (file != nullptr) {
        std::fflush(file);
    }
    return 1;
}
