// A module of another team, run wherever the package is put: the versions agree, the library's variables are its own,
// and an exception thrown in the library arrives here by its type.
#include <FrameworkBase/Base/Platform.h>
#include <FrameworkBase/Base/TolvexException.h>
#include <FrameworkBase/Base/Version.h>
#include <FrameworkBase/FileNames/KnownFolders.h>
#include <FrameworkBase/Files/FileHandle.h>
#include <FrameworkBase/Files/FileStream.h>

#include <array>
#include <string>

int main(int /*argumentCount*/, char** arguments) {
    std::array<char, 1040> folder{};
    Tolvex::pathFolderOverride = "/opt/app/";
    Tolvex::path_directory_programma(folder.data(), false);
    try {
        FlapFiles::CFile().DoCreate("/missing/file", GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    } catch (const TolvexException& exception) {
        const bool works = FrameworkBase::Version::Text == arguments[1] &&
                           exception.message == std::string("Error opening file") &&
                           folder.data() == std::string("/opt/app/");
        return works ? 0 : 1;
    }
    return 1;
}
