#pragma once

#include <QAbstractItemView>
#include <QObject>
#include <QVector>

class SelectionStatus;
struct WindowParts;

/**
 * Lets only the selection that deletion and export take keep the strong colour: the tables and the tree mark
 * rows at the same time, and what is marked in the others is shown faintly. Owned by the window; GUI thread.
 */
class SelectionShades : public QObject
{
    Q_OBJECT

public:
    SelectionShades(const WindowParts &parts, QWidget *window);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void update();

    const SelectionStatus *const m_selection;
    QVector<QAbstractItemView *> m_views; ///< by level, the tree behind them
};
