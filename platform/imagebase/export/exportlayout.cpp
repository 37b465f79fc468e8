#include "exportlayout.h"

#include "keyfolders.h"
#include "mediawriter.h"
#include "safename.h"

#include <QDir>
#include <QFileInfo>

#include <array>

namespace {

constexpr QLatin1Char slash('/');
constexpr int longestFolder = 60;
constexpr int longestFile = 80;

/// As RecordCopy has it, but that no file takes the place of another of the same name.
class KeyLayout : public ExportLayout
{
public:
    explicit KeyLayout(const ExportRequest &request)
        : m_level(request.level)
        , m_holder(KeyFolders::holder(request.level, request.target))
    { }

    QString nameFor(const ExportRow &row) override
    {
        const std::array<qlonglong, 3> keys{row.patient, row.study, row.series};
        QString folder = m_holder;
        for (int level = int(m_level); level < int(keys.size()); ++level) {
            folder += (folder.isEmpty() ? QString() : QString(slash))
                + KeyFolders::name(RecordLevel(level), keys[std::size_t(level)]);
        }
        const QString name =
            safeName(KeyFolders::fileName(row.filePath), QStringLiteral("image"), longestFile);
        return folder + slash + m_names.unique(folder, name);
    }

private:
    const RecordLevel m_level;
    const QString m_holder;
    UniqueNames m_names;
};

/// "Wang, Xiaodong (42)/2024-03-01 CT Head/003 CT Axial 5 mm/00017.dcm"
class NamedLayout : public ExportLayout
{
public:
    /// @param folder where it shall lie: what is there already keeps its name for itself; empty for a new
    /// place
    explicit NamedLayout(const QString &folder)
    {
        if (!folder.isEmpty()) {
            const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
            for (const QString &name : QDir(folder).entryList(all)) {
                m_names.take({}, name);
            }
        }
    }

    QString nameFor(const ExportRow &row) override
    {
        if (row.series != m_lastSeries) {
            m_lastSeries = row.series;
            const QString patient = folder(m_patients, row.patient, {}, patientText(row));
            const QString study = folder(m_studies, row.study, patient, studyText(row));
            m_folder = folder(m_series, row.series, study, seriesText(row));
        }
        const QString number = row.instanceNumber.isEmpty() ? QStringLiteral("image")
                                                            : row.instanceNumber.rightJustified(5, u'0');
        return m_folder + slash
            + m_names.unique(
                m_folder, safeName(number, QStringLiteral("image"), longestFile) + QStringLiteral(".dcm"));
    }

private:
    QString folder(
        QHash<qlonglong, QString> &known, qlonglong key, const QString &parent, const QString &text)
    {
        QString &path = known[key];
        if (path.isEmpty()) {
            const QString name = m_names.unique(parent, text);
            path = parent.isEmpty() ? name : parent + slash + name;
        }
        return path;
    }

    static QString patientText(const ExportRow &row)
    {
        const QString id =
            row.patientId.isEmpty() ? QString() : QStringLiteral(" (") + row.patientId + QLatin1Char(')');
        return safeName(row.patientName + id, QStringLiteral("Patient"), longestFolder);
    }

    static QString studyText(const ExportRow &row)
    {
        QString date = row.studyDate;
        if (date.size() == 8) {
            date = date.left(4) + QLatin1Char('-') + date.mid(4, 2) + QLatin1Char('-') + date.mid(6);
        }
        return joined({date, QString(row.modalities).replace(QLatin1Char('\\'), QLatin1Char(' ')),
                          row.studyDescription},
            QStringLiteral("Study"));
    }

    static QString seriesText(const ExportRow &row)
    {
        const QString number =
            row.seriesNumber.isEmpty() ? QString() : row.seriesNumber.rightJustified(3, u'0');
        return joined({number, row.modality, row.seriesDescription}, QStringLiteral("Series"));
    }

    static QString joined(QStringList parts, const QString &otherwise)
    {
        parts.removeAll(QString());
        return safeName(parts.join(QLatin1Char(' ')).simplified(), otherwise, longestFolder);
    }

    UniqueNames m_names;
    QHash<qlonglong, QString> m_patients;
    QHash<qlonglong, QString> m_studies;
    QHash<qlonglong, QString> m_series;
    qlonglong m_lastSeries = 0;
    QString m_folder;
};

/// "DICOM/PA000001/ST000001/SE000001/IM000001": the names that a file set may have.
class MediaLayout : public ExportLayout
{
public:
    QString nameFor(const ExportRow &row) override
    {
        if (row.patient != m_keys[0]) {
            m_numbers[1] = 0;
        }
        if (row.study != m_keys[1]) {
            m_numbers[2] = 0;
        }
        if (row.series != m_keys[2]) {
            m_numbers[3] = 0;
        }
        const std::array<qlonglong, 3> keys{row.patient, row.study, row.series};
        for (std::size_t i = 0; i < keys.size(); ++i) {
            m_numbers[i] += keys[i] == m_keys[i] ? 0 : 1;
        }
        m_keys = keys;
        ++m_numbers[3];
        const std::array<QLatin1String, 4> prefixes{
            QLatin1String("PA"), QLatin1String("ST"), QLatin1String("SE"), QLatin1String("IM")};
        QString name = QLatin1String(MediaWriter::filesFolder);
        for (std::size_t i = 0; i < prefixes.size(); ++i) {
            name += slash + prefixes[i] + QString::number(m_numbers[i]).rightJustified(6, u'0');
        }
        return name;
    }

private:
    std::array<qlonglong, 3> m_keys{};
    std::array<int, 4> m_numbers{};
};

} // namespace

std::unique_ptr<ExportLayout> ExportLayout::make(const ExportRequest &request)
{
    switch (request.format) {
    case ExportFormat::KeyFolders:
        return std::make_unique<KeyLayout>(request);
    case ExportFormat::NamedFolders:
        return std::make_unique<NamedLayout>(request.target);
    case ExportFormat::Zip:
        return std::make_unique<NamedLayout>(QString());
    case ExportFormat::Media:
        break;
    }
    return std::make_unique<MediaLayout>();
}
