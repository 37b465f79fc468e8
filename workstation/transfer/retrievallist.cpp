#include "retrievallist.h"

#include "detaillabel.h"
#include "listheight.h"
#include "plaincaption.h"
#include "plaintableview.h"
#include "progressdelegate.h"
#include "retrievalmodel.h"
#include "retrievalservice.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int visibleRows = 3;

} // namespace

RetrievalList::RetrievalList(RetrievalService *service, QWidget *parent)
    : QWidget(parent)
    , m_service(service)
    , m_model(new RetrievalModel(this))
    , m_table(new PlainTableView(this))
    , m_notice(new DetailLabel(this))
{
    buildTable();
    auto *caption = new QLabel(tr("Retrieva&ls:"), this);
    caption->setBuddy(m_table);
    auto *row = new QHBoxLayout;
    m_cancel = addButton(
        row, QStringLiteral("cancel"), tr("&Cancel"), tr("Bring no more of it; what has come stays"));
    m_retry = addButton(row, QStringLiteral("retry"), tr("Retr&y"),
        tr("Ask for it again; what is in the index already stays as it is"));
    row->addStretch();
    m_remove = addButton(
        row, QStringLiteral("removeEnded"), tr("Remove &ended"), tr("Take what is over off this list"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(caption);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_notice);
    layout->addLayout(row);
    connect(m_cancel, &QPushButton::clicked, this, [this] { forChosen(&RetrievalService::cancel); });
    connect(m_retry, &QPushButton::clicked, this, [this] { forChosen(&RetrievalService::retry); });
    connect(m_remove, &QPushButton::clicked, m_service, &RetrievalService::removeEnded);
    connect(m_service, &RetrievalService::changed, this, &RetrievalList::update);
    update();
}

void RetrievalList::buildTable()
{
    m_table->setObjectName(QStringLiteral("retrievals"));
    m_table->setAccessibleName(tr("Retrievals"));
    m_table->setToolTip(tr("What is on its way from archives"));
    m_table->setModel(m_model);
    m_table->setEmptyText(tr("Nothing has been retrieved since the program was started."));
    m_table->setItemDelegateForColumn(
        RetrievalModel::ProgressColumn, new ProgressDelegate(RetrievalModel::shareRole, m_table));
    m_table->setColumnCharacters(RetrievalModel::TitleColumn, 52);
    m_table->setColumnCharacters(RetrievalModel::ArchiveColumn, 14);
    m_table->setColumnCharacters(RetrievalModel::StateColumn, 10);
    m_table->setColumnCharacters(RetrievalModel::ProgressColumn, 16);
    m_table->setMinimumHeight(heightOfRows(*m_table, visibleRows));
    connect(
        m_table->selectionModel(), &QItemSelectionModel::currentChanged, this, &RetrievalList::showNotice);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        &RetrievalList::enableButtons);
}

QPushButton *RetrievalList::addButton(
    QLayout *layout, const QString &name, const QString &text, const QString &toolTip)
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    button->setAccessibleName(plainCaption(text));
    layout->addWidget(button);
    return button;
}

QVector<Retrieval> RetrievalList::chosen() const
{
    QVector<Retrieval> result;
    for (const QModelIndex &index : m_table->selectionModel()->selectedRows()) {
        result.append(m_model->retrieval(index.row()));
    }
    return result;
}

void RetrievalList::forChosen(void (RetrievalService::*request)(qint64))
{
    for (const Retrieval &retrieval : chosen()) {
        (m_service->*request)(retrieval.id);
    }
}

void RetrievalList::update()
{
    m_model->setRetrievals(m_service->retrievals());
    enableButtons();
    showNotice();
}

/// What the list cuts.
void RetrievalList::showNotice()
{
    const QModelIndex current = m_table->currentIndex();
    m_notice->setDetail(current.siblingAtColumn(RetrievalModel::NoticeColumn).data().toString());
}

void RetrievalList::enableButtons()
{
    const auto anyOf = [](const QVector<Retrieval> &list, bool isOver) {
        return std::any_of(list.begin(), list.end(),
            [isOver](const Retrieval &retrieval) { return retrieval.isOver() == isOver; });
    };
    const QVector<Retrieval> selected = chosen();
    m_cancel->setEnabled(anyOf(selected, false));
    m_retry->setEnabled(anyOf(selected, true));
    m_remove->setEnabled(anyOf(m_service->retrievals(), true));
}
