#include "benchmarks/Jobs.h"
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

static QString Text(Path text) { return QString::fromStdString(text); }

static void Load(Records& records) {
    QFile file(Text(DatabaseFile()));
    file.open(QIODevice::ReadOnly);
    QDataStream stream(&file);
    ReadRecords(records, [&](auto to, auto size) { return stream.readRawData(to, static_cast<int>(size)) > 0; });
}
static void Save(Records& records) {
    QFile file(Text(DatabaseFile()));
    file.open(QIODevice::WriteOnly);
    QDataStream stream(&file);
    WriteRecords(records, [&](auto data, auto size) { stream.writeRawData(data, static_cast<int>(size)); });
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
    OnChild("QProcess", [](auto&) { return QProcess::execute("/bin/true", {}); });
    static Records records;
    OnDatabase("QDataStream", records, Load, Save);
    OnTexts(
        who, [](const char* text) { return QString::fromUtf8(text).toStdWString(); },
        [](const wchar_t* text) { return QString::fromWCharArray(text).toStdString(); });
});
