#pragma once

#include "progressdelegate.h"

/// Draws how far an upload is.
class UploadRowDelegate : public ProgressDelegate
{
    Q_OBJECT

public:
    explicit UploadRowDelegate(QObject *parent);

protected:
    double share(const QModelIndex &index) const override;
};
