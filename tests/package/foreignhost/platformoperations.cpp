#include "checks.h"

#include <advancedinquiryform.h>
#include <cloudpaientinfoform.h>
#include <configlocation.h>
#include <createconnection.h>
#include <databasesetform.h>
#include <datasavetypeform.h>
#include <httpuploadfile.h>
#include <inquirysaveform.h>
#include <kivmessageboxform.h>
#include <ncomboboxdelegate.h>
#include <ncombologicdelegate.h>
#include <ndelegatequerytype.h>
#include <ndockwidget.h>
#include <nrunnable.h>
#include <ntableview.h>
#include <selecthideform.h>
#include <swimconfig.h>
#include <treeitem.h>
#include <treemodel.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QGenericPluginFactory>
#include <QSignalSpy>

#include <memory>

namespace {

void dialogOperations()
{
    kivMessageBoxForm::setAnswerer([](const kivMessageBoxForm::Request &) { return 2; });
    const int answers =
        kivMessageBoxForm::question(nullptr, QStringLiteral("Title"), QStringLiteral("Text"), 3, 1)
        + kivMessageBoxForm::information(nullptr, QStringLiteral("Title"), QStringLiteral("Text"), 3, 1)
        + kivMessageBoxForm::warning(nullptr, QStringLiteral("Title"), QStringLiteral("Text"), 3, 1);
    kivMessageBoxForm::setAnswerer(nullptr);
    Checks::expect(answers == 6, QStringLiteral("the answers of the message box"));
    Checks::expect(DataSaveTypeForm::instance() && DataBaseSetForm::instance() && swimconfig::instance(),
        QStringLiteral("the companion windows"));
    const selectHideForm fields(nullptr, 0);
    const NDockWidget dock(QStringLiteral("Dock"), nullptr);
    HttpUploadFile::instance()->expertInfoList();
    Checks::expect(HttpUploadFile::instance()->getExpertNames().isEmpty(), QStringLiteral("no experts"));
}

/// What lies beside the program: the editor's plugin, and the browser.
void cloudParts()
{
    const std::unique_ptr<QObject> editor(
        QGenericPluginFactory::create(QStringLiteral("cloudpaientinfoform"), QString()));
    Checks::expect(qobject_cast<CloudPaientInfoForm *>(editor.get()), QStringLiteral("the editor's plugin"));
    const QFileInfo browser(QCoreApplication::applicationDirPath() + QStringLiteral("/kivcloudbrowser.exe"));
    Checks::expect(browser.isExecutable(), QStringLiteral("the cloud browser"));
}

void inquiryOperations()
{
    AdvancedInquiryForm editor(nullptr, QString());
    editor.getText(QStringLiteral("A name"));
    editor.on_Delete_clicked();
    const InquirySaveForm asking;
    TreeModel tree({QStringLiteral("Header")}, QStringLiteral("row"), nullptr);
    Checks::expect(tree.getItem(tree.index(0, 0))->childCount() == 0 && tree.setData(tree.index(0, 0), 1),
        QStringLiteral("an editable tree"));
    const NComboBoxDelegate symbols(nullptr);
    const NComboLogicDelegate logic(nullptr);
    const NDelegateQueryType types(nullptr);
}

void loaderOperations()
{
    NTableView view;
    view.setTableName(QStringLiteral("patient"));
    Checks::expect(view.selectedIndexes().isEmpty(), QStringLiteral("a view without selection"));
    NRunnable loader;
    QSignalSpy finished(loader.notifier(), &LoadNotifier::finishReadFiles);
    loader.loadDirectors({QCoreApplication::applicationDirPath()}, 0);
    loader.runRunnable();
    Checks::expect(!finished.isEmpty() || finished.wait(), QStringLiteral("the end of an import"));
    ConfigLocation::setBase(QString());
    Checks::expect(createConnection(), QStringLiteral("a connection that stays"));
}

} // namespace

void Checks::platformOperations()
{
    cloudParts();
    dialogOperations();
    inquiryOperations();
    loaderOperations();
}
