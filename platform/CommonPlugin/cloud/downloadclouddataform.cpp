#include "downloadclouddataform.h"

#include "companionwindow.h"
#include "sharedwindow.h"

DownloadCloudDataForm *DownloadCloudDataForm::instance()
{
    return sharedWindow<DownloadCloudDataForm>([] { return new DownloadCloudDataForm; });
}

DownloadCloudDataForm::DownloadCloudDataForm(QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    setWindowTitle(tr("Download from the Cloud"));
    closeOnEscape(this);
}

void DownloadCloudDataForm::reflesh() { }

void DownloadCloudDataForm::onJessionInfo(QByteArray /*sessionId*/)
{
    reflesh();
}
