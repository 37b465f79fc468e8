#pragma once

#include "commonplugin_export.h"

#include <QStyledItemDelegate>

/// Draws a share as a bar with its text, or an empty bar where nobody knows it yet.
class COMMONPLUGIN_EXPORT ProgressDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// @param shareRole has the share, 0 to 1
    ProgressDelegate(int shareRole, QObject *parent);

    void paint(
        QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    const int m_shareRole;
};
