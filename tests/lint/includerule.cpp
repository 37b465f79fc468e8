#include "includerule.h"

#include <QMap>
#include <QStringList>

namespace {

const QString imagebase = QStringLiteral("platform/imagebase");
const QString commonWidgets = QStringLiteral("platform/CommonWidgetPlugin");
const QString cloudClient = QStringLiteral("platform/cloudClientPlugin");
const QString common = QStringLiteral("platform/CommonPlugin");
const QString editorPlugin = QStringLiteral("platform/cloudpaientinfoform");
const QString library = QStringLiteral("patientmanager/");
const QString mainWindow = QStringLiteral("patientmanager/mainwindow");
const QString plugin = QStringLiteral("patientmanager/plugin");
const QString host = QStringLiteral("workstation");

/// The upload starts at the patient form: the one form that may know a form of another folder.
bool isUploadException(const QString &file, const QString &header)
{
    return file.startsWith(QLatin1String("patientmanager/tables/patientform."))
        && header == QLatin1String("patientmanager/transfer/uploadprogressform.h");
}

bool isForm(const QString &header)
{
    return header.endsWith(QLatin1String("form.h")) || header.endsWith(QLatin1String("viewer.h"))
        || header.endsWith(QLatin1String("window.h"));
}

bool platformAllows(const QString &from, const QString &to)
{
    return ((from == common || from == editorPlugin) && to != editorPlugin
               && to.startsWith(QLatin1String("platform/")))
        || (from == cloudClient && to == imagebase);
}

bool libraryAllows(const QString &file, const QString &from, const QString &header, const QString &to)
{
    if (from == plugin) {
        return header.startsWith(imagebase + QLatin1String("/config/"));
    }
    if (to.startsWith(QLatin1String("platform/"))) {
        return true;
    }
    if (!to.startsWith(library) || to == plugin) {
        return false;
    }
    return from == mainWindow || (to != mainWindow && (!isForm(header) || isUploadException(file, header)));
}

} // namespace

QString IncludeRule::floorOf(const QString &file)
{
    if (file.startsWith(host + QLatin1Char('/'))) {
        return host;
    }
    const bool layered = file.startsWith(QLatin1String("platform/")) || file.startsWith(library);
    return layered ? file.section(QLatin1Char('/'), 0, 1) : QString();
}

bool IncludeRule::allows(const QString &file, const QString &header)
{
    const QString from = floorOf(file);
    const QString to = floorOf(header);
    if (from == to) {
        return true;
    }
    if (from == host) {
        return !to.isEmpty() && to != plugin;
    }
    return from.startsWith(library) ? libraryAllows(file, from, header, to) : platformAllows(from, to);
}

bool IncludeRule::allowsQtModule(const QString &floor, const QString &module)
{
    static const QMap<QString, QStringList> forbidden{
        {imagebase, {QStringLiteral("QtWidgets"), QStringLiteral("QtGui"), QStringLiteral("QtNetwork")}},
        {cloudClient, {QStringLiteral("QtWidgets"), QStringLiteral("QtGui")}},
        {commonWidgets, {QStringLiteral("QtSql"), QStringLiteral("QtNetwork")}},
    };
    return !forbidden.value(floor).contains(module);
}
