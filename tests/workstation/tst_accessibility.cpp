#include "advancedinquiryform.h"
#include "appearancesettings.h"
#include "databasesetform.h"
#include "datasavetypeform.h"
#include "frame.h"
#include "importer.h"
#include "importprogresswidget.h"
#include "inquirysaveform.h"
#include "kivmessageboxform.h"
#include "previewwindow.h"
#include "selecthideform.h"
#include "settingsnotifier.h"
#include "sharedwindows.h"
#include "swimconfig.h"
#include "tablestage.h"
#include "testmain.h"
#include "textcontrast.h"
#include "themecontroller.h"
#include "treecontroller.h"
#include "uilanguage.h"
#include "widgetwalk.h"

#include <QAction>
#include <QApplication>
#include <QTimer>
#include <QtTest>

namespace {

using Maker = std::function<std::unique_ptr<QWidget>()>;

} // namespace

Q_DECLARE_METATYPE(Maker)

class AccessibilityTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        allowWarningsOfNamedSlots();
        m_theme = std::make_unique<ThemeController>();
        m_frame = std::make_unique<Frame>(3);
        m_frame->window->tree()->toggleAction()->trigger();
        m_frame->window->stage()->selectFirst();
    }
    void cleanupTestCase()
    {
        SharedWindows::deleteAll();
        m_frame.reset();
        m_theme.reset();
    }

    void frame()
    {
        expectNone(*m_frame->window);
        check(*m_frame->window, WidgetWalk::mouseOnlyActions(*m_frame->window));
    }

    void folderPicker()
    {
        bool seen = false;
        QTimer::singleShot(0, this, [&] {
            QWidget *picker = QApplication::activeModalWidget();
            QVERIFY(picker);
            seen = true;
            expectNone(*picker);
            picker->close();
        });
        m_frame->action("actionLoadDir")->trigger();
        QVERIFY(seen);
    }

    void dialogs_data()
    {
        QTest::addColumn<Maker>("make");
        const auto row = [](const char *name, const Maker &make) { QTest::newRow(name) << make; };
        row("columns", [] { return std::make_unique<selectHideForm>(nullptr, 0); });
        row("inquiry editor", [] { return std::make_unique<AdvancedInquiryForm>(nullptr, QString()); });
        row("inquiry name", [] { return std::make_unique<InquirySaveForm>(); });
        row("preview", [] { return std::make_unique<PreviewWindow>(); });
        row("import progress", [] {
            auto progress = std::make_unique<ImportProgressWidget>();
            progress->watch(std::make_shared<Importer>(ImportRequest()));
            return progress;
        });
        row("import report", [] {
            auto progress = std::make_unique<ImportProgressWidget>();
            ImportReport report;
            report.count(ImportIssue{QStringLiteral("/a/file"), FileVerdict::Unreadable, {}, {}});
            progress->showReport(report);
            return progress;
        });
        row("message", [] {
            return std::make_unique<kivMessageBoxForm>(
                kivMessageBoxForm::Request{kivMessageBoxForm::Kind::Question, QStringLiteral("Title"),
                    QStringLiteral("Text"), kivMessageBoxForm::OkAndCancel, kivMessageBoxForm::AnswerOk});
        });
    }
    void dialogs()
    {
        QFETCH(Maker, make);
        const std::unique_ptr<QWidget> window = make();
        window->setAttribute(Qt::WA_DeleteOnClose, false);
        window->show();
        expectNone(*window);
    }

    void sharedWindows()
    {
        for (QWidget *window : QList<QWidget *>{DataBaseSetForm::instance(), DataSaveTypeForm::instance()}) {
            window->show();
            expectNone(*window);
            window->close();
        }
        for (int page = swimconfig::Imports; page <= swimconfig::Appearance; ++page) {
            swimconfig::instance()->showPage(swimconfig::Page(page));
            expectNone(*swimconfig::instance());
        }
        swimconfig::instance()->close();
    }

    void menusHaveOneLetterEachInChinese()
    {
        UiLanguage language;
        language.speak(QStringLiteral("zh_CN"));
        const WorkstationWindow window;
        check(window, WidgetWalk::sharedKeys(window));
    }

private:
    static void expectNone(QWidget &window)
    {
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        check(window, WidgetWalk::unnamedControls(window));
        check(window, WidgetWalk::sharedKeys(window));
        for (const Theme theme : {Theme::Light, Theme::Dark}) {
            AppearanceSettings::setTheme(theme);
            emit SettingsNotifier::instance()->themeChanged();
            check(window, TextContrast::faintTexts(window));
        }
        check(window, WidgetWalk::unreachedByTab(window));
    }
    static void check(const QWidget &window, const QStringList &faults)
    {
        QVERIFY2(faults.isEmpty(),
            qPrintable(window.windowTitle() + QStringLiteral(":\n  ") + faults.join(QStringLiteral("\n  "))));
    }

    std::unique_ptr<ThemeController> m_theme;
    std::unique_ptr<Frame> m_frame;
};

PM_TEST_MAIN(AccessibilityTest)
#include "tst_accessibility.moc"
