#pragma once

#include "patientmanager_export.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QWidget>

class NTableView;
class PagedTableModel;
class QModelIndex;
class QSqlTableModel;
struct RecordTable;

/**
 * What the four forms of the record tables share: a view on one table of the index, its filter, the reports
 * of what is selected, and the edits that wait until they are submitted.
 *
 * A form knows its own table alone; the main window joins the forms by their signals. Works on Qt's default
 * connection. Owns its model, which a refresh may replace: ask for it again instead of keeping it. GUI
 * thread.
 */
class PATIENTMANAGER_EXPORT RecordForm : public QWidget
{
    Q_OBJECT

public:
    ~RecordForm() override;

    NTableView *view() const { return m_view; }
    QSqlTableModel *tableModel() const;
    bool hasUnsavedEdits() const;
    /// Whether an editor is open in a cell.
    bool isEditing() const;
    /// Reads the rows of the current filter again and keeps the selected keys, the current cell and the place
    /// on the screen. Reports nothing; does nothing while edits are unsaved or an editor is open.
    void reload();
    /// Keys of the distinct selected rows in the order in which the view reports them.
    QList<qlonglong> selectedKeys() const;
    /// Adds the rows with these keys to the selection; reports nothing.
    void selectKeys(const QSet<qlonglong> &keys);

public slots:
    /// Reports the clicked row and then all selected ones.
    virtual void selectIndex(const QModelIndex &index);
    /// Reports the selected rows as a multiple selection.
    void selectList();
    /// Empties the table: another display takes over.
    void onInquiryShow();
    /// Reads the upload states of the rows again, and nothing else: order, selection, place and edits stay.
    void readUploadStates();
    /// Reads this table again where it is the one named.
    void onDeletereflash(const QString &tableName);
    /// Shows and hides columns by the flags of the field configuration; without flags all are hidden.
    void updateFieldHeader();
    /// Writes all edits in one transaction; where that fails nothing is written, a message says why and the
    /// edits stay.
    void submit();
    void on_submit_clicked();
    virtual void on_revertall_clicked();

signals:
    void selectPK(QList<qlonglong> pks, QString tableName);
    void selectMutiPK(QList<qlonglong> pks, QString tableName);
    /// hasUnsavedEdits() has changed.
    void editsChanged();
    /// Rows have been read: other ones, or the same again. The view has not been laid out anew yet.
    void rowsRead();

protected:
    RecordForm(const RecordTable &table, QWidget *parent);

    /// Fills the view of the finished designer form; called once by each constructor.
    void openTable(NTableView *view);
    /// Tells the form below of a row; a row that is not there has the key 0.
    virtual void reportRow(int row) = 0;

    PagedTableModel *model() const { return m_model; }
    void showWhere(const QString &filter);
    /// The rows of another filter, with the columns as wide as they are and what is selected among them as
    /// far as it is still there. @return false where a selected row is gone
    bool narrowTo(const QString &filter);
    void showKeys(const QList<qlonglong> &keys);
    void showChildrenOf(qlonglong parent);
    void readAgain();
    /// A new model without filter and captions in the place of one whose connection has failed.
    void replaceModel();

    /// Selects the row of a key, which is looked for in as many rows as the table has columns.
    void selectNearTop(qlonglong key);

private:
    PagedTableModel *createModel();
    void setModel(PagedTableModel *model);
    void refreshView();
    void reportFailure(const QString &error);
    void noteEdits();

    const RecordTable &m_table;
    NTableView *m_view = nullptr;
    PagedTableModel *m_model = nullptr;
    bool m_unsaved = false;
};
