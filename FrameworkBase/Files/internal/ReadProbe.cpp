#include <FrameworkBase/Files/internal/ReadProbe.h>

#include <FrameworkBase/Files/FileHandle.h>

bool OpensForReading(const std::string& path) {
    std::FILE* const file = CreateFile(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, 0, OPEN_EXISTING,
                                       FILE_ATTRIBUTE_NORMAL, 0);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    CloseHandle(file);
    return true;
}
