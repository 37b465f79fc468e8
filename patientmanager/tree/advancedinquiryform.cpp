#include "advancedinquiryform.h"

#include "attributes.h"
#include "conditionmodel.h"
#include "inquiryentry.h"
#include "inquiryfields.h"
#include "inquirytable.h"
#include "kivmessageboxform.h"
#include "ncomboboxdelegate.h"
#include "ncombologicdelegate.h"
#include "ndelegatequerytype.h"
#include "ui_advancedinquiryform.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QShortcut>
#include <QStringListModel>
#include <QTextDocument>

#include <algorithm>
#include <utility>

namespace {

/// Longer values are cut until the user widens the column, so that the columns behind them stay in sight.
constexpr int widestColumn = 160;
/// A value that is still empty needs room to be typed.
constexpr int narrowestValue = 120;
/// Rows around the visible ones that a column's width is taken from.
constexpr int rowsMeasured = 100;

/// A view keeps the selection models of all the models that it ever showed.
void showModel(QAbstractItemView *view, QAbstractItemModel *model)
{
    if (view->model() == model) {
        return; // the view would keep the selection model, too
    }
    const QItemSelectionModel *before = view->selectionModel();
    view->setModel(model);
    delete before;
}

} // namespace

AdvancedInquiryForm::AdvancedInquiryForm(QWidget *parent, const QString &inquiryName)
    : QWidget(parent, Qt::Window)
    , ui(std::make_unique<Ui::AdvancedInquiryForm>())
    , m_fields(new InquiryFields(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    ui->setupUi(this);
    build();
    for (const QString &name : InquiryTable::names()) {
        addName(name);
    }
    ui->inquiryBox->setCurrentIndex(std::max(exactEntry(*ui->inquiryBox, inquiryName), 0));
    onTreeView(ui->inquiryBox->currentIndex());
}

AdvancedInquiryForm::~AdvancedInquiryForm() = default;

/// The list of names is as narrow as the box: tool tips show long ones whole, wrapped.
void AdvancedInquiryForm::addName(const QString &name)
{
    ui->inquiryBox->addItem(name);
    ui->inquiryBox->setItemData(
        ui->inquiryBox->count() - 1, Qt::convertFromPlainText(name, Qt::WhiteSpaceNormal), Qt::ToolTipRole);
}

void AdvancedInquiryForm::build()
{
    buildConditionView();
    buildFieldLists();
    buildKeys();
    connect(ui->inquiryBox, QOverload<int>::of(&QComboBox::activated), this, &AdvancedInquiryForm::pick);
    onListSelectPD(0);
    onListSelectSI(0);
}

void AdvancedInquiryForm::buildConditionView()
{
    QTreeView *view = ui->conditionView;
    view->setItemDelegateForColumn(ConditionModel::Symbol, new NComboBoxDelegate(view));
    view->setItemDelegateForColumn(ConditionModel::Logic, new NComboLogicDelegate(view));
    view->setItemDelegateForColumn(ConditionModel::QueryType, new NDelegateQueryType(view));
    view->header()->setResizeContentsPrecision(rowsMeasured);
    setConditionModel(new ConditionModel(this));
}

void AdvancedInquiryForm::buildFieldLists()
{
    const auto activated = QOverload<int>::of(&QComboBox::activated);
    connect(ui->levelPD, activated, this, &AdvancedInquiryForm::onListSelectPD);
    connect(ui->levelSI, activated, this, &AdvancedInquiryForm::onListSelectSI);
    for (QListView *list : {ui->fieldsPD, ui->fieldsSI}) {
        const auto addCurrent = [this, list] { addField(list, list->currentIndex()); };
        connect(list, &QListView::doubleClicked, this, addCurrent);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
            auto *enter = new QShortcut(key, list);
            enter->setContext(Qt::WidgetShortcut);
            connect(enter, &QShortcut::activated, this, addCurrent);
        }
    }
}

void AdvancedInquiryForm::buildKeys()
{
    auto *removal = new QShortcut(QKeySequence::Delete, ui->conditionView);
    removal->setContext(Qt::WidgetShortcut);
    connect(removal, &QShortcut::activated, this, &AdvancedInquiryForm::on_InquiryCancel_clicked);
}

RecordLevel AdvancedInquiryForm::upperLevel() const
{
    return ui->levelPD->currentIndex() == 1 ? RecordLevel::Study : RecordLevel::Patient;
}

RecordLevel AdvancedInquiryForm::lowerLevel() const
{
    return ui->levelSI->currentIndex() == 1 ? RecordLevel::Image : RecordLevel::Series;
}

void AdvancedInquiryForm::onListSelectPD(int index)
{
    if (index == 0 || index == 1) {
        showModel(ui->fieldsPD, m_fields->of(index == 0 ? RecordLevel::Patient : RecordLevel::Study));
    }
}

void AdvancedInquiryForm::onListSelectSI(int index)
{
    if (index == 0 || index == 1) {
        showModel(ui->fieldsSI, m_fields->of(index == 0 ? RecordLevel::Series : RecordLevel::Image));
    }
}

void AdvancedInquiryForm::on_InquiryButton_clicked()
{
    addSelected(ui->fieldsPD, upperLevel());
    addSelected(ui->fieldsSI, lowerLevel());
    if (sender() == ui->InquiryButton) {
        ui->fieldsPD->clearSelection();
        ui->fieldsSI->clearSelection();
    }
}

void AdvancedInquiryForm::addSelected(QListView *list, RecordLevel level)
{
    QList<int> rows;
    for (const QModelIndex &index : list->selectionModel()->selectedIndexes()) {
        rows.append(index.row());
    }
    std::sort(rows.begin(), rows.end());
    addFields(list, rows, level);
}

/// One field alone, whatever else is selected.
void AdvancedInquiryForm::addField(QListView *list, const QModelIndex &field)
{
    if (field.isValid()) {
        addFields(list, {field.row()}, list == ui->fieldsPD ? upperLevel() : lowerLevel());
        list->selectionModel()->select(field, QItemSelectionModel::Deselect);
    }
}

void AdvancedInquiryForm::addFields(QListView *list, const QList<int> &rows, RecordLevel level)
{
    QModelIndex added;
    for (const int row : rows) {
        added = m_model->add(level, list->model()->index(row, 0).data().toString());
    }
    if (added.isValid()) {
        showConditions();
        ui->conditionView->setCurrentIndex(added);
    }
}

void AdvancedInquiryForm::on_InquiryCancel_clicked()
{
    m_model->removeConditions(ui->conditionView->selectionModel()->selectedIndexes());
}

void AdvancedInquiryForm::on_NewTree_clicked()
{
    const bool byHand = sender() == ui->NewTree;
    if (byHand && !mayDropChanges()) {
        return;
    }
    dropSaveForm(); // its name was meant for the conditions that go
    setConditionModel(new ConditionModel(this));
    setShown(-1);
    if (byHand) {
        ui->inquiryBox->setCurrentIndex(-1);
        ui->fieldsPD->setFocus();
    }
}

void AdvancedInquiryForm::setConditionModel(ConditionModel *model)
{
    showModel(ui->conditionView, model);
    delete m_model;
    m_model = model;
    connect(model, &QAbstractItemModel::dataChanged, this,
        [this](const QModelIndex &cell) { fitColumn(cell.column()); });
    connect(model, &QAbstractItemModel::rowsInserted, this, &AdvancedInquiryForm::updateButtons);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &AdvancedInquiryForm::updateButtons);
    showConditions();
}

void AdvancedInquiryForm::fitColumn(int column)
{
    QTreeView *view = ui->conditionView;
    view->resizeColumnToContents(column);
    const int narrowest = column == ConditionModel::Value ? narrowestValue : 0;
    view->setColumnWidth(column, qBound(narrowest, view->columnWidth(column), widestColumn));
}

void AdvancedInquiryForm::showConditions()
{
    QTreeView *view = ui->conditionView;
    view->expandAll();
    for (int column = 0; column < ConditionModel::ColumnCount; ++column) {
        fitColumn(column);
    }
}

void AdvancedInquiryForm::onTreeView(int index)
{
    dropSaveForm();
    m_model->load(ui->inquiryBox->itemText(index));
    showConditions();
    setShown(index);
}

void AdvancedInquiryForm::pick(int index)
{
    if (mayDropChanges()) {
        onTreeView(index);
    } else {
        ui->inquiryBox->setCurrentIndex(m_shown.isValid() ? m_shown.row() : -1);
    }
}

void AdvancedInquiryForm::setShown(int index)
{
    m_shown = ui->inquiryBox->model()->index(index, 0);
    updateButtons();
}

void AdvancedInquiryForm::updateButtons()
{
    ui->inquiryBox->setEnabled(ui->inquiryBox->count() > 0);
    ui->Save->setEnabled(m_shown.isValid());
    ui->SaveAs->setEnabled(!m_model->isEmpty());
    ui->Delete->setEnabled(m_shown.isValid());
}

/// A cell that is still being edited belongs to the conditions.
void AdvancedInquiryForm::finishEditing()
{
    if (ui->conditionView->viewport()->isAncestorOf(focusWidget())) {
        ui->conditionView->setFocus();
    }
}

bool AdvancedInquiryForm::mayDropChanges()
{
    finishEditing();
    return !m_model->isChanged()
        || kivMessageBoxForm::question(this, tr("Unsaved changes"),
               tr("The conditions have changes that have not been saved. Drop them?"),
               kivMessageBoxForm::OkAndCancel, kivMessageBoxForm::AnswerCancel)
        == kivMessageBoxForm::AnswerOk;
}

bool AdvancedInquiryForm::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        // Who claims the key keeps this question from coming here.
        m_isEscapeFree = true;
    }
    return QWidget::event(event);
}

/// An open list closes already when it is asked whether it claims Escape; the press then comes here.
void AdvancedInquiryForm::keyPressEvent(QKeyEvent *event)
{
    const bool isFree = std::exchange(m_isEscapeFree, false);
    if (isFree && event->matches(QKeySequence::Cancel)) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void AdvancedInquiryForm::closeEvent(QCloseEvent *event)
{
    event->setAccepted(mayDropChanges());
}
