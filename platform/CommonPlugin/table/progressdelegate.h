#pragma once

#include "commonplugin_export.h"

#include <QStyledItemDelegate>

/// Draws a share as a thin bar below the text of its cell: in a bar, a text would stand on two grounds. The
/// bar is empty where nobody knows the share yet.
class COMMONPLUGIN_EXPORT ProgressDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// @param shareRole has the share, 0 to 1
    ProgressDelegate(int shareRole, QObject *parent);

    void paint(
        QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    virtual double share(const QModelIndex &index) const;

private:
    const int m_shareRole;
};
