#include "Database.h"

#include "OpenFile.h"
#include "Text.h"

#include <filesystem>

namespace {

/// The text at the position of `file`. On a bad one the library's reader returns what it can; the number of bytes that
/// it took tells: 4 for the length, the text, and its one zero byte.
std::string ReadText(FlapFiles::CFile& file) {
    const long long start = file.GetCurrentPosition();
    std::string text = DeSerializeString(file);
    if (file.GetCurrentPosition() - start != 4 + static_cast<long long>(text.size()) + 1) {
        throw TolvexException("bad text");
    }
    return text;
}

void WriteText(FlapFiles::CFile& file, const std::string& text) {
    const int size = static_cast<int>(text.size()) + 1;
    file.WriteData(size);
    file.Write(text.c_str(), size);
}

Records ReadRecords(FlapFiles::CFile& file) {
    int version = 0;
    int count = 0;
    file.ReadData(version);
    file.ReadData(count);
    Records records;
    for (int i = 0; i < count; ++i) {
        const std::string path = ReadText(file);
        Record& record = records[path];
        file.ReadData(record.added);
        if (version == 2) {
            record.origin = ReadText(file);
        }
    }
    if (version < 1 || version > 2 || static_cast<int>(records.size()) != count || file.GetSizeLeft() != 0) {
        throw TolvexException("bad version, count or size");
    }
    return records;
}

} // namespace

Records ReadDatabase(const std::string& path, Use use) {
    const std::filesystem::file_status status = std::filesystem::symlink_status(path);
    if (!exists(status)) {
        return {};
    }
    if (!is_regular_file(status)) {
        throw Refusal("the trash database " + Shown(path) + " is not a file");
    }
    try {
        return ReadRecords(
            *Open(path, use == Use::Change ? GENERIC_READ | GENERIC_WRITE : GENERIC_READ, OPEN_EXISTING));
    } catch (const TolvexException& exception) {
        throw Refusal("the trash database " + Shown(path) + " is damaged or locked: " + exception.message);
    }
}

void WriteDatabase(const std::string& path, const Records& records) {
    const std::string draft = path + ".new";
    const OpenFile file = Open(draft, GENERIC_WRITE, CREATE_ALWAYS);
    file->WriteData(2);
    file->WriteData(static_cast<int>(records.size()));
    for (const auto& [item, record] : records) {
        WriteText(*file, item);
        file->WriteData(record.added);
        WriteText(*file, record.origin);
    }
    if (!file->Close()) { // only now is it certain that the disk took it all
        throw TolvexException("Error writing to file");
    }
    std::filesystem::rename(draft, path);
}
