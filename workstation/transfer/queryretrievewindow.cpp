#include "queryretrievewindow.h"

#include "archivechoice.h"
#include "archivemodel.h"
#include "archivequestionform.h"
#include "archiveresults.h"
#include "archivetext.h"
#include "companionwindow.h"
#include "firstwindowsize.h"
#include "plaincaption.h"
#include "retrievallist.h"
#include "retrievalservice.h"

#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr QSize firstSize{1040, 720};
constexpr int heldDelayMs = 300; ///< an index that is written to changes often

} // namespace

QueryRetrieveWindow::QueryRetrieveWindow(RetrievalService *service, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_service(service)
    , m_search(new ArchiveSearch(this))
    , m_model(new ArchiveModel(this))
    , m_heldTimer(new QTimer(this))
{
    build();
    closeOnEscape(this);
    m_heldTimer->setSingleShot(true);
    m_heldTimer->setInterval(heldDelayMs);
    connect(m_heldTimer, &QTimer::timeout, this, &QueryRetrieveWindow::countHeld);
    connect(m_search, &ArchiveSearch::foundPatients, m_model, &ArchiveModel::addPatients);
    connect(m_search, &ArchiveSearch::found, this, [this](const QVector<QueryRecord> &studies) {
        m_model->addStudies(studies);
        m_results->expandToDepth(0);
        onIndexChanged();
    });
    connect(m_search, &ArchiveSearch::ended, this, &QueryRetrieveWindow::onEnded);
    connect(m_search, &ArchiveSearch::seriesFound, this, &QueryRetrieveWindow::onSeries);
    connect(m_search, &ArchiveSearch::held, m_model, &ArchiveModel::setHeld);
    enableButtons();
}

void QueryRetrieveWindow::build()
{
    setObjectName(QStringLiteral("QueryRetrieveWindow"));
    setWindowTitle(tr("Query/Retrieve"));
    resize(firstWindowSize(this, firstSize));
    QWidget *question = buildQuestion(); // the keys go through the window in this order
    auto *parts = new QSplitter(Qt::Vertical, this);
    parts->setChildrenCollapsible(false);
    parts->addWidget(buildResults());
    parts->addWidget(new RetrievalList(m_service, parts));
    parts->setStretchFactor(0, 3);
    parts->setStretchFactor(1, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(question);
    layout->addWidget(parts, 1);
}

QPushButton *QueryRetrieveWindow::addButton(QLayout *layout, const QString &name, const QString &text,
    const QString &toolTip, void (QueryRetrieveWindow::*slot)())
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    button->setAccessibleName(plainCaption(text));
    button->setAutoDefault(false);
    layout->addWidget(button);
    connect(button, &QPushButton::clicked, this, slot);
    return button;
}

QWidget *QueryRetrieveWindow::buildQuestion()
{
    auto *area = new QWidget(this);
    m_archive = new QComboBox(area);
    m_archive->setObjectName(QStringLiteral("archive"));
    m_archive->setAccessibleName(tr("Archive"));
    m_archive->setToolTip(tr("One of the DICOM destinations of the settings"));
    m_archive->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    connect(m_archive, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &QueryRetrieveWindow::enableButtons);
    auto *label = new QLabel(tr("Arc&hive:"), area);
    label->setBuddy(m_archive);
    m_question = new ArchiveQuestionForm(area);
    connect(m_question, &ArchiveQuestionForm::asked, this, &QueryRetrieveWindow::search);
    auto *row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_archive, 1);
    m_searchButton = addButton(
        row, QStringLiteral("search"), tr("&Search"), tr("Ask the archive"), &QueryRetrieveWindow::search);
    m_stopButton = addButton(row, QStringLiteral("stop"), tr("Sto&p"),
        tr("End the search; what was found stays"), &QueryRetrieveWindow::stop);
    auto *clear = new QPushButton(tr("Clear &fields"), area);
    clear->setObjectName(QStringLiteral("clear"));
    clear->setToolTip(tr("Empty all fields of the search"));
    clear->setAccessibleName(tr("Clear fields"));
    connect(clear, &QPushButton::clicked, m_question, &ArchiveQuestionForm::clear);
    row->addWidget(clear);
    auto *layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(row);
    layout->addWidget(m_question);
    return area;
}

QWidget *QueryRetrieveWindow::buildResults()
{
    auto *area = new QWidget(this);
    m_results = new ArchiveResults(m_model, area);
    m_results->setEmptyText(tr("What a search finds is listed here."));
    connect(m_results, &QTreeView::expanded, this, &QueryRetrieveWindow::openRow);
    connect(m_results, &ArchiveResults::retrieveRequested, this, &QueryRetrieveWindow::retrieve);
    connect(m_results->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        &QueryRetrieveWindow::enableButtons);
    m_state = new QLabel(area);
    m_state->setObjectName(QStringLiteral("state"));
    m_state->setWordWrap(true);
    m_state->setTextFormat(Qt::PlainText);
    auto *row = new QHBoxLayout;
    row->addWidget(m_state, 1);
    m_retrieveButton = addButton(row, QStringLiteral("retrieve"), tr("Retrie&ve"),
        tr("Bring what is chosen into the index"), &QueryRetrieveWindow::retrieve);
    auto *layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_results, 1);
    layout->addLayout(row);
    return area;
}

void QueryRetrieveWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous()) {
        readArchives();
        m_question->setFocus();
    }
}

/// The settings may have changed since it was last shown.
void QueryRetrieveWindow::readArchives()
{
    const QString chosen = m_archive->currentText();
    m_archives = Archive::readAll();
    m_archive->clear();
    for (const Archive &archive : qAsConst(m_archives)) {
        m_archive->addItem(archive.name);
    }
    m_archive->setCurrentIndex(qMax(0, m_archive->findText(chosen)));
    if (m_archives.isEmpty()) {
        say(tr("No archive is configured. Add it to the DICOM destinations of the settings."));
    }
    enableButtons();
}

void QueryRetrieveWindow::search()
{
    const QString fault = m_question->fault();
    if (!fault.isEmpty() || m_archive->currentIndex() < 0) {
        say(fault.isEmpty() ? m_state->text() : fault);
        return;
    }
    m_model->clearAll();
    m_searched = m_archives.at(m_archive->currentIndex());
    m_search->search(m_searched, m_question->question());
    m_results->setEmptyText(QString());
    say(tr("Asking %1…").arg(m_searched.name));
    enableButtons();
}

void QueryRetrieveWindow::stop()
{
    m_search->stop();
}

void QueryRetrieveWindow::onEnded(const ArchiveAnswer &answer)
{
    const QString text = ArchiveText::of(answer, m_model->studyCount());
    m_results->setEmptyText(text);
    say(text);
    enableButtons();
}

void QueryRetrieveWindow::onSeries(
    const QString &studyUid, const QVector<QueryRecord> &series, const ArchiveAnswer &answer)
{
    m_model->setSeries(studyUid, series, ArchiveText::problemOf(answer));
    onIndexChanged();
}

void QueryRetrieveWindow::openRow(const QModelIndex &index)
{
    if (m_model->beginListing(index)) {
        const QueryRecord study = m_model->recordOf(index);
        m_search->listSeries(study.value(QueryTag::patientId), study.value(QueryTag::studyUid));
    }
}

void QueryRetrieveWindow::retrieve()
{
    QVector<Retrieval> retrievals;
    for (const QModelIndex &row : m_results->chosen()) {
        retrievals.append(retrievalOf(*m_model, row, m_searched));
    }
    if (!retrievals.isEmpty()) {
        m_service->enqueue(retrievals);
        say(ArchiveText::requestOf(retrievals));
    }
}

void QueryRetrieveWindow::enableButtons()
{
    const bool isSearching = m_search->isRunning();
    m_searchButton->setEnabled(m_archive->currentIndex() >= 0 && !isSearching);
    m_stopButton->setEnabled(isSearching);
    m_retrieveButton->setEnabled(!m_results->chosen().isEmpty());
}

/// Screen readers read it where it changes, without the focus.
void QueryRetrieveWindow::say(const QString &text)
{
    m_state->setText(text);
    m_state->setAccessibleName(text);
    QAccessibleEvent changed(m_state, QAccessible::Alert);
    QAccessible::updateAccessibility(&changed);
}

void QueryRetrieveWindow::onIndexChanged()
{
    if (isVisible() && !m_heldTimer->isActive()) {
        m_heldTimer->start();
    }
}

void QueryRetrieveWindow::countHeld()
{
    m_search->countHeld(RecordLevel::Study, m_model->studyUids());
    m_search->countHeld(RecordLevel::Series, m_model->seriesUids());
}
