#include "deliveredcopies.h"

#include "exportstage.h"
#include "safename.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>

namespace {

constexpr int longestName = 64;
constexpr int mostNames = 1000;

bool isWanted(const DeidentifiedFile &file, bool withBurnedIn)
{
    return file.problem == DeidentifyProblem::None && (withBurnedIn || file.burnedIn == BurnedIn::No);
}

} // namespace

DeliveredCopies::DeliveredCopies(
    const DeidentifyRequest &request, ExportStage &stage, DeidentifyReport &report)
    : m_request(request)
    , m_stage(stage)
    , m_report(report)
{ }

/// Patient, study, and the object's UID.
QString DeliveredCopies::nameOf(const DeidentifiedFile &file)
{
    const QString folder = safeName(file.patientId, QStringLiteral("patient"), longestName) + QLatin1Char('/')
        + safeName(QString::fromLatin1(file.studyUid), QStringLiteral("study"), longestName);
    const QString name =
        safeName(QString::fromLatin1(file.sopInstance), QStringLiteral("object"), longestName);
    return folder + QLatin1Char('/') + m_names.unique(folder, name + QStringLiteral(".dcm"));
}

void DeliveredCopies::add(const QString &passing, const DeidentifiedFile &result, bool withBurnedIn)
{
    if (!QFileInfo::exists(passing)) {
        return;
    }
    if (!isWanted(result, withBurnedIn)) {
        ++m_report.leftOut;
        QFile::remove(passing);
        return;
    }
    const QString name = nameOf(result);
    const int error = rename(passing, m_request.name + QLatin1Char('/') + name);
    if (error != 0) {
        fail(error);
        return;
    }
    m_report.files.append(name);
    m_report.documents += result.hadDocument ? 1 : 0;
    if (!m_report.names.contains(result.patientName)) {
        m_report.names.append(result.patientName);
        m_report.modalities.append(result.modality);
    }
}

/// Within the stage. @return errno
int DeliveredCopies::rename(const QString &passing, const QString &place)
{
    const int error = m_stage.makeFolderOf(place);
    if (error != 0) {
        return error;
    }
    const int result = std::rename(
        QFile::encodeName(passing).constData(), QFile::encodeName(m_stage.path(place)).constData());
    return result == 0 ? 0 : errno;
}

void DeliveredCopies::fail(int error)
{
    m_report.files.clear();
    m_report.ended = DeidentifyProblem::CannotWrite;
    m_report.endDetail = qt_error_string(error);
}

void DeliveredCopies::deliver(const std::atomic<bool> &cancelled)
{
    if (!isGood()) {
        return;
    }
    m_stage.sync();
    m_report.isCancelled = cancelled;
    if (m_report.isCancelled) {
        m_report.files.clear();
    }
    if (m_report.files.isEmpty()) {
        return;
    }
    QString name = m_request.name;
    const int error = leaveStage(name);
    if (error != 0) {
        fail(error);
        return;
    }
    m_report.folder = QDir(m_request.folder).filePath(name);
    for (QString &file : m_report.files) {
        file.prepend(m_report.folder + QLatin1Char('/'));
    }
}

/// The folder leaves the stage under the first name that is free. @return errno
int DeliveredCopies::leaveStage(QString &name)
{
    int error = EEXIST;
    for (int number = 2; error == EEXIST && number < mostNames; ++number) {
        error = m_stage.moveOut(name, false);
        if (error == EEXIST) {
            const QString other = QStringLiteral("%1 (%2)").arg(m_request.name).arg(number);
            std::rename(QFile::encodeName(m_stage.path(name)).constData(),
                QFile::encodeName(m_stage.path(other)).constData());
            name = other;
        }
    }
    return error;
}
