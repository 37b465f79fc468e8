#include "inifile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QVector>

namespace {

using Lines = QList<QByteArray>;

/// A file that is there and lets nobody look into it: to write would be to lose what it holds.
bool isClosed(const QString &path)
{
    return QFile::exists(path) && !QFile(path).open(QIODevice::ReadOnly);
}

Lines linesOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    Lines lines = file.readAll().split('\n');
    if (!lines.isEmpty() && lines.last().isEmpty()) {
        lines.removeLast();
    }
    return lines;
}

bool save(const QString &path, const Lines &lines)
{
    QSaveFile file(path);
    file.setDirectWriteFallback(true); // a file that may be written in a folder that may not
    return file.open(QIODevice::WriteOnly) && file.write(lines.join('\n') + '\n') > 0 && file.commit();
}

/// A value as it stands in a file: its header and its line, in the encoding of QSettings.
Lines encoded(const QString &key, const QVariant &value)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("one.ini"));
    {
        QSettings settings(path, QSettings::IniFormat);
        settings.setValue(key, value);
    }
    return linesOf(path);
}

bool isHeader(const QByteArray &line)
{
    return line.trimmed().startsWith('[');
}

bool isSameName(const QByteArray &one, const QByteArray &other)
{
    return QByteArray::fromPercentEncoding(one.trimmed()) == QByteArray::fromPercentEncoding(other.trimmed());
}

QByteArray keyOf(const QByteArray &line)
{
    return line.left(line.indexOf('='));
}

/// The lines of a group without its header: from first up to end. Empty at the end where there is none.
struct Range
{
    int first;
    int end;
};

Range groupIn(const Lines &lines, const QByteArray &header)
{
    int first = 0;
    while (first < lines.size() && !(isHeader(lines[first]) && isSameName(lines[first], header))) {
        ++first;
    }
    first = qMin(first + 1, lines.size());
    int end = first;
    while (end < lines.size() && !isHeader(lines[end])) {
        ++end;
    }
    return {first, end};
}

/// The end of a group without the blank lines and comments that lead to the next one.
int endOfValues(const Lines &lines, const Range &range)
{
    int end = range.end;
    while (end > range.first && (lines[end - 1].trimmed().isEmpty() || lines[end - 1].startsWith(';'))) {
        --end;
    }
    return end;
}

/// Takes out a line, and those that go on with it.
void removeLine(Lines *lines, int at)
{
    bool goesOn = true;
    while (goesOn && at < lines->size()) {
        goesOn = lines->at(at).endsWith('\\');
        lines->removeAt(at);
    }
}

void splice(Lines *lines, const Lines &entry)
{
    const QByteArray &header = entry.first();
    const QByteArray &line = entry.last();
    const Range range = groupIn(*lines, header);
    const bool hasGroup = range.first > 0 && isHeader(lines->at(range.first - 1))
        && isSameName(lines->at(range.first - 1), header);
    if (!hasGroup) {
        if (!lines->isEmpty()) {
            lines->append(QByteArray());
        }
        *lines << header << line;
        return;
    }
    int at = range.first;
    while (at < range.end && !isSameName(keyOf(lines->at(at)), keyOf(line))) {
        ++at;
    }
    if (at < range.end) {
        removeLine(lines, at);
    } else {
        while (at > range.first && lines->at(at - 1).trimmed().isEmpty()) {
            --at;
        }
    }
    lines->insert(at, line);
}

QVariant valueIn(const QString &file, const QString &key)
{
    return QSettings(file, QSettings::IniFormat).value(key);
}

bool hasGroup(const QString &file, const QString &group)
{
    return QSettings(file, QSettings::IniFormat).childGroups().contains(group);
}

QStringList texts(const QVariant &value)
{
    const bool isList = value.type() == QVariant::StringList || value.type() == QVariant::List;
    return isList || !value.isValid() ? value.toStringList() : QStringList{value.toString()};
}

/// A number that was written is read as a text, a list of one as its only entry, an empty one as nothing.
bool isSame(const QVariant &read, const QVariant &wanted)
{
    return texts(read) == texts(wanted);
}

} // namespace

namespace IniFile {

bool setValue(const QString &file, const QString &key, const QVariant &value)
{
    if (isClosed(file)) {
        return false;
    }
    QDir().mkpath(QFileInfo(file).path());
    const Lines entry = encoded(key, value);
    if (entry.size() == 2) {
        Lines lines = linesOf(file);
        splice(&lines, entry);
        if (save(file, lines) && isSame(valueIn(file, key), value)) {
            return true;
        }
    }
    // A file of an unusual make: the value counts for more than its comments.
    QSettings settings(file, QSettings::IniFormat);
    settings.setValue(key, value);
    settings.sync();
    return settings.status() == QSettings::NoError;
}

bool removeGroup(const QString &file, const QString &group)
{
    if (isClosed(file)) {
        return false;
    }
    if (!hasGroup(file, group)) {
        return true;
    }
    Lines lines = linesOf(file);
    const Range range = groupIn(lines, encoded(group + QStringLiteral("/x"), 0).value(0));
    if (range.first < lines.size() || range.end > range.first) {
        lines.erase(lines.begin() + range.first - 1, lines.begin() + endOfValues(lines, range));
        if (save(file, lines) && !hasGroup(file, group)) {
            return true;
        }
    }
    QSettings settings(file, QSettings::IniFormat);
    settings.remove(group);
    settings.sync();
    return settings.status() == QSettings::NoError;
}

} // namespace IniFile
