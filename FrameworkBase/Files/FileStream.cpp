#include <FrameworkBase/Files/FileStream.h>

#include <FrameworkBase/Files/internal/TextField.h>

namespace FlapFiles {

long long CFileBase::GetCurrentPosition() { return Seek(0, SEEK_CUR); }

long long CFileBase::GetSizeLeft() {
    const long long position = Seek(0, SEEK_CUR);
    const long long end = Seek(0, SEEK_END);
    Seek(position, SEEK_SET);
    return end - position;
}

template <class T>
void CFileBase::ReadData(T& value) {
    if (Read(&value, sizeof value) != static_cast<long long>(sizeof value)) {
        throw TolvexException("Error reading data");
    }
}

template <class T>
void CFileBase::WriteData(const T& value) {
    if (Write(&value, sizeof value) != static_cast<long long>(sizeof value)) {
        throw TolvexException("Error writing data");
    }
}

template void CFileBase::ReadData<int>(int& value);
template void CFileBase::ReadData<long long>(long long& value);
template void CFileBase::WriteData<int>(const int& value);
template void CFileBase::WriteData<long long>(const long long& value);

void CFile::DoCreate(const char* fileName, unsigned int desiredAccess, unsigned int shareMode,
                     unsigned int creationDisposition) {
    handle = CreateFile(fileName, desiredAccess, shareMode, 0, creationDisposition, FILE_ATTRIBUTE_NORMAL, 0);
    if (handle == INVALID_HANDLE_VALUE) {
        throw TolvexException("Error opening file");
    }
}

long long CFile::Write(const void* data, long long size) {
    unsigned int written = 0;
    if (WriteFile(handle, data, static_cast<unsigned int>(size), &written, 0) == 0 || written != size) {
        throw TolvexException("Error writing to file");
    }
    return size;
}

long long CFile::Read(void* data, long long size) {
    return static_cast<unsigned int>(std::fread(data, 1, static_cast<unsigned int>(size), handle));
}

long long CFile::Seek(long long offset, unsigned int origin) {
    if (handle == nullptr || std::fseek(handle, static_cast<long>(offset), static_cast<int>(origin)) != 0) {
        return INVALID_SET_FILE_POINTER;
    }
    return std::ftell(handle);
}

CFileBase* CFile::Clone() {
    auto* clone = new CFile;
    clone->handle = handle;
    return clone;
}

bool CFile::Close() {
    std::FILE* const closing = handle;
    handle = nullptr;
    return CloseHandle(closing) != 0;
}

bool CFile::Flush() { return TolvexFlushFileBuffers(handle) != 0; }

} // namespace FlapFiles

std::string DeSerializeString(FlapFiles::CFileBase& file) { return ReadTextField(file); }
