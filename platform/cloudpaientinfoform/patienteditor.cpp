#include "patienteditor.h"

#include "correctiontext.h"
#include "createconnection.h"
#include "httpuploadfile.h"
#include "patientfields.h"
#include "webfailuretext.h"

#include <QButtonGroup>
#include <QCloseEvent>
#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace {

constexpr int usualWidth = 860;
constexpr qreal headScale = 1.25;

QLabel *wrapped(const char *name, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

} // namespace

PatientEditor::PatientEditor(QWidget *parent)
    : CloudPaientInfoForm(parent)
    , m_work(new CorrectionWork(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(QStringLiteral("CloudPaientInfoForm"));
    build();
    connect(m_work, &CorrectionWork::known, this, &PatientEditor::onKnown);
    connect(m_work, &CorrectionWork::progress, this, &PatientEditor::onProgress);
    connect(m_work, &CorrectionWork::finished, this, &PatientEditor::onFinished);
    connect(m_work, &CorrectionWork::finishedEarlier, this, [this](const QVector<CorrectionReport> &earlier) {
        m_news = tr("An interrupted correction was finished: %1")
                     .arg(CorrectionText::report(earlier.constLast(), {}));
    });
    connect(m_fields, &PatientFields::edited, this, &PatientEditor::refresh);
    for (const QRadioButton *choice : {m_allStudies, m_thisStudy, m_both, m_indexOnly}) {
        connect(choice, &QRadioButton::toggled, this, &PatientEditor::refresh);
    }
}

void PatientEditor::build()
{
    setWindowTitle(tr("Correct Patient Data"));
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(10);
    m_head = wrapped("head", this);
    QFont large = m_head->font();
    large.setPointSizeF(large.pointSizeF() * headScale);
    large.setBold(true);
    m_head->setFont(large);
    m_fields = new PatientFields(this);
    m_serviceState = wrapped("serviceState", this);
    m_files = wrapped("files", this);
    m_said = wrapped("said", this);
    m_said->setAccessibleName(tr("What was done"));
    m_progress = new QProgressBar(this);
    m_progress->setAccessibleName(tr("Progress"));
    layout->addWidget(m_head);
    layout->addWidget(m_fields);
    layout->addWidget(m_serviceState);
    addChoices(layout);
    layout->addWidget(m_files);
    layout->addWidget(m_said);
    layout->addWidget(m_progress);
    layout->addStretch();
    addButtons(layout);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
    resize(usualWidth, sizeHint().height());
}

void PatientEditor::addChoices(QBoxLayout *layout)
{
    auto *whose = new QGroupBox(tr("Whose data"), this);
    m_allStudies = new QRadioButton(whose);
    m_allStudies->setObjectName(QStringLiteral("allStudies"));
    m_thisStudy = new QRadioButton(tr("&This study alone: it goes to the patient with these data"), whose);
    m_thisStudy->setObjectName(QStringLiteral("thisStudy"));
    m_allStudies->setChecked(true);
    auto *where = new QGroupBox(tr("Where"), this);
    m_both = new QRadioButton(tr("Index and &service"), where);
    m_both->setObjectName(QStringLiteral("indexAndService"));
    m_indexOnly = new QRadioButton(tr("Index &only"), where);
    m_indexOnly->setObjectName(QStringLiteral("indexOnly"));
    m_both->setChecked(true);
    auto *row = new QHBoxLayout;
    for (const auto &[box, first, second] :
        {std::tuple{whose, m_allStudies, m_thisStudy}, std::tuple{where, m_both, m_indexOnly}}) {
        auto *column = new QVBoxLayout(box);
        column->addWidget(first);
        column->addWidget(second);
        row->addWidget(box, box == whose ? 2 : 1);
    }
    layout->addLayout(row);
}

void PatientEditor::addButtons(QBoxLayout *layout)
{
    m_save = new QPushButton(tr("&Correct"), this);
    m_save->setObjectName(QStringLiteral("save"));
    m_save->setDefault(true);
    m_close = new QPushButton(this);
    m_close->setObjectName(QStringLiteral("close"));
    connect(m_save, &QPushButton::clicked, this, &PatientEditor::save);
    connect(m_close, &QPushButton::clicked, this, [this] {
        if (m_isBusy && m_mayStop) {
            m_work->stop();
        } else {
            close();
        }
    });
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_save);
    buttons->addWidget(m_close);
    layout->addLayout(buttons);
}

void PatientEditor::setPatientName(const QString &name)
{
    m_head->setText(CorrectionText::value(PatientField::Name, name));
}

void PatientEditor::setJsessionid(const QByteArray &sessionId, const QString &serviceAddress)
{
    const CloudSession &session = HttpUploadFile::instance()->session();
    const bool isAsked = session.isOpen() && sessionId == session.id
        && (serviceAddress.isEmpty() || session.isAt(serviceAddress));
    m_sessionId = sessionId;
    m_service = isAsked ? session.service : WebService();
    m_databasePath = databasePath();
    m_isReading = true;
    setBusy(true);
    say(tr("Reading…"));
    m_work->read(m_databasePath, m_studyPk, m_studyUid, m_service);
    show();
    raise();
    activateWindow();
}

void PatientEditor::onKnown(const StudyFacts &facts)
{
    m_facts = facts;
    m_isReading = false;
    m_fields->setIndex(facts.index.values);
    m_fields->setService(facts.service, facts.isInService);
    m_fields->setWanted(facts.index.values);
    m_serviceState->setText(serviceText());
    const int studies = facts.index.studyUids.size();
    m_allStudies->setText(tr("&All %Ln study(ies) of the patient", nullptr, studies));
    m_thisStudy->setEnabled(studies > 1);
    m_both->setEnabled(facts.isInService);
    (facts.isInService ? m_both : m_indexOnly)->setChecked(true);
    QStringList files;
    if (facts.index.copies > 0) {
        files += tr("%Ln file(s) of this study in the workstation's store are corrected, too.", nullptr,
            facts.index.copies);
    }
    if (facts.index.references > 0) {
        files +=
            tr("%Ln file(s) of this study lie elsewhere and keep the old values: what is exported, sent or "
               "uploaded from here has them.",
                nullptr, facts.index.references);
    }
    m_files->setText(files.join(QLatin1Char('\n')));
    if (!facts.index.isFound) {
        say(tr("The study is not in the index any more."), true);
    } else {
        say(m_news);
    }
    setBusy(false);
}

QString PatientEditor::serviceText() const
{
    if (m_service.address.isEmpty()) {
        return tr("You are not signed in to the service, so only the index can be corrected.");
    }
    if (!m_facts.failure.isNone()) {
        return tr("The service cannot be asked, so only the index can be corrected. %1")
            .arg(WebFailureText::of(m_facts.failure));
    }
    return m_facts.isInService
        ? tr("The service has %Ln image(s) of this study.", nullptr, m_facts.serviceObjects)
        : tr("The service does not have this study, so only the index can be corrected.");
}

/// What has to be given, since one of the places has another value.
PatientChanges PatientEditor::changes() const
{
    const PatientValues wanted = m_fields->wanted();
    PatientChanges all = m_facts.index.values.changesTo(wanted);
    if (m_both->isChecked() && m_facts.isInService) {
        const PatientChanges service = m_facts.service.changesTo(wanted);
        for (auto change = service.cbegin(); change != service.cend(); ++change) {
            all.insert(change.key(), change.value());
        }
    }
    return all;
}

bool PatientEditor::isKnown() const
{
    return !m_isReading && m_facts.index.isFound;
}

void PatientEditor::refresh()
{
    const QString fault = isKnown() ? m_fields->fault() : QString();
    if (!m_isBusy && fault != m_fault) {
        say(fault, true);
        m_fault = fault;
    }
    m_save->setEnabled(isKnown() && !m_isBusy && fault.isEmpty() && !changes().isEmpty());
}

void PatientEditor::save()
{
    CorrectionRequest request;
    request.databasePath = m_databasePath;
    request.index.studyPk = m_studyPk;
    request.index.studyUid = m_studyUid;
    request.index.scope =
        m_thisStudy->isChecked() ? IndexCorrection::Scope::Study : IndexCorrection::Scope::Patient;
    request.index.changes = changes();
    request.inService = m_both->isChecked() && m_facts.isInService;
    request.studies = m_thisStudy->isChecked() ? QStringList{m_studyUid} : m_facts.index.studyUids;
    setBusy(true);
    m_work->correct(request, m_service);
}

void PatientEditor::onProgress(const CorrectionProgress &progress)
{
    m_mayStop = progress.step == CorrectionProgress::Step::Fetching
        || progress.step == CorrectionProgress::Step::Writing;
    m_close->setEnabled(m_mayStop);
    m_progress->setRange(0, progress.all);
    m_progress->setValue(progress.done);
    say(CorrectionText::step(progress));
}

void PatientEditor::onFinished(const CorrectionReport &report)
{
    const PatientValues before = m_facts.index.values;
    setBusy(false);
    say(CorrectionText::report(report, before), report.end != CorrectionReport::End::Done);
    if (report.end == CorrectionReport::End::Done) {
        const PatientValues now = m_fields->wanted();
        m_facts.index.values = now;
        m_fields->setIndex(now);
        if (report.objects > 0) {
            m_facts.service = now;
            m_fields->setService(now, true);
        }
        setPatientName(now[PatientField::Name]);
        emit saved(m_studyUid);
    }
    refresh();
    if (m_isClosing) {
        close();
    }
}

void PatientEditor::setBusy(bool isBusy)
{
    m_isBusy = isBusy;
    m_mayStop = isBusy;
    m_fields->setEditable(!isBusy && isKnown());
    for (QRadioButton *choice : {m_allStudies, m_both, m_indexOnly}) {
        choice->setEnabled(!isBusy && isKnown());
    }
    m_both->setEnabled(m_both->isEnabled() && m_facts.isInService);
    m_thisStudy->setEnabled(!isBusy && isKnown() && m_facts.index.studyUids.size() > 1);
    m_progress->setVisible(isBusy);
    m_progress->setRange(0, 0);
    m_close->setText(isBusy && !m_isReading ? tr("Stop") : tr("Close"));
    m_close->setEnabled(true);
    refresh();
}

void PatientEditor::say(const QString &text, bool isProblem)
{
    m_said->setText(text);
    m_said->setProperty("isProblem", isProblem);
    QFont font = m_said->font();
    font.setBold(isProblem);
    m_said->setFont(font);
}

/// What has begun to be stored comes to its end first; the window waits for it out of sight.
void PatientEditor::closeEvent(QCloseEvent *event)
{
    if (m_isBusy && !m_isReading) {
        m_work->stop();
        m_isClosing = true;
        event->ignore();
        return;
    }
    event->accept();
}
