#include "downloadlistpanel.h"

#include "downloadengine.h"
#include "downloadlistmodel.h"
#include "emptytext.h"
#include "focuscare.h"
#include "listheight.h"
#include "namedparts.h"
#include "progressdelegate.h"
#include "retrynotice.h"
#include "webfailuretext.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeView>

#include <algorithm>

namespace {

constexpr int visibleRows = 3;
/// Of each column, in characters.
constexpr int widths[DownloadListModel::ColumnCount] = {32, 17, 11, 10, 18};

/// Says how to begin, while there is nothing.
class DownloadListView : public QTreeView
{
public:
    using QTreeView::QTreeView;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QTreeView::paintEvent(event);
        paintEmptyText(this,
            DownloadListPanel::tr(
                "Nothing is being downloaded. Search above, check the studies or series that "
                "you want, and press Download Checked."));
    }
};

} // namespace

DownloadListPanel::DownloadListPanel(QWidget *parent)
    : QWidget(parent)
    , m_model(new DownloadListModel(this))
    , m_retry(new RetryNotice(this))
    , m_view(new DownloadListView(this))
{
    m_retry->setObjectName(QStringLiteral("retryNotice"));
    m_view->setObjectName(QStringLiteral("downloads"));
    m_view->setAccessibleName(tr("Downloads"));
    m_view->setToolTip(tr("What is fetched from the cloud, and what was"));
    m_view->setModel(m_model);
    m_view->setRootIsDecorated(false);
    m_view->setUniformRowHeights(true);
    m_view->setAlternatingRowColors(true);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setItemDelegateForColumn(
        DownloadListModel::ProgressColumn, new ProgressDelegate(DownloadListModel::shareRole, m_view));
    for (int column = 0; column < DownloadListModel::ColumnCount; ++column) {
        m_view->setColumnWidth(column, widths[column] * m_view->fontMetrics().averageCharWidth());
    }
    m_view->setMinimumHeight(heightOfRows(*m_view, visibleRows));
    auto *buttons = new QVBoxLayout;
    m_stop = NamedParts::button<QPushButton>(
        "stop", tr("Sto&p"), tr("Stop the chosen downloads; what is here stays"), this);
    m_resume = NamedParts::button<QPushButton>(
        "resume", tr("&Go On"), tr("Go on with the chosen downloads: only what is missing is fetched"), this);
    m_remove = NamedParts::button<QPushButton>(
        "remove", tr("R&emove"), tr("Take the chosen downloads off this list; their images stay"), this);
    for (QPushButton *button : {m_stop, m_resume, m_remove}) {
        buttons->addWidget(button);
    }
    buttons->addStretch();
    auto *list = new QHBoxLayout;
    list->addWidget(m_view, 1);
    list->addLayout(buttons);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_retry);
    layout->addLayout(list);
    connect(m_retry, &RetryNotice::tryWanted, this, &DownloadListPanel::tryNow);
    connect(m_stop, &QPushButton::clicked, this, [this] {
        for (const QString &uid : chosen()) {
            m_engine->stop(uid);
        }
    });
    connect(m_resume, &QPushButton::clicked, this, [this] {
        for (const QString &uid : chosen()) {
            m_engine->resume(uid);
        }
    });
    connect(m_remove, &QPushButton::clicked, this, [this] {
        for (const QString &uid : chosen()) {
            m_engine->remove(uid);
        }
    });
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        &DownloadListPanel::refreshButtons);
    refreshButtons();
}

void DownloadListPanel::setEngine(DownloadEngine *engine)
{
    if (m_engine != engine) {
        m_engine = engine;
        connect(engine, &DownloadEngine::changed, this, &DownloadListPanel::refresh);
    }
    refresh();
}

void DownloadListPanel::refresh()
{
    const QStringList before = chosen();
    m_model->setTallies(m_engine ? m_engine->tallies() : QVector<DownloadTally>());
    if (chosen() != before) { // rows have come or gone
        for (int row = 0; row < m_model->rowCount(); ++row) {
            if (before.contains(m_model->at(row).studyUid)) {
                m_view->selectionModel()->select(
                    m_model->index(row, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
            }
        }
    }
    refreshButtons();
    refreshRetry();
}

/// The one whose turn comes first speaks for all that wait for a service.
void DownloadListPanel::refreshRetry()
{
    const DownloadTally *first = nullptr;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const DownloadTally &tally = m_model->at(row);
        const bool isSooner = !first || tally.nextTryMs < first->nextTryMs;
        if (tally.state == DownloadState::Retrying && isSooner) {
            first = &tally;
        }
    }
    if (first) {
        m_retry->showTrouble(WebFailureText::of(first->failure), first->nextTryMs);
    } else {
        m_retry->clear();
    }
}

void DownloadListPanel::tryNow()
{
    for (int row = 0; m_engine && row < m_model->rowCount(); ++row) {
        if (m_model->at(row).state == DownloadState::Retrying) {
            m_engine->resume(m_model->at(row).studyUid);
        }
    }
}

QStringList DownloadListPanel::chosen() const
{
    QStringList uids;
    for (const QModelIndex &row : m_view->selectionModel()->selectedRows()) {
        uids.append(m_model->at(row.row()).studyUid);
    }
    return m_engine ? uids : QStringList();
}

void DownloadListPanel::refreshButtons()
{
    const QModelIndexList rows = m_view->selectionModel()->selectedRows();
    const auto isAny = [&](const auto &is) {
        return std::any_of(
            rows.begin(), rows.end(), [&](const QModelIndex &row) { return is(m_model->at(row.row())); });
    };
    setEnabledWithCare(
        m_stop, m_engine && isAny([](const DownloadTally &tally) { return !tally.isEnded(); }), m_view);
    setEnabledWithCare(m_resume, m_engine && isAny([](const DownloadTally &tally) {
        return tally.state == DownloadState::Stopped || tally.state == DownloadState::Failed;
    }),
        m_view);
    setEnabledWithCare(m_remove, m_engine && !rows.isEmpty(), m_view);
}
