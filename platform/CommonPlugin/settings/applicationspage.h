#pragma once

#include "launchersettings.h"
#include "settingspage.h"

class QComboBox;
class QLineEdit;
class QPlainTextEdit;

/// The programs that the buttons of the query panel start.
class ApplicationsPage : public SettingsPage
{
    Q_OBJECT

public:
    explicit ApplicationsPage(QWidget *parent);

    void read() override;
    QStringList write() override;

private:
    void build();
    QLayout *buildProgramRow();
    void showChosen();
    void takeFields();
    void browse();

    QVector<Launcher> m_launchers; ///< in the order of LauncherSettings::all()
    QComboBox *m_choice = nullptr;
    QLineEdit *m_program = nullptr;
    QPlainTextEdit *m_arguments = nullptr;
    bool m_showing = false; ///< fields are being filled, not typed in
};
