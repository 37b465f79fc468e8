#include "fieldpage.h"

#include "columncaptions.h"
#include "kivmessageboxform.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

enum ListColumn { CaptionColumn, NameColumn };

constexpr int visibleRows = 18;
constexpr int visibleCharacters = 70;

} // namespace

FieldPage::FieldPage(const QString &table, QWidget *parent)
    : QWidget(parent)
    , m_configuration(table)
{
    setObjectName(table);
    build();
    fill(table);
    connect(m_list, &QTreeWidget::itemChanged, this, [this] { apply(shownFlags()); });
}

void FieldPage::build()
{
    m_filter = new QLineEdit(this);
    m_filter->setObjectName(QStringLiteral("filter"));
    m_filter->setPlaceholderText(tr("Find a column"));
    m_filter->setAccessibleName(tr("Find a column"));
    m_filter->setClearButtonEnabled(true);
    connect(m_filter, &QLineEdit::textChanged, this, &FieldPage::filter);
    m_list = new QTreeWidget(this);
    m_list->setHeaderLabels({tr("Field"), tr("Column")});
    m_list->setAccessibleName(tr("Fields that are shown"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setMinimumSize(
        visibleCharacters * fontMetrics().averageCharWidth(), visibleRows * fontMetrics().height());
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_filter);
    layout->addWidget(m_list, 1);
    layout->addLayout(buildButtons());
}

QLayout *FieldPage::buildButtons()
{
    auto *layout = new QHBoxLayout;
    const int count = m_configuration.columns().size();
    connect(addButton(layout, tr("&All"), QStringLiteral("all")), &QPushButton::clicked, this,
        [this, count] { apply(Flags(count, 1)); });
    connect(addButton(layout, tr("&None"), QStringLiteral("none")), &QPushButton::clicked, this,
        [this, count] { apply(Flags(count, 0)); });
    connect(addButton(layout, tr("&Defaults"), QStringLiteral("defaults")), &QPushButton::clicked, this,
        [this] { apply(m_configuration.defaults()); });
    layout->addStretch();
    return layout;
}

QPushButton *FieldPage::addButton(QLayout *layout, const QString &text, const QString &name)
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(name);
    layout->addWidget(button);
    return button;
}

void FieldPage::fill(const QString &table)
{
    const QHash<QString, QString> captions = ColumnCaptions::of(table);
    const QStringList columns = m_configuration.columns();
    for (const QString &column : columns) {
        auto *item = new QTreeWidgetItem(m_list, {captions.value(column, column), column});
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    }
    check(m_configuration.flags());
    m_list->header()->resizeSections(QHeaderView::ResizeToContents);
}

FieldPage::Flags FieldPage::shownFlags() const
{
    Flags flags;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        flags.append(m_list->topLevelItem(i)->checkState(CaptionColumn) == Qt::Checked ? 1 : 0);
    }
    return flags;
}

void FieldPage::check(const Flags &flags)
{
    const QSignalBlocker quiet(m_list);
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        m_list->topLevelItem(i)->setCheckState(CaptionColumn, flags.at(i) != 0 ? Qt::Checked : Qt::Unchecked);
    }
    m_list->viewport()->update();
}

/// Shows what the index has afterwards, also where it refused.
void FieldPage::apply(const Flags &flags)
{
    const QString refusal = m_configuration.write(flags);
    check(m_configuration.flags());
    if (refusal.isEmpty()) {
        emit changed();
    } else {
        kivMessageBoxForm::warning(
            this, tr("Fields"), tr("The database reported an error: %1").arg(refusal), 1, 1);
    }
}

void FieldPage::filter(const QString &text)
{
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        QTreeWidgetItem *item = m_list->topLevelItem(i);
        const bool matches = item->text(CaptionColumn).contains(text, Qt::CaseInsensitive)
            || item->text(NameColumn).contains(text, Qt::CaseInsensitive);
        item->setHidden(!matches);
    }
}
