// A module of another team: it sees the installed package alone, and is run wherever that package is put.
#include <FrameworkBase/Base/Platform.h>
#include <FrameworkBase/Base/TolvexException.h>
#include <FrameworkBase/Base/Version.h>
#include <FrameworkBase/FileNames/FileOperations.h>
#include <FrameworkBase/FileNames/FileTypes.h>
#include <FrameworkBase/FileNames/KnownFolders.h>
#include <FrameworkBase/FileNames/UniqueNames.h>
#include <FrameworkBase/Files/FileHandle.h>
#include <FrameworkBase/Files/FileStream.h>

#include <array>
#include <iostream>
#include <string>

namespace {

// An exception thrown in the library arrives here by its type, and by no other.
std::string MessageOfAFailedOpen(const std::string& path) {
    FlapFiles::CFile file;
    try {
        file.DoCreate(path.c_str(), GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    } catch (const std::exception&) {
        return "a standard exception";
    } catch (const TolvexException& exception) {
        return exception.message;
    }
    return "none";
}

long long WriteAndReadBack(const std::string& path, long long value) {
    FlapFiles::CFile file;
    file.DoCreate(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS);
    file.WriteData(value);
    file.Seek(0, SEEK_SET);
    long long readBack = 0;
    file.ReadData(readBack);
    file.Close();
    Tolvex::FileNames::DeleteFileA(path.c_str());
    return readBack;
}

std::string ProgramFolder() {
    std::array<char, 1040> buffer{};
    Tolvex::path_directory_programma(buffer.data(), false);
    return buffer.data();
}

} // namespace

int main(int argumentCount, char** arguments) {
    const std::string newFile = Tolvex::FileNames::GetUniqueTempFilename(Tolvex::FileExtensionWav);
    Tolvex::pathFolderOverride = "/opt/app/";
    const bool works = argumentCount == 2 && FrameworkBase::Version::Text == arguments[1] &&
                       MessageOfAFailedOpen(newFile) == "Error opening file" && WriteAndReadBack(newFile, -5) == -5 &&
                       Tolvex::FileNames::ComposeNewFilenameAndCheckExists(newFile, "") == newFile &&
                       ProgramFolder() == "/opt/app/" && GetUIScaleFactor() == 1.0F;
    std::cout << (works ? "works" : "does not work") << '\n';
    return works ? 0 : 1;
}
