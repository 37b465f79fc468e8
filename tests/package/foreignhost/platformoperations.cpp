#include "checks.h"

#include <advancedinquiryform.h>
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
#include <QSignalSpy>

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
    dialogOperations();
    inquiryOperations();
    loaderOperations();
}
