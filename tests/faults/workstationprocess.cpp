// The workstation that the fault runs kill: its window over an index, and somebody at it who does one thing:
//   workstationprocess INDEX CONFIG send
//   workstationprocess INDEX CONFIG export silent|folders|keys|zip|media TARGET
//   workstationprocess INDEX CONFIG delete TABLE KEY...
// CONFIG is the folder that holds `config`. Sends, and exports all, to the only destination. A send goes on
// until the program is killed; the others end it, with 0 where all went well.
#include "configlocation.h"
#include "createconnection.h"
#include "deletionnotifier.h"
#include "exportcontroller.h"
#include "exportdialog.h"
#include "exportqueue.h"
#include "filechooser.h"
#include "kivmessageboxform.h"
#include "ntableview.h"
#include "patientmanagermainwindow.h"
#include "recorddeletion.h"
#include "recordform.h"
#include "seriesform.h"
#include "session.h"
#include "shownpatients.h"
#include "studyform.h"
#include "workstationwindow.h"

#include <QAction>
#include <QApplication>
#include <QButtonGroup>
#include <QLineEdit>
#include <QMap>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <cstdio>
#include <functional>

namespace {

constexpr int lookMs = 10;
constexpr int wrongUse = 2;

/// Acts as soon as the condition holds.
void once(const std::function<bool()> &condition, const std::function<void()> &action)
{
    auto *look = new QTimer(qApp);
    QObject::connect(look, &QTimer::timeout, qApp, [look, condition, action] {
        if (condition()) {
            look->stop();
            look->deleteLater();
            action();
        }
    });
    look->start(lookMs);
}

template <typename Part>
Part *part(const QObject *of, const char *name)
{
    auto *found = of->findChild<Part *>(QLatin1String(name));
    if (!found) {
        qFatal("there is no %s", name);
    }
    return found;
}

QWidget *sendDialog()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->objectName() == QLatin1String("dicomSend") && window->isVisible()) {
            return window;
        }
    }
    return nullptr;
}

void sendAll(WorkstationWindow *window)
{
    window->forms().first()->view()->selectAll();
    window->forms().first()->selectList();
    part<QAction>(window, "actionSendDicom")->trigger();
    once([] { return sendDialog() && part<QPushButton>(sendDialog(), "send")->isEnabled(); },
        [] { part<QPushButton>(sendDialog(), "send")->click(); });
}

void answerDialog(WorkstationWindow *window, ExportFormat format, const QString &target)
{
    const ExportQueue *queue = window->exports()->queue();
    QObject::connect(queue, &ExportQueue::ended, qApp, [queue](int job) {
        const ExportReport report = queue->job(job).report;
        QCoreApplication::exit(report.end == ExportEnd::Complete && report.failures.isEmpty() ? 0 : 1);
    });
    auto *dialog = window->findChild<ExportDialog *>();
    dialog->findChild<QButtonGroup *>()->button(int(format))->click();
    part<QLineEdit>(dialog, "exportTarget")->setText(target);
    dialog->accept();
}

bool exportAll(WorkstationWindow *window, const QString &kind, const QString &target)
{
    const QMap<QString, ExportFormat> formats{{QStringLiteral("folders"), ExportFormat::NamedFolders},
        {QStringLiteral("keys"), ExportFormat::KeyFolders}, {QStringLiteral("zip"), ExportFormat::Zip},
        {QStringLiteral("media"), ExportFormat::Media}};
    window->forms().first()->view()->selectAll();
    if (kind == QLatin1String("silent")) {
        FileChooser::setAnswerer([target](const FileChooser::Request &) { return target; });
        part<QAction>(window, "actionSaveDicom")->trigger();
        QCoreApplication::exit(0);
        return true;
    }
    auto *action = part<QAction>(window, "actionExportAs");
    once([action] { return action->isEnabled(); },
        [window, action, format = formats.value(kind), target] {
            action->trigger();
            answerDialog(window, format, target);
        });
    return formats.contains(kind);
}

void choose(const WorkstationWindow *window, RecordLevel level, const QList<qlonglong> &keys)
{
    RecordForm *form = window->forms().at(int(level));
    if (level == RecordLevel::Study) {
        window->library()->getStudyForm()->onStudy(keys);
    } else if (level == RecordLevel::Series) {
        window->library()->getSeriesForm()->onSeries(keys);
    }
    form->selectKeys(QSet<qlonglong>(keys.begin(), keys.end()));
}

/// No action deletes images: hosts call what stands behind it.
bool removeImages(const QList<qlonglong> &keys)
{
    RecordDeletion deletion(QSqlDatabase::database(), RecordDeletion::isEveryFileToGo());
    return !deletion.run(QLatin1String(recordTableName(RecordLevel::Image)), keys).error.isValid();
}

bool remove(WorkstationWindow *window, const QString &table, const QStringList &texts)
{
    QList<qlonglong> keys;
    for (const QString &text : texts) {
        keys.append(text.toLongLong());
    }
    const std::optional<RecordLevel> level = recordLevelOf(table);
    bool good = false;
    if (level == RecordLevel::Image) {
        good = removeImages(keys);
    } else if (level) {
        QObject::connect(window->library()->deletions(), &DeletionNotifier::ended, qApp,
            [&good](const DeletionReport &report) { good = !report.error.isValid(); });
        choose(window, *level, keys);
        part<QAction>(window, "actionDelete")->trigger();
        window->library()->deletions()->disconnect(qApp);
    }
    QCoreApplication::exit(good ? 0 : 1);
    return level.has_value();
}

bool act(WorkstationWindow *window, const QStringList &deed)
{
    const QString verb = deed.value(0);
    if (verb == QLatin1String("send") && deed.size() == 1) {
        sendAll(window);
        return true;
    }
    if (verb == QLatin1String("export") && deed.size() == 3) {
        return exportAll(window, deed.at(1), deed.at(2));
    }
    return verb == QLatin1String("delete") && deed.size() > 2 && remove(window, deed.at(1), deed.mid(2));
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments.size() < 3) {
        return wrongUse;
    }
    CommandLine line;
    line.database = arguments.at(0);
    line.config = arguments.at(1);
    ConfigLocation::setBase(line.config);
    setDatabasePath(line.database);
    kivMessageBoxForm::setAnswerer(
        [](const kivMessageBoxForm::Request &) { return kivMessageBoxForm::AnswerOk; });
    WorkstationSession session(line);
    session.start();
    ShownPatients *shown = session.window()->shownPatients();
    shown->showInstead({}, DatePick::AllDates);
    shown->onceShown([&session, deed = arguments.mid(2)] {
        QTimer::singleShot(0, [&session, deed] {
            if (!act(session.window(), deed)) {
                QCoreApplication::exit(wrongUse);
            }
        });
    });
    return QApplication::exec();
}
