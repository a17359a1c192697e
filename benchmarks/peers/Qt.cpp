#include "benchmarks/Inputs.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace {

QString Text(Path text) { return QString::fromStdString(text); }

void Load(Records& records) {
    QFile file(Text(DatabaseFile()));
    file.open(QIODevice::ReadOnly);
    QDataStream stream(&file);
    ReadRecords(records, [&](char* to, std::size_t size) { stream.readRawData(to, static_cast<int>(size)); });
}

void Save(Records& records) {
    QFile file(Text(DatabaseFile()));
    file.open(QIODevice::WriteOnly);
    QDataStream stream(&file);
    WriteRecords(records,
                 [&](const char* data, std::size_t size) { stream.writeRawData(data, static_cast<int>(size)); });
    file.close();
    records.clear();
}

const Registration qt([] {
    constexpr const char* who = "Qt";
    OnPath("compose", who,
           [](Parts parts) { return QDir(Text(parts.folder)).filePath(Text(parts.name)).toStdString(); });
    OnPath("last component", who, [](Parts parts) { return QFileInfo(Text(parts.path)).fileName().toStdString(); });
    OnPath("folder part", who, [](Parts parts) { return QFileInfo(Text(parts.path)).path().toStdString(); });
    OnPath("extension", who, [](Parts parts) { return QFileInfo(Text(parts.path)).suffix().toStdString(); });
    OnPath("change extension", who, [](Parts parts) {
        const QFileInfo file(Text(parts.path));
        return (file.path() + '/' + file.completeBaseName() + ".flac").toStdString();
    });
    OnPath("is below", who, [](Parts parts) { return Text(parts.path).startsWith(Text(parts.folder) + '/'); });
    OnPath("relative path", who,
           [](Parts parts) { return QDir(Text(parts.from)).relativeFilePath(Text(parts.to)).toStdString(); });
    OnListing(who, [](Path folder) {
        return QDir(Text(folder)).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Unsorted);
    });
    Measure(copyFile, who, [] { QFile::copy(Text(Original()), Text(Copy())); });
    Measure(deletion, who, [] { QDir(Text(Doomed())).removeRecursively(); });
    Measure(moveToOwnTrash, who, [] { QFile::moveToTrash(Text(ItemOutside())); });
    Measure(startChild, "QProcess", [] { QProcess::execute("/bin/true", {}); });
    OnDatabase<Records>("QDataStream", Load, Save);
    OnTexts(
        who, [](const char* text) { return QString::fromUtf8(text).toStdWString(); },
        [](const wchar_t* text) { return QString::fromWCharArray(text).toStdString(); });
});

} // namespace
