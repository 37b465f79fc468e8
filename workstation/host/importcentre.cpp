#include "importcentre.h"

#include "datasavetypeform.h"
#include "importer.h"
#include "importrunner.h"
#include "importsettings.h"
#include "patientmanagermainwindow.h"

#include <QLocale>

#include <algorithm>

ImportCentre::ImportCentre(PatientManagerMainWindow *library, QObject *parent)
    : QObject(parent)
    , m_library(library)
    , m_runner(new ImportRunner(this))
{
    connect(m_runner, &ImportRunner::finished, this, &ImportCentre::ended);
}

void ImportCentre::import(const QStringList &paths)
{
    const int mode = ImportSettings::mode();
    if (mode == ImportSettings::askMode) {
        DataSaveTypeForm::instance()->ask(this, [this, paths](int chosen) { start(paths, chosen); });
    } else {
        start(paths, mode);
    }
}

void ImportCentre::importUnattended(const QStringList &paths)
{
    const int mode = ImportSettings::mode();
    m_runner->setProgressShown(false);
    start(paths, mode == ImportSettings::askMode ? int(ImportMode::Reference) : mode);
}

void ImportCentre::start(const QStringList &paths, int mode)
{
    if (ImportSettings::isMode(mode)) {
        m_runner->start(paths, mode);
    } else {
        emit switchedOff();
    }
}

bool ImportCentre::isRunning() const
{
    const QList<ImportRunner *> all = runners();
    return (m_library && m_library->isImporting())
        || std::any_of(
            all.begin(), all.end(), [](const ImportRunner *runner) { return runner->isRunning(); });
}

QString ImportCentre::activity() const
{
    if (!isRunning()) {
        return {};
    }
    ImportProgress sum;
    sum.walking = false;
    for (const ImportRunner *runner : runners()) {
        if (runner->isRunning()) {
            const ImportProgress progress = runner->progress();
            sum.found += progress.found;
            sum.done += progress.done;
            sum.walking = sum.walking || progress.walking;
        }
    }
    const QLocale locale;
    if (sum.found == 0) {
        return tr("Importing…");
    }
    return (sum.walking ? tr("Importing %1 of %2 files found so far") : tr("Importing %1 of %2 files"))
        .arg(locale.toString(sum.done), locale.toString(sum.found));
}

void ImportCentre::cancelAll()
{
    if (m_library) {
        m_library->cancelImports();
    }
    for (ImportRunner *runner : runners()) {
        runner->cancel();
    }
}

QList<ImportRunner *> ImportCentre::runners() const
{
    QList<ImportRunner *> all{m_runner};
    if (m_library) {
        all += m_library->findChildren<ImportRunner *>();
    }
    return all;
}
