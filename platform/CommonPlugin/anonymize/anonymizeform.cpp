#include "anonymizeform.h"

#include "anonymisedfolders.h"
#include "anonymizejob.h"
#include "anonymizeoptionspanel.h"
#include "anonymizeoutputpanel.h"
#include "anonymizerunpage.h"
#include "anonymizetext.h"
#include "changepreview.h"
#include "createconnection.h"
#include "recordfiles.h"
#include "recordpicker.h"
#include "sitekey.h"

#include <QDateTime>
#include <QDir>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QSqlQuery>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

/// How to find the studies of a record, by the names that hosts have for its table.
QString studyStatement(const QString &tableName)
{
    if (tableName == QLatin1String("patient")) {
        return QStringLiteral("SELECT pk FROM generalstudy WHERE patient_fk = ?");
    }
    if (tableName == QLatin1String("generalseries") || tableName == QLatin1String("series")) {
        return QStringLiteral("SELECT study_fk FROM generalseries WHERE pk = ?");
    }
    if (tableName == QLatin1String("imageformat") || tableName == QLatin1String("image")) {
        return QStringLiteral(
            "SELECT study_fk FROM generalseries JOIN imageformat ON series_fk = generalseries.pk"
            " WHERE imageformat.pk = ?");
    }
    return QStringLiteral("SELECT pk FROM generalstudy WHERE pk = ?");
}

/// The studies that records stand for.
QList<qlonglong> studiesOf(const QString &tableName, const QList<qlonglong> &keys)
{
    QList<qlonglong> studies;
    QSqlQuery query;
    query.prepare(studyStatement(tableName));
    for (const qlonglong key : keys) {
        query.bindValue(0, key);
        query.exec();
        while (query.next()) {
            studies.append(query.value(0).toLongLong());
        }
    }
    return studies;
}

} // namespace

struct AnonymizeForm::Private
{
    explicit Private(AnonymizeForm *form)
        : q(form)
    { }

    void build();
    QWidget *buildSetup();
    QLayout *buildButtons();
    void connectAll();
    void showSetup();
    void tell();
    QString obstacle() const;
    DeidentifyRequest request();
    void preview();
    void start();
    void finish(const DeidentifyReport &report, const QStringList &extra);

    AnonymizeForm *const q;
    QStackedWidget *pages = nullptr;
    QWidget *setup = nullptr;
    RecordPicker *picker = nullptr;
    AnonymizeOptionsPanel *panel = nullptr;
    AnonymizeOutputPanel *outputs = nullptr;
    ChangePreview *changes = nullptr;
    AnonymizeRunPage *progress = nullptr;
    QLabel *note = nullptr;
    QPushButton *previewButton = nullptr;
    QPushButton *startButton = nullptr;
    QPushButton *backButton = nullptr;
    QPointer<AnonymizeJob> job;
    QString fault; ///< of the last attempt to begin
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

QSize AnonymizeForm::sizeHint() const
{
    return {900, 650};
}

void AnonymizeForm::choose(const QString &tableName, const QList<qlonglong> &keys)
{
    d->picker->setTicked(studiesOf(tableName, keys));
    if (!d->job) {
        d->showSetup();
    }
}

void AnonymizeForm::Private::build()
{
    setup = buildSetup();
    changes = new ChangePreview(q);
    progress = new AnonymizeRunPage(q);
    pages = new QStackedWidget(q);
    pages->addWidget(setup);
    pages->addWidget(changes);
    pages->addWidget(progress);
    auto *layout = new QVBoxLayout(q);
    layout->addWidget(pages, 1);
    layout->addLayout(buildButtons());
}

QWidget *AnonymizeForm::Private::buildSetup()
{
    auto *splitter = new QSplitter(q);
    auto *left = new QWidget(splitter);
    picker = new RecordPicker(left);
    outputs = new AnonymizeOutputPanel(left);
    auto *column = new QVBoxLayout(left);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(picker, 1);
    column->addWidget(outputs);
    panel = new AnonymizeOptionsPanel;
    auto *scroll = new QScrollArea(splitter);
    scroll->setWidgetResizable(true);
    scroll->setAccessibleName(AnonymizeForm::tr("Options"));
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(panel);
    scroll->setMinimumWidth(panel->minimumSizeHint().width());
    splitter->setChildrenCollapsible(false);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 1);
    return splitter;
}

QLayout *AnonymizeForm::Private::buildButtons()
{
    note = new QLabel(q);
    note->setObjectName(QStringLiteral("obstacle"));
    note->setWordWrap(true);
    note->setTextFormat(Qt::PlainText);
    previewButton = new QPushButton(AnonymizeForm::tr("&Preview"), q);
    previewButton->setObjectName(QStringLiteral("preview"));
    previewButton->setToolTip(AnonymizeForm::tr("Shows what would change in an image; nothing is written"));
    startButton = new QPushButton(AnonymizeForm::tr("&Anonymize"), q);
    startButton->setObjectName(QStringLiteral("start"));
    backButton = new QPushButton(AnonymizeForm::tr("&Back"), q);
    backButton->setObjectName(QStringLiteral("back"));
    auto *row = new QHBoxLayout;
    row->addWidget(note, 1);
    row->addWidget(backButton);
    row->addWidget(previewButton);
    row->addWidget(startButton);
    return row;
}

void AnonymizeForm::Private::connectAll()
{
    const auto onChange = [this] {
        fault.clear();
        tell();
    };
    QObject::connect(picker, &RecordPicker::changed, q, onChange);
    QObject::connect(panel, &AnonymizeOptionsPanel::changed, q, onChange);
    QObject::connect(outputs, &AnonymizeOutputPanel::changed, q, onChange);
    QObject::connect(previewButton, &QPushButton::clicked, q, [this] { preview(); });
    QObject::connect(startButton, &QPushButton::clicked, q, [this] { start(); });
    QObject::connect(backButton, &QPushButton::clicked, q, [this] { showSetup(); });
    QObject::connect(progress, &AnonymizeRunPage::left, q, [this] { showSetup(); });
    QObject::connect(progress, &AnonymizeRunPage::cancelled, q, [this] {
        if (job) {
            job->cancel();
        }
    });
    QObject::connect(progress, &AnonymizeRunPage::answered, q, [this](bool withBurnedIn) {
        if (job) {
            job->deliver(withBurnedIn);
        }
    });
}

void AnonymizeForm::Private::showSetup()
{
    pages->setCurrentWidget(setup);
    picker->reload();
    tell();
}

QString AnonymizeForm::Private::obstacle() const
{
    const QString why = panel->obstacle();
    return picker->ticked().isEmpty() ? AnonymizeForm::tr("Tick patients or studies first.")
        : why.isEmpty()               ? outputs->obstacle()
                                      : why;
}

void AnonymizeForm::Private::tell()
{
    const bool isSetup = pages->currentWidget() == setup;
    const QString why = obstacle();
    note->setText(!fault.isEmpty() ? fault : !why.isEmpty() ? why : panel->caution());
    note->setVisible(pages->currentWidget() != progress);
    previewButton->setVisible(isSetup);
    previewButton->setEnabled(!picker->ticked().isEmpty());
    startButton->setVisible(pages->currentWidget() != progress);
    startButton->setEnabled(why.isEmpty());
    backButton->setVisible(pages->currentWidget() == changes);
}

/// Without a key where there is none to be had: fault then says why.
DeidentifyRequest AnonymizeForm::Private::request()
{
    const QString keyPath = SiteKey::usualPath();
    const SiteKey::Result key = SiteKey::load(keyPath);
    fault = AnonymizeText::keyProblem(key, keyPath);
    DeidentifyRequest made;
    made.siteKey = key.key;
    made.options = panel->options();
    made.files = recordFiles(QSqlDatabase::database(), RecordLevel::Study, picker->ticked()).paths;
    const bool isToFolder = outputs->output() == AnonymizeOutput::Folder;
    made.folder = isToFolder ? outputs->folder() : AnonymisedFolders::base(databasePath());
    made.name = AnonymizeForm::tr("anonymized %1")
                    .arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HHmm")));
    if (fault.isEmpty() && made.files.isEmpty()) {
        fault = AnonymizeForm::tr("The ticked studies have no images.");
    }
    return made;
}

void AnonymizeForm::Private::preview()
{
    const DeidentifyRequest made = request();
    if (fault.isEmpty()) {
        changes->show(made);
        pages->setCurrentWidget(changes);
    }
    tell();
}

void AnonymizeForm::Private::start()
{
    const DeidentifyRequest made = request();
    if (!fault.isEmpty() || (outputs->output() != AnonymizeOutput::Folder && !QDir().mkpath(made.folder))) {
        fault = fault.isEmpty() ? AnonymizeForm::tr("The folder %1 cannot be made.").arg(made.folder) : fault;
        tell();
        return;
    }
    job = new AnonymizeJob(made, outputs->output(), q);
    QObject::connect(job, &AnonymizeJob::progressed, progress,
        [this](int done) { progress->showProgress(done, job->count()); });
    QObject::connect(job, &AnonymizeJob::doubtful, progress, &AnonymizeRunPage::ask);
    QObject::connect(job, &AnonymizeJob::importing, progress, &AnonymizeRunPage::showImporting);
    QObject::connect(job, &AnonymizeJob::finished, q,
        [this](const DeidentifyReport &report, const QStringList &extra) { finish(report, extra); });
    progress->showProgress(0, made.files.size());
    pages->setCurrentWidget(progress);
    tell();
    job->start();
}

void AnonymizeForm::Private::finish(const DeidentifyReport &report, const QStringList &extra)
{
    const AnonymizeOutput output = job->output();
    job->deleteLater();
    job.clear();
    progress->showEnd(report, extra);
    if (report.files.isEmpty()) {
        return;
    }
    if (output == AnonymizeOutput::Index) {
        emit q->imported();
    } else if (output == AnonymizeOutput::Send) {
        emit q->sendRequested(report.files, report.names, report.modalities);
    } else if (output == AnonymizeOutput::Upload) {
        emit q->uploadRequested(report.files, report.names.join(QStringLiteral(", ")));
    }
}
