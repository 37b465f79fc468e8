#pragma once

#include "recorddelegate.h"

/// Shows an upload state by its text and, beside it, its mark.
class StatusDelegate : public RecordDelegate
{
    Q_OBJECT

public:
    explicit StatusDelegate(QObject *parent);

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};
