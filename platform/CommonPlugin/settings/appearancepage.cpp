#include "appearancepage.h"

#include "appearancesettings.h"
#include "settingsnotifier.h"

#include <QComboBox>
#include <QFormLayout>
#include <QVBoxLayout>

AppearancePage::AppearancePage(QWidget *parent)
    : SettingsPage(tr("Appearance"), parent)
    , m_theme(new QComboBox(this))
    , m_language(new QComboBox(this))
{
    m_theme->setObjectName(QStringLiteral("theme"));
    m_theme->addItem(tr("As the system"), int(Theme::System));
    m_theme->addItem(tr("Light"), int(Theme::Light));
    m_theme->addItem(tr("Dark"), int(Theme::Dark));
    m_language->setObjectName(QStringLiteral("language"));
    m_language->addItem(tr("As the system"), QString());
    // Each in its own words, for those who cannot read the present one.
    m_language->addItem(QStringLiteral("English"), QStringLiteral("en"));
    m_language->addItem(QStringLiteral("中文"), QStringLiteral("zh_CN"));
    auto *form = new QFormLayout;
    form->addRow(tr("&Colours:"), m_theme);
    form->addRow(tr("&Language:"), m_language);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    addHint(layout, tr("For you alone. Takes effect at once; another language waits for what runs."));
    layout->addStretch();
}

void AppearancePage::read()
{
    m_theme->setCurrentIndex(m_theme->findData(int(AppearanceSettings::theme())));
    m_language->setCurrentIndex(m_language->findData(AppearanceSettings::language()));
}

QStringList AppearancePage::write()
{
    const auto theme = static_cast<Theme>(m_theme->currentData().toInt());
    if (theme != AppearanceSettings::theme()) {
        AppearanceSettings::setTheme(theme);
        emit SettingsNotifier::instance()->themeChanged();
    }
    const QString language = m_language->currentData().toString();
    if (language != AppearanceSettings::language()) {
        AppearanceSettings::setLanguage(language);
        emit SettingsNotifier::instance()->languageChanged();
    }
    return {};
}
