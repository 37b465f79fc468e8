#include "appearancesettings.h"
#include "palettes.h"
#include "settingsnotifier.h"
#include "testmain.h"
#include "themecontroller.h"

#include <QApplication>
#include <QPushButton>
#include <QtTest>

namespace {

constexpr double leastContrast = 4.5;

struct Pair
{
    QPalette::ColorRole text;
    QPalette::ColorRole ground;
};

constexpr Pair pairs[] = {
    {QPalette::WindowText, QPalette::Window},
    {QPalette::Text, QPalette::Base},
    {QPalette::Text, QPalette::AlternateBase},
    {QPalette::Text, QPalette::Window},
    {QPalette::WindowText, QPalette::Base},
    {QPalette::ButtonText, QPalette::Button},
    {QPalette::ButtonText, QPalette::Window},
    {QPalette::HighlightedText, QPalette::Highlight},
    {QPalette::ToolTipText, QPalette::ToolTipBase},
    {QPalette::PlaceholderText, QPalette::Base},
    {QPalette::Link, QPalette::Window},
    {QPalette::Link, QPalette::Base},
    {QPalette::LinkVisited, QPalette::Base},
    {QPalette::BrightText, QPalette::Dark},
};

} // namespace

class AppearanceTest : public QObject
{
    Q_OBJECT

private slots:
    void everyTextCanBeRead()
    {
        for (const QPalette &palette : {Palettes::light(), Palettes::dark()}) {
            for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
                for (const Pair &pair : pairs) {
                    const double contrast = Palettes::contrast(
                        palette.color(group, pair.text), palette.color(group, pair.ground));
                    QVERIFY2(contrast >= leastContrast,
                        qPrintable(QStringLiteral("group %1: role %2 on %3: %4")
                                       .arg(group)
                                       .arg(pair.text)
                                       .arg(pair.ground)
                                       .arg(contrast)));
                }
            }
        }
        for (const bool isDark : {false, true}) {
            const Palettes::MarkColours faint = Palettes::faintMark(isDark);
            QVERIFY(Palettes::contrast(faint.text, faint.ground) >= leastContrast);
        }
        QCOMPARE(qRound(Palettes::contrast(Qt::black, Qt::white)), 21);
    }

    void followsTheSettingAtOnce()
    {
        const ThemeController theme;
        const QPushButton open;
        for (const Theme wanted : {Theme::Dark, Theme::Light, Theme::Dark}) {
            AppearanceSettings::setTheme(wanted);
            emit SettingsNotifier::instance()->themeChanged();
            const QPalette palette = wanted == Theme::Dark ? Palettes::dark() : Palettes::light();
            QCOMPARE(theme.isDark(), wanted == Theme::Dark);
            QCOMPARE(open.palette().color(QPalette::Button), palette.color(QPalette::Button));
        }
        // Offscreen, the system is light.
        AppearanceSettings::setTheme(Theme::System);
        emit SettingsNotifier::instance()->themeChanged();
        QVERIFY(!theme.isDark());
    }

    void speaksWhatTheSystemSpeaksUnlessToldOtherwise()
    {
        QCOMPARE(AppearanceSettings::language(), QString());
        QCOMPARE(AppearanceSettings::spokenLanguage(), QStringLiteral("en"));
        AppearanceSettings::setLanguage(QStringLiteral("zh_CN"));
        QCOMPARE(AppearanceSettings::spokenLanguage(), QStringLiteral("zh_CN"));
        AppearanceSettings::setLanguage(QStringLiteral("tlh"));
        QCOMPARE(AppearanceSettings::spokenLanguage(), QStringLiteral("en"));
    }
};

PM_TEST_MAIN(AppearanceTest)
#include "tst_appearance.moc"
