#pragma once

#include "commonplugin_export.h"

#include <QTableView>

/// A list of what has happened, to be read: whole rows are selected, copied as text by Ctrl+C or the menu,
/// and Tab leaves it.
class COMMONPLUGIN_EXPORT PlainTableView : public QTableView
{
    Q_OBJECT

public:
    explicit PlainTableView(QWidget *parent = nullptr);

    /// The selected rows, a line each, cells parted by tabs; all rows where none is selected.
    QString selectedText() const;
    /// Width of a column, in characters.
    void setColumnCharacters(int column, int characters);

public slots:
    /// Puts selectedText() on the clipboard.
    void copyRows() const;

private:
    QAction *m_copy = nullptr;
};
