#pragma once

#include <QString>

#include <memory>
#include <vector>

class QTranslator;

/**
 * The language that the program speaks: the texts of all floors and of Qt itself, dates and numbers, and the
 * captions of the columns. Windows that are open keep their texts; whoever changes the language makes them
 * anew. GUI thread.
 */
class UiLanguage
{
public:
    UiLanguage();
    /// Takes its texts away again.
    ~UiLanguage();
    UiLanguage(const UiLanguage &) = delete;
    UiLanguage &operator=(const UiLanguage &) = delete;

    /// @param language one of AppearanceSettings::languages()
    void speak(const QString &language);
    QString spoken() const { return m_spoken; }

private:
    void silence();
    void install(const QString &name, const QString &folder);

    std::vector<std::unique_ptr<QTranslator>> m_translators;
    QString m_spoken;
};
