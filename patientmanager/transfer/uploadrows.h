#pragma once

#include "uploadfilesmodel.h"

/// The rows of the upload window with the sentences of their tallies, for whoever looks at or listens to
/// them.
class UploadRows : public UploadFilesModel
{
    Q_OBJECT

public:
    using UploadFilesModel::UploadFilesModel;

    QVariant data(const QModelIndex &index, int role) const override;
    UploadTally tally(int row) const;

private:
    static QString text(const UploadTally &tally, int column);
    static QString toolTip(const UploadTally &tally, int column);
};
