#include "recordcopy.h"

#include "dabasehelper.h"
#include "filecopy.h"
#include "filequeries.h"
#include "keyfolders.h"

#include <QDir>
#include <QFile>
#include <QVariant>

namespace {

constexpr QLatin1Char slash('/');

/// Empty where it names no file.
QString fileName(const QString &path)
{
    QString name = KeyFolders::fileName(path);
    const bool leadsAway = name == QLatin1String(".") || name == QLatin1String("..");
    return leadsAway || name.contains(QChar::Null) ? QString() : name;
}

} // namespace

RecordCopy::RecordCopy(QString destination)
    : m_destination(std::move(destination))
{ }

bool RecordCopy::copyFile(const QString &source, const QString &target)
{
    static const std::atomic<bool> never{false};
    const QString native = QDir::toNativeSeparators(target);
    if (source.contains(QChar::Null) || native.contains(QChar::Null)) {
        return false; // the system would take it for a shorter name
    }
    if (source == native) {
        return true;
    }
    return QFile::exists(source)
        && copyIntoPlace(QFile::encodeName(source), QFile::encodeName(native), never) == 0;
}

void RecordCopy::copy(RecordLevel level, const QList<qlonglong> &keys)
{
    const DabaseHelper records;
    if (level == RecordLevel::Patient) {
        copyPatients(keys, records);
        return;
    }
    const QString holder = makeFolder(m_destination, KeyFolders::holder(level, m_destination));
    if (level == RecordLevel::Study) {
        copyStudies(keys, holder, records);
    } else if (level == RecordLevel::Series) {
        copySeries(keys, holder);
    } else {
        for (const qlonglong image : keys) {
            copyFiles(level, image, holder);
        }
    }
}

void RecordCopy::copyPatients(const QList<qlonglong> &keys, const DabaseHelper &records)
{
    for (const qlonglong patient : keys) {
        const QString folder = makeFolder(m_destination, KeyFolders::name(RecordLevel::Patient, patient));
        copyStudies(records.getPkFromFk(int(RecordLevel::Study), patient), folder, records);
    }
}

void RecordCopy::copyStudies(const QList<qlonglong> &keys, const QString &folder, const DabaseHelper &records)
{
    for (const qlonglong study : keys) {
        const QString own = makeFolder(folder, KeyFolders::name(RecordLevel::Study, study));
        copySeries(records.getPkFromFk(int(RecordLevel::Series), study), own);
    }
}

void RecordCopy::copySeries(const QList<qlonglong> &keys, const QString &folder)
{
    for (const qlonglong series : keys) {
        copyFiles(
            RecordLevel::Series, series, makeFolder(folder, KeyFolders::name(RecordLevel::Series, series)));
    }
}

void RecordCopy::copyFiles(RecordLevel level, qlonglong key, const QString &folder)
{
    QSqlQuery files = FileQueries::rows(FileQueries::ofExport(level), key);
    while (files.next()) {
        const QString path = files.value(0).toString();
        const QString name = fileName(path);
        if (!name.isEmpty()) {
            copyFile(path, folder + slash + name);
        }
    }
}

/// One level only: where the parent could not be made, what belongs below it fails, too.
QString RecordCopy::makeFolder(const QString &parent, const QString &name)
{
    QString folder = QDir::toNativeSeparators(parent + slash + name);
    QDir().mkdir(folder);
    return folder;
}
