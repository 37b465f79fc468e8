#include "receivecontroller.h"

#include "kivmessageboxform.h"
#include "receivesettings.h"
#include "swimconfig.h"

#include <QDir>
#include <QLocale>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>

namespace {

/// @param ownTitle what this workstation is called by
QString problemText(const ReceiveEvent &event, const QString &ownTitle)
{
    switch (event.problem) {
    case ReceiveProblem::None:
        break;
    case ReceiveProblem::UnknownCaller:
        return ReceiveController::tr("%1 wanted to send, but is not among the senders.").arg(event.peer);
    case ReceiveProblem::WrongCalledTitle:
        return ReceiveController::tr("%1 called %2; this workstation is %3")
            .arg(event.peer, event.detail, ownTitle);
    case ReceiveProblem::Busy:
        return ReceiveController::tr("A sender was turned away: too many send at once.");
    case ReceiveProblem::DiskFull:
        return ReceiveController::tr("The disk is full.");
    case ReceiveProblem::WriteFailed:
        return ReceiveController::tr("An image could not be written: %1").arg(event.detail);
    case ReceiveProblem::BadRequest:
    case ReceiveProblem::OtherObject:
        return ReceiveController::tr("%1 sent an image under a wrong name: %2").arg(event.peer, event.detail);
    case ReceiveProblem::NotReadable:
        return ReceiveController::tr("%1 sent what cannot be indexed: %2").arg(event.peer, event.detail);
    case ReceiveProblem::LineLost:
        return ReceiveController::tr("%1 broke off in the middle of an image.").arg(event.peer);
    case ReceiveProblem::OtherContentKept:
        return ReceiveController::tr("Other content came under a known identifier and was kept aside: %1")
            .arg(event.detail);
    case ReceiveProblem::IndexFailed:
        return ReceiveController::tr("Received images wait, since the index takes none: %1")
            .arg(event.detail);
    }
    return {};
}

QString spoolText(const QString &problem)
{
    return ReceiveController::tr("What comes cannot be kept beside the index: %1").arg(problem);
}

} // namespace

ReceiveController::ReceiveController(ReceiveService *service, QStatusBar *bar)
    : QObject(bar)
    , m_service(service)
    , m_note(new QToolButton(bar))
{
    m_note->setObjectName(QStringLiteral("statusReceive"));
    m_note->setAutoRaise(true);
    bar->addPermanentWidget(m_note);
    connect(
        m_note, &QToolButton::clicked, this, [] { swimconfig::instance()->showPage(swimconfig::Receiving); });
    connect(service, &ReceiveService::changed, this, &ReceiveController::update);
    connect(service, &ReceiveService::portFailed, this, &ReceiveController::tellFailure);
    update();
}

QString ReceiveController::text() const
{
    return m_note->text();
}

void ReceiveController::update()
{
    const ReceiveStatus status = m_service->status();
    m_note->setText(statusText(status));
    m_note->setToolTip(details(status));
    m_note->setAccessibleName(m_note->text().isEmpty() ? tr("Receiving") : m_note->text());
    m_note->setVisible(!m_note->text().isEmpty());
}

QString ReceiveController::statusText(const ReceiveStatus &status) const
{
    const QString coming = comingText(status);
    return status.counts.refused == 0 || coming.isEmpty()
        ? coming
        : tr("%1 · %Ln refused", nullptr, int(status.counts.refused)).arg(coming);
}

QString ReceiveController::comingText(const ReceiveStatus &status) const
{
    if (!status.spoolProblem.isEmpty() || status.failure.reason != ListenFailure::Reason::None) {
        return tr("Cannot receive");
    }
    const QLocale locale;
    if (status.stuck) {
        return tr("%Ln received image(s) wait for the index", nullptr, int(status.waiting));
    }
    if (status.isBusy()) {
        return tr("Receiving… %1").arg(locale.toString(status.counts.received));
    }
    if (!status.listening) {
        return {};
    }
    return status.counts.received > 0 ? tr("Received %1").arg(locale.toString(status.counts.received))
                                      : tr("Ready to receive");
}

/// Lines for the tool tip.
QString ReceiveController::details(const ReceiveStatus &status) const
{
    const QLocale locale;
    QStringList lines;
    if (!status.spoolProblem.isEmpty()) {
        lines.append(spoolText(status.spoolProblem));
    } else if (status.failure.reason != ListenFailure::Reason::None) {
        lines.append(failureText(ReceiveSettings::read().port, status.failure));
    }
    if (status.listening) {
        lines.append(tr("Listening on port %1").arg(status.port));
    }
    lines.append(tr("Received: %1, refused: %2, kept aside: %3")
                     .arg(locale.toString(status.counts.received), locale.toString(status.counts.refused),
                         locale.toString(status.counts.keptAside)));
    if (status.counts.lastProblem.problem != ReceiveProblem::None) {
        lines.append(tr("Last problem: %1")
                         .arg(problemText(status.counts.lastProblem,
                             status.listening ? status.aeTitle : ReceiveSettings::ownAeTitle())));
        lines.append(tr("All problems: %1").arg(QDir::toNativeSeparators(m_service->journalFile())));
    }
    return lines.join(QLatin1Char('\n'));
}

QString ReceiveController::failureText(int port, const ListenFailure &failure)
{
    switch (failure.reason) {
    case ListenFailure::Reason::None:
        return {};
    case ListenFailure::Reason::BadAddress:
        return tr("The address to receive on is none of this computer's: %1").arg(failure.detail);
    case ListenFailure::Reason::PortBusy:
        return tr(
            "Another program listens on port %1 already. Choose another port in the settings, or end that "
            "program.")
            .arg(port);
    case ListenFailure::Reason::NotAllowed:
        return tr("The system does not let you listen on port %1; ports from 1024 on are usually free.")
            .arg(port);
    case ListenFailure::Reason::Other:
        break;
    }
    return tr("Port %1 cannot be listened on: %2").arg(port).arg(failure.detail);
}

/// Later: the settings that caused it are just being closed.
void ReceiveController::tellFailure(int port, const ListenFailure &failure)
{
    const QString problem = m_service->status().spoolProblem;
    const QString text = problem.isEmpty() ? failureText(port, failure) : spoolText(problem);
    QTimer::singleShot(0, m_note, [this, text] {
        kivMessageBoxForm::warning(
            m_note->window(), tr("Receiving"), text, kivMessageBoxForm::OkOnly, kivMessageBoxForm::AnswerOk);
    });
}
