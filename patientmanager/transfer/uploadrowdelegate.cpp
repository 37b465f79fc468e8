#include "uploadrowdelegate.h"

#include "uploadfilesmodel.h"
#include "uploadtext.h"

UploadRowDelegate::UploadRowDelegate(QObject *parent)
    : ProgressDelegate(UploadFilesModel::TallyRole, parent)
{ }

double UploadRowDelegate::share(const QModelIndex &index) const
{
    constexpr double whole = 100;
    return UploadText::percentOf(index.data(UploadFilesModel::TallyRole).value<UploadTally>()) / whole;
}
