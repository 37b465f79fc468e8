#include "sendfailurelist.h"

#include "detaillabel.h"
#include "listheight.h"
#include "plaintableview.h"
#include "sendfailuremodel.h"
#include "sendnotifier.h"

#include <QLabel>
#include <QLocale>
#include <QVBoxLayout>

namespace {

constexpr int visibleFailures = 2;
constexpr int destinationCharacters = 26;
constexpr int fileCharacters = 40;

} // namespace

SendFailureList::SendFailureList(QWidget *parent)
    : QWidget(parent)
{
    m_model =
        new SendFailureModel([](qint64 job, int first,
                                 int count) { return SendNotifier::instance()->failures(job, first, count); },
            this);
    m_failures = new PlainTableView(this);
    m_failures->setObjectName(QStringLiteral("failures"));
    m_failures->setAccessibleName(tr("Images that were not taken"));
    m_failures->setModel(m_model);
    m_failures->setColumnCharacters(SendFailureModel::FileColumn, fileCharacters);
    m_failures->setPathColumn(SendFailureModel::FileColumn);
    m_failures->setColumnCharacters(SendFailureModel::DestinationColumn, destinationCharacters);
    m_failures->setMinimumHeight(heightOfRows(*m_failures, visibleFailures));
    m_reason = new DetailLabel(this);
    m_reason->setObjectName(QStringLiteral("reason"));
    connect(m_failures->selectionModel(), &QItemSelectionModel::currentChanged, this,
        &SendFailureList::showReason);
    m_caption = new QLabel(this);
    m_caption->setBuddy(m_failures);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_caption);
    layout->addWidget(m_failures, 1);
    layout->addWidget(m_reason);
}

void SendFailureList::update()
{
    QVector<SendFailureModel::Part> parts;
    for (const SentJob &job : SendNotifier::instance()->jobs()) {
        if (job.failed > 0) {
            parts.append({job.id, job.destination, int(job.failed), job.isOver()});
        }
    }
    m_model->show(parts);
    m_caption->setText(tr("N&ot taken: %1").arg(QLocale().toString(m_model->rowCount())));
    setVisible(!parts.isEmpty());
    showReason();
}

/// What the list cuts.
void SendFailureList::showReason()
{
    const QModelIndex failure = m_failures->currentIndex();
    m_reason->setDetail(failure.isValid()
            ? failure.siblingAtColumn(SendFailureModel::ReasonColumn).data().toString()
            : QString());
}
