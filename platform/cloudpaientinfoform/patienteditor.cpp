#include "patienteditor.h"

#include "correctionchoices.h"
#include "correctiontext.h"
#include "createconnection.h"
#include "editorfoot.h"
#include "httpuploadfile.h"
#include "kivmessageboxform.h"
#include "patientfields.h"
#include "webfailuretext.h"

#include <QCloseEvent>
#include <QLabel>
#include <QShortcut>
#include <QVBoxLayout>

#include <utility>

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
    connect(m_work, &CorrectionWork::progress, m_foot, &EditorFoot::showProgress);
    connect(m_work, &CorrectionWork::finished, this, &PatientEditor::onFinished);
    connect(m_work, &CorrectionWork::finishedEarlier, this, [this](const QVector<CorrectionReport> &earlier) {
        m_news += (m_news.isEmpty() ? QString() : QStringLiteral("\n")) + CorrectionText::earlier(earlier);
    });
    connect(m_fields, &PatientFields::edited, this, &PatientEditor::refresh);
    connect(m_choices, &CorrectionChoices::changed, this, &PatientEditor::refresh);
    connect(m_foot, &EditorFoot::saveWanted, this, &PatientEditor::save);
    connect(m_foot, &EditorFoot::stopWanted, m_work, &CorrectionWork::stop);
    connect(m_foot, &EditorFoot::closeWanted, this, &QWidget::close);
    connect(
        HttpUploadFile::instance(), &HttpUploadFile::sessionChanged, this, &PatientEditor::onSessionChanged);
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
    m_choices = new CorrectionChoices(this);
    m_serviceState = wrapped("serviceState", this);
    m_files = wrapped("files", this);
    m_foot = new EditorFoot(this);
    layout->addWidget(m_head);
    layout->addWidget(m_fields);
    layout->addWidget(m_serviceState);
    layout->addWidget(m_choices);
    layout->addWidget(m_files);
    layout->addStretch();
    layout->addWidget(m_foot);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
    resize(usualWidth, sizeHint().height());
}

void PatientEditor::setPatientName(const QString &name)
{
    m_head->setText(CorrectionText::value(PatientField::Name, name));
}

void PatientEditor::setJsessionid(const QByteArray &sessionId, const QString &serviceAddress)
{
    m_sessionId = sessionId;
    m_serviceAddress = serviceAddress.isEmpty() ? HttpUploadFile::instance()->getAssistUrl() : serviceAddress;
    m_databasePath = databasePath();
    read();
    show();
    raise();
    activateWindow();
}

/// None once the session that the editor was opened with is not the open one.
WebService PatientEditor::service() const
{
    const CloudSession &session = HttpUploadFile::instance()->session();
    return session.isOpen() && session.id == m_sessionId && session.isAt(m_serviceAddress) ? session.service
                                                                                           : WebService();
}

/// Whoever signs in at the same service goes on; what runs comes to its end, and is followed by a reading.
void PatientEditor::onSessionChanged()
{
    const CloudSession &session = HttpUploadFile::instance()->session();
    if (session.isOpen() && m_serviceAddress.isEmpty()) {
        m_serviceAddress = HttpUploadFile::instance()->getAssistUrl();
    }
    m_sessionId = session.isOpen() && session.isAt(m_serviceAddress) ? session.id : QByteArray();
    if (!m_databasePath.isEmpty() && m_state != State::Correcting) {
        read();
    }
}

void PatientEditor::read()
{
    setState(State::Reading);
    if (m_news.isEmpty()) {
        m_foot->say(tr("Reading…"));
    }
    m_work->read(m_databasePath, m_studyPk, m_studyUid, service());
}

void PatientEditor::onKnown(const StudyFacts &facts)
{
    m_facts = facts;
    m_fields->setIndex(facts.index.values);
    m_fields->setService(facts.service, facts.isInService);
    if (!m_isWantedSet) {
        m_fields->setWanted(facts.index.values);
        m_isWantedSet = facts.index.isFound;
    }
    m_choices->offer(facts.index.studyUids.size(), facts.isInService);
    m_serviceState->setText(serviceText());
    m_files->setText(CorrectionText::filesOf(facts.index));
    if (facts.index.isFound) {
        setPatientName(facts.index.values[PatientField::Name]);
        m_foot->say(m_news, m_isNewsBad);
    } else {
        m_foot->say(CorrectionText::indexProblem(facts.found), true);
    }
    m_fault.clear();
    setState(State::Idle);
}

QString PatientEditor::serviceText() const
{
    if (service().address.isEmpty()) {
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
    if (m_choices->isServiceToo()) {
        const PatientChanges service = m_facts.service.changesTo(wanted);
        for (auto change = service.cbegin(); change != service.cend(); ++change) {
            all.insert(change.key(), change.value());
        }
    }
    return all;
}

bool PatientEditor::isKnown() const
{
    return m_state != State::Reading && m_facts.index.isFound;
}

void PatientEditor::refresh()
{
    const QString fault = isKnown() ? m_fields->fault() : QString();
    if (m_state == State::Idle && fault != m_fault) {
        m_foot->say(fault, true);
        m_fault = fault;
    }
    m_foot->setSavable(isKnown() && m_state == State::Idle && fault.isEmpty() && !changes().isEmpty());
}

void PatientEditor::save()
{
    CorrectionRequest request;
    request.databasePath = m_databasePath;
    request.index.studyPk = m_studyPk;
    request.index.studyUid = m_studyUid;
    request.index.scope =
        m_choices->isThisStudyAlone() ? IndexCorrection::Scope::Study : IndexCorrection::Scope::Patient;
    request.index.changes = changes();
    request.inService = m_choices->isServiceToo();
    const WebService where = service();
    if (request.inService && where.address.isEmpty()) {
        read(); // which says that nobody is signed in
        return;
    }
    setState(State::Correcting);
    m_work->correct(request, where);
}

/// Both places are read again before anything else can be saved: the study may be another patient's now.
void PatientEditor::onFinished(const CorrectionReport &report)
{
    const bool isDone = report.end == CorrectionReport::End::Done;
    m_news = CorrectionText::report(report, m_facts);
    m_isNewsBad = !isDone || report.isLeft;
    m_foot->say(m_news, m_isNewsBad);
    m_isWantedSet = !isDone;
    read();
    if (isDone) {
        emit saved(m_studyUid);
    }
    if (std::exchange(m_isClosing, false)) {
        close();
    }
}

void PatientEditor::setState(State state)
{
    m_state = state;
    const bool isEditable = state == State::Idle && isKnown();
    m_fields->setEditable(isEditable);
    m_choices->setEnabled(isEditable);
    m_foot->setWorking(state != State::Idle, state == State::Correcting);
    refresh();
}

/// What has begun to be stored comes to its end first; the window stays until then.
void PatientEditor::closeEvent(QCloseEvent *event)
{
    if (m_state == State::Correcting) {
        m_work->stop();
        m_isClosing = true;
        event->ignore();
        return;
    }
    event->setAccepted(!hasTyped() || mayDrop());
}

bool PatientEditor::hasTyped() const
{
    return m_isWantedSet && !m_facts.index.values.changesTo(m_fields->wanted()).isEmpty();
}

bool PatientEditor::mayDrop()
{
    const int answer = kivMessageBoxForm::question(this, windowTitle(),
        tr("What you have typed is not saved. Close all the same?"), kivMessageBoxForm::OkAndCancel,
        kivMessageBoxForm::AnswerCancel);
    return answer == kivMessageBoxForm::AnswerOk;
}
