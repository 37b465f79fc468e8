#pragma once

#include "mainsetting.h"
#include "settingspage.h"

#include <QVector>

class QButtonGroup;
class QVBoxLayout;

/// A page of settings of main.ini that are one of a few numbers each.
class ChoicePage : public SettingsPage
{
    Q_OBJECT

public:
    /// Import mode and duplicate policy.
    static ChoicePage *imports(QWidget *parent);
    /// Delete mode.
    static ChoicePage *deletion(QWidget *parent);

    void read() override;
    QStringList write() override;

private:
    struct Choice
    {
        MainSetting setting;
        QButtonGroup *group;
    };

    ChoicePage(const QString &title, QWidget *parent);
    /// @param choices the value is the position
    void add(
        const MainSetting &setting, const QString &caption, const QString &hint, const QStringList &choices);

    QVBoxLayout *m_layout;
    QVector<Choice> m_choices;
};
