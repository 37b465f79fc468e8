#pragma once

#include "columnwidths.h"
#include "commonplugin_export.h"

#include <QTableView>

class ImportRunner;

/**
 * The table of a record form.
 *
 * Imports files and folders that are dropped on it, in the mode of main.ini (asked for where that says so).
 * Copies selected rows as tab-separated text. Keeps the width of every column that the user dragged, for each
 * user and table, and answers resizeColumnsToContents() with it. Knows nothing of the records it shows.
 */
class COMMONPLUGIN_EXPORT NTableView : public QTableView
{
    Q_OBJECT

public:
    explicit NTableView(QWidget *parent = nullptr);
    ~NTableView() override;

    /// The record table that is shown; names where its column widths are kept.
    void setTableName(const QString &name);
    QString tableName() const { return m_tableName; }

    QModelIndexList selectedIndexes() const override;
    /// Visible columns of the selected rows as shown, below a line of captions, in the order on screen.
    QString selectionAsText() const;

public slots:
    /// Puts selectionAsText() on the clipboard; nothing where nothing is selected.
    void copySelection();

signals:
    /// Files that were dropped have been imported. @param success false where nothing came of it
    void fileFinished(bool success);

protected:
    int sizeHintForColumn(int column) const override;
    void keyPressEvent(QKeyEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void createHeader();
    QString columnName(int column) const;
    int contentWidth(int column) const;
    QList<int> visibleColumns() const;
    QString cellText(const QModelIndex &index) const;
    void importPaths(const QStringList &paths);
    void refuseImport();
    void startImport(const QStringList &paths, int mode);

    QString m_tableName;
    ColumnWidths m_widths;
    ImportRunner *m_runner = nullptr; ///< made at the first drop
};
