#include "uilanguage.h"

#include "columncaptions.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace {

/// Dates and numbers as the system has them, where it speaks the language itself.
QLocale localeOf(const QString &language)
{
    const QLocale wanted(language);
    const QLocale system = QLocale::system();
    return system.language() == wanted.language() && system.script() == wanted.script() ? system : wanted;
}

} // namespace

UiLanguage::UiLanguage()
{
    Q_INIT_RESOURCE(translations_workstation); // a static library drops what nobody names
}

UiLanguage::~UiLanguage()
{
    silence();
}

void UiLanguage::speak(const QString &language)
{
    silence();
    m_spoken = language;
    QLocale::setDefault(localeOf(language));
    ColumnCaptions::setLanguage(language);
    install(QStringLiteral("qtbase_"), QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    for (const char *floor : {"platform_", "patientmanager_", "workstation_"}) {
        install(QLatin1String(floor), QStringLiteral(":/translations"));
    }
}

void UiLanguage::silence()
{
    for (const std::unique_ptr<QTranslator> &translator : m_translators) {
        QCoreApplication::removeTranslator(translator.get());
    }
    m_translators.clear();
}

/// What is not there is spoken in the language of the source.
void UiLanguage::install(const QString &name, const QString &folder)
{
    auto translator = std::make_unique<QTranslator>();
    if (translator->load(name + m_spoken, folder)) {
        QCoreApplication::installTranslator(translator.get());
        m_translators.push_back(std::move(translator));
    }
}
