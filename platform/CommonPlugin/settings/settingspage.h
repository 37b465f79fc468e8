#pragma once

#include <QStringList>
#include <QWidget>

class QBoxLayout;

/// One page of swimconfig: shows some settings, and writes them when OK is pressed. GUI thread.
class SettingsPage : public QWidget
{
    Q_OBJECT

public:
    /// What the page is called in the list.
    const QString &title() const { return m_title; }

    /// Shows what is configured now.
    virtual void read() = 0;
    /// What is wrong with what the user typed, as a sentence; empty where nothing is.
    virtual QString fault() const { return {}; }
    /// Writes what was changed. @return the files that could not be written
    virtual QStringList write() = 0;

protected:
    SettingsPage(QString title, QWidget *parent);

    /// A wrapped line of explanation at the end of a layout.
    void addHint(QBoxLayout *layout, const QString &text);

private:
    QString m_title;
};
