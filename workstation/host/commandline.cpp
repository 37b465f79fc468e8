#include "commandline.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <optional>

namespace {

constexpr int wrongUse = 2;
/// A list of files: some 100,000 long paths. A preview of more makes no sense.
constexpr qint64 mostListBytes = 16 << 20;

struct Options
{
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")},
        QCoreApplication::translate("CommandLine", "Prints this and ends.")};
    QCommandLineOption database{QStringLiteral("database"),
        QCoreApplication::translate("CommandLine", "The index file, made where there is none."),
        QStringLiteral("FILE")};
    QCommandLineOption config{QStringLiteral("config"),
        QCoreApplication::translate("CommandLine",
            "Takes the settings from DIR/config instead of the program's own; what an import does "
            "comes from config/main.ini of the working directory, else from DIR/../config."),
        QStringLiteral("DIR")};
    QCommandLineOption screenshot{QStringLiteral("screenshot"),
        QCoreApplication::translate("CommandLine", "Saves a picture of the window after the imports."),
        QStringLiteral("FILE")};
    QCommandLineOption quitWhenIdle{QStringLiteral("quit-when-idle"),
        QCoreApplication::translate("CommandLine", "Prints the import report and ends after the imports.")};
    QCommandLineOption samples{QStringLiteral("samples"),
        QCoreApplication::translate(
            "CommandLine", "Imports DIR where nothing else is named and the index is empty."),
        QStringLiteral("DIR")};
    QCommandLineOption preview{QStringLiteral("preview"),
        QCoreApplication::translate("CommandLine",
            "Only shows the images of the files and folders named, without an index; a .txt file names one "
            "a line.")};
};

QString absolute(const QString &path)
{
    return path.isEmpty() ? path : QFileInfo(path).absoluteFilePath();
}

/// A text has no zero byte, and every DICOM file has, whatever it is called.
bool isList(const QString &path, QByteArray *text)
{
    QFile file(path);
    if (!path.endsWith(QLatin1String(".txt"), Qt::CaseInsensitive) || !file.open(QIODevice::ReadOnly)) {
        return false;
    }
    *text = file.read(mostListBytes + 1);
    return !text->contains('\0');
}

/// The lines of a list of files; other files name themselves. Nothing for a list that is too long.
std::optional<QStringList> listed(const QString &path)
{
    QByteArray text;
    if (!isList(path, &text)) {
        return QStringList(absolute(path));
    }
    if (text.size() > mostListBytes) {
        return {};
    }
    QStringList paths;
    const QStringList lines = QString::fromUtf8(text).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const QString name = line.endsWith(QLatin1Char('\r')) ? line.chopped(1) : line;
        if (!name.isEmpty()) {
            paths.append(absolute(name));
        }
    }
    return paths;
}

CommandLine answering(const QString &text, int code)
{
    CommandLine line;
    line.answer = text;
    line.answerCode = code;
    return line;
}

} // namespace

CommandLine CommandLine::parse(const QStringList &arguments)
{
    const Options options;
    QCommandLineParser parser;
    parser.setApplicationDescription(QCoreApplication::translate(
        "CommandLine", "Shows and manages a workstation's index of patients, studies, series and images."));
    parser.addOptions({options.help, options.database, options.config, options.screenshot,
        options.quitWhenIdle, options.samples, options.preview});
    parser.addPositionalArgument(QStringLiteral("PATH"),
        QCoreApplication::translate("CommandLine", "Files and folders to import, or to preview."),
        QStringLiteral("[PATH...]"));
    if (!parser.parse(arguments)) {
        return answering(parser.errorText() + QLatin1Char('\n'), wrongUse);
    }
    if (parser.isSet(options.help)) {
        return answering(parser.helpText(), 0);
    }
    CommandLine line;
    line.previewOnly = parser.isSet(options.preview);
    for (const QString &path : parser.positionalArguments()) {
        if (!line.previewOnly) {
            line.imports.append(absolute(path));
            continue;
        }
        const std::optional<QStringList> files = listed(path);
        if (!files) {
            return answering(
                QCoreApplication::translate("CommandLine", "The list %1 is longer than 16 MiB.").arg(path)
                    + QLatin1Char('\n'),
                wrongUse);
        }
        line.previews += *files;
    }
    if (line.previewOnly && line.previews.isEmpty()) {
        return answering(
            QCoreApplication::translate("CommandLine", "--preview needs files to show.") + QLatin1Char('\n'),
            wrongUse);
    }
    line.database = absolute(parser.value(options.database));
    line.config = absolute(parser.value(options.config));
    line.screenshot = absolute(parser.value(options.screenshot));
    line.samples = absolute(parser.value(options.samples));
    line.quitWhenIdle = parser.isSet(options.quitWhenIdle);
    return line;
}
