#include "anonymizeform.h"

#include "anonymizefoot.h"
#include "anonymizejob.h"
#include "anonymizepreparation.h"
#include "anonymizerunpage.h"
#include "anonymizesetuppage.h"
#include "changepreview.h"
#include "kivmessageboxform.h"

#include <QCloseEvent>
#include <QDockWidget>
#include <QPointer>
#include <QStackedWidget>
#include <QVBoxLayout>

struct AnonymizeForm::Private
{
    explicit Private(AnonymizeForm *form)
        : q(form)
    { }

    void build();
    void connectAll();
    void connectJob();
    void showSetup();
    void tell();
    void prepare(bool isToStart);
    void onPrepared(const DeidentifyRequest &request, const QString &why);
    void start(const DeidentifyRequest &request);
    void finish(const DeidentifyReport &report, const QStringList &extra);
    bool mayClose();

    AnonymizeForm *const q;
    QStackedWidget *pages = nullptr;
    AnonymizeSetupPage *setup = nullptr;
    ChangePreview *changes = nullptr;
    AnonymizeRunPage *progress = nullptr;
    AnonymizePreparation *preparation = nullptr;
    AnonymizeFoot *foot = nullptr;
    QPointer<AnonymizeJob> job;
    AnonymizeOutput output{}; ///< of what is prepared
    QString fault; ///< of the last attempt to begin
    bool isToStart = false; ///< what is prepared; else it is to be looked at
    bool closesAtEnd = false;
};

AnonymizeForm::AnonymizeForm(QWidget *parent)
    : QWidget(parent)
    , d(new Private(this))
{
    setObjectName(QStringLiteral("anonymize"));
    setWindowTitle(tr("Anonymize"));
    d->build();
    d->connectAll();
    d->showSetup();
}

AnonymizeForm::~AnonymizeForm()
{
    delete d->job;
}

bool AnonymizeForm::isAnyRunning()
{
    return AnonymizeJob::isAnyRunning();
}

void AnonymizeForm::stopAll()
{
    AnonymizeJob::cancelAll();
}

QSize AnonymizeForm::sizeHint() const
{
    return {900, 650};
}

void AnonymizeForm::choose(const QString &tableName, const QList<qlonglong> &keys)
{
    d->setup->choose(tableName, keys);
    if (!d->job) {
        d->showSetup();
    }
}

void AnonymizeForm::closeEvent(QCloseEvent *event)
{
    event->setAccepted(d->mayClose());
}

void AnonymizeForm::Private::build()
{
    setup = new AnonymizeSetupPage(q);
    changes = new ChangePreview(q);
    progress = new AnonymizeRunPage(q);
    preparation = new AnonymizePreparation(q);
    foot = new AnonymizeFoot(q);
    pages = new QStackedWidget(q);
    pages->addWidget(setup);
    pages->addWidget(changes);
    pages->addWidget(progress);
    auto *layout = new QVBoxLayout(q);
    layout->addWidget(pages, 1);
    layout->addWidget(foot);
}

void AnonymizeForm::Private::connectAll()
{
    QObject::connect(setup, &AnonymizeSetupPage::changed, q, [this] {
        preparation->stop();
        fault.clear();
        tell();
    });
    QObject::connect(preparation, &AnonymizePreparation::finished, q,
        [this](const DeidentifyRequest &request, const QString &why) { onPrepared(request, why); });
    QObject::connect(foot, &AnonymizeFoot::previewWanted, q, [this] { prepare(false); });
    QObject::connect(foot, &AnonymizeFoot::startWanted, q, [this] { prepare(true); });
    QObject::connect(foot, &AnonymizeFoot::backWanted, q, [this] { showSetup(); });
    QObject::connect(progress, &AnonymizeRunPage::left, q, [this] { showSetup(); });
    const auto withJob = [this](auto act) {
        return [this, act] {
            if (job) {
                act(*job);
            }
        };
    };
    QObject::connect(
        progress, &AnonymizeRunPage::cancelled, q, withJob([](AnonymizeJob &run) { run.cancel(); }));
    QObject::connect(
        progress, &AnonymizeRunPage::againWanted, q, withJob([](AnonymizeJob &run) { run.importAgain(); }));
    QObject::connect(
        progress, &AnonymizeRunPage::keepWanted, q, withJob([](AnonymizeJob &run) { run.keep(); }));
    QObject::connect(progress, &AnonymizeRunPage::picturesWanted, q, &AnonymizeForm::picturesWanted);
    QObject::connect(progress, &AnonymizeRunPage::answered, q, [this](bool withBurnedIn) {
        if (job) {
            job->deliver(withBurnedIn);
        }
    });
}

void AnonymizeForm::Private::connectJob()
{
    QObject::connect(job, &AnonymizeJob::progressed, progress,
        [this](int done) { progress->showProgress(done, job->request().files.size()); });
    QObject::connect(job, &AnonymizeJob::doubtful, progress, &AnonymizeRunPage::ask);
    QObject::connect(job, &AnonymizeJob::importing, progress, &AnonymizeRunPage::showImporting);
    QObject::connect(job, &AnonymizeJob::notTaken, progress, &AnonymizeRunPage::askAgain);
    QObject::connect(job, &AnonymizeJob::imported, q, &AnonymizeForm::imported);
    QObject::connect(job, &AnonymizeJob::finished, q,
        [this](const DeidentifyReport &report, const QStringList &extra) { finish(report, extra); });
}

void AnonymizeForm::Private::showSetup()
{
    preparation->stop();
    pages->setCurrentWidget(setup);
    setup->reload();
    tell();
}

void AnonymizeForm::Private::tell()
{
    const QWidget *page = pages->currentWidget();
    AnonymizeFoot::State state;
    state.page = page == setup ? AnonymizeFoot::Page::Setup
        : page == changes      ? AnonymizeFoot::Page::Changes
                               : AnonymizeFoot::Page::Run;
    state.hasStudies = setup->hasStudies();
    state.isPreparing = preparation->isRunning();
    state.fault = fault;
    state.obstacle = setup->obstacle();
    state.caution = setup->caution();
    foot->tell(state);
}

void AnonymizeForm::Private::prepare(bool toStart)
{
    isToStart = toStart;
    output = setup->output();
    fault.clear();
    preparation->begin(setup->request(), setup->studies(), toStart && output != AnonymizeOutput::Folder);
    tell();
}

void AnonymizeForm::Private::onPrepared(const DeidentifyRequest &request, const QString &why)
{
    fault = why;
    if (!fault.isEmpty()) {
        tell();
    } else if (isToStart) {
        start(request);
    } else {
        changes->show(request);
        pages->setCurrentWidget(changes);
        tell();
    }
}

void AnonymizeForm::Private::start(const DeidentifyRequest &request)
{
    job = new AnonymizeJob(request, output, q);
    connectJob();
    progress->showProgress(0, request.files.size());
    pages->setCurrentWidget(progress);
    tell();
    job->start();
}

void AnonymizeForm::Private::finish(const DeidentifyReport &report, const QStringList &extra)
{
    progress->showEnd(report, job->request(), extra);
    job->deleteLater();
    job.clear();
    if (closesAtEnd) {
        closesAtEnd = false;
        QWidget *frame = qobject_cast<QDockWidget *>(q->parentWidget());
        (frame ? frame : q)->close();
        return;
    }
    if (report.files.isEmpty()) {
        return;
    }
    if (output == AnonymizeOutput::Send) {
        emit q->sendRequested(report.files, report.names, report.modalities);
    } else if (output == AnonymizeOutput::Upload) {
        emit q->uploadRequested(report.files, report.names.join(QStringLiteral(", ")));
    }
}

/// Asks where work would be lost; what is stopped then ends first, and closes the window itself.
bool AnonymizeForm::Private::mayClose()
{
    if (!job || closesAtEnd) {
        return !job;
    }
    const QPointer<AnonymizeForm> self(q);
    const int answer = kivMessageBoxForm::question(q, AnonymizeForm::tr("Anonymize"),
        AnonymizeForm::tr("Anonymous copies are being made. Stop that and close? Nothing of them is kept, "
                          "except what the index has taken already."),
        kivMessageBoxForm::OkAndCancel, kivMessageBoxForm::AnswerCancel);
    if (!self || answer != kivMessageBoxForm::AnswerOk || !job) {
        return self && answer == kivMessageBoxForm::AnswerOk;
    }
    closesAtEnd = true;
    job->cancel();
    return false;
}
