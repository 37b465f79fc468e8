// Writes a corpus of CT images that depends on the options alone: bench_corpus FOLDER --files N --patients N
// --series N --side N --seed N
#include "corpusshape.h"
#include "filetemplate.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTextStream>

namespace {

constexpr int firstUid = 1'000'000'000; ///< a component has no leading zero, and all have the same width
constexpr int seedStep = 10'000'000; ///< corpora of different seeds share no UID
constexpr double sliceGap = 1.25;

const char *const families[] = {"Müller", "Smith", "García", "Kowalski", "Nguyen", "Andersson", "Østergård",
    "Rossi", "Novák", "Dubois", "Yılmaz", "O'Brien", "Silva", "Tanaka"};
const char *const givens[] = {
    "Anna", "José", "Li", "Maria", "Peter", "Zoë", "Ahmed", "Ingrid", "Jan", "Chloé", "Ivan"};

QByteArray uid(int kind, const CorpusShape &shape, int number)
{
    return "1.2.826.0.1.3680043.10.511." + QByteArray::number(kind) + '.'
        + QByteArray::number(firstUid + int(shape.seed) * seedStep + number);
}

QByteArray padded(int number, int width)
{
    return QByteArray::number(number).rightJustified(width, '0');
}

void setPatient(FileTemplate &file, const CorpusShape &shape, int patient)
{
    const auto mixed = std::size_t(patient) * 7 + std::size_t(shape.seed);
    file.set(FileTemplate::PatientName,
        QByteArray(families[mixed % std::size(families)]) + padded(patient, 5) + '^'
            + givens[mixed % std::size(givens)]);
    file.set(FileTemplate::PatientId, "S" + QByteArray::number(shape.seed) + "P" + padded(patient, 8));
    file.set(FileTemplate::BirthDate,
        QByteArray::number(1930 + patient % 80) + padded(1 + patient % 12, 2) + padded(1 + patient % 28, 2));
    file.set(FileTemplate::StudyUid, uid(2, shape, patient));
    file.set(FileTemplate::StudyDate,
        QByteArray::number(2005 + patient % 20) + padded(1 + patient % 12, 2) + padded(1 + patient % 28, 2));
    file.set(FileTemplate::Accession, "A" + padded(patient, 10));
}

QString write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        return path + QStringLiteral(": ") + file.errorString();
    }
    return {};
}

/// @return what went wrong, or nothing
QString writeCorpus(const QString &folder, const CorpusShape &shape)
{
    FileTemplate file(shape.side);
    CorpusPosition last{-1, -1, -1};
    QString seriesFolder;
    for (int number = 0; number < shape.files; ++number) {
        const CorpusPosition now = shape.position(number);
        if (now.patient != last.patient) {
            setPatient(file, shape, now.patient);
        }
        if (now.series != last.series) {
            file.set(FileTemplate::SeriesUid, uid(3, shape, now.series));
            file.set(FileTemplate::SeriesNumber, QByteArray::number(1 + now.series % 100));
            seriesFolder =
                QStringLiteral("%1/patient%2/series%3").arg(folder).arg(now.patient).arg(now.series);
            if (!QDir().mkpath(seriesFolder)) {
                return seriesFolder + QStringLiteral(": cannot be made");
            }
        }
        file.set(FileTemplate::InstanceUid, uid(4, shape, number));
        file.set(FileTemplate::InstanceNumber, QByteArray::number(1 + now.image));
        file.set(FileTemplate::SlicePosition, QByteArray::number(now.image * sliceGap, 'f', 2));
        file.setPixels(shape.seed * 1'000'003 + quint64(number));
        QString problem =
            write(QStringLiteral("%1/image%2.dcm").arg(seriesFolder).arg(now.image, 5, 10, QLatin1Char('0')),
                file.bytes());
        if (!problem.isEmpty()) {
            return problem;
        }
        last = now;
    }
    return {};
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    CorpusShape shape;
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("folder"), QStringLiteral("where the files go"));
    const auto number = [&parser](const char *name, int value) {
        parser.addOption({QLatin1String(name), QString(), QLatin1String(name), QString::number(value)});
    };
    number("files", shape.files);
    number("patients", shape.patients);
    number("series", shape.series);
    number("side", shape.side);
    number("seed", int(shape.seed));
    parser.process(application);
    shape.files = parser.value(QStringLiteral("files")).toInt();
    shape.patients = parser.value(QStringLiteral("patients")).toInt();
    shape.series = parser.value(QStringLiteral("series")).toInt();
    shape.side = parser.value(QStringLiteral("side")).toInt();
    shape.seed = parser.value(QStringLiteral("seed")).toULongLong();
    QTextStream errors(stderr);
    if (parser.positionalArguments().size() != 1 || !shape.isValid()) {
        errors << parser.helpText();
        return 2;
    }
    const QString problem = writeCorpus(parser.positionalArguments().first(), shape);
    if (!problem.isEmpty()) {
        errors << problem << '\n';
        return 1;
    }
    return 0;
}
