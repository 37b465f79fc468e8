#pragma once

#include "commonplugin_export.h"

#include <QTableView>

#include <functional>

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
    /// A path is cut in the middle where it does not fit; all else at its end.
    void setPathColumn(int column);
    /// Said where there are no rows.
    void setEmptyText(const QString &text);

    /// Whoever copies in place of copyRows(), where the rows are too many to be read at once.
    void setCopying(std::function<void()> copy) { m_copying = std::move(copy); }

public slots:
    /// Puts selectedText() on the clipboard.
    void copyRows() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_emptyText;
    std::function<void()> m_copying;
    QAction *m_copy = nullptr;
};
