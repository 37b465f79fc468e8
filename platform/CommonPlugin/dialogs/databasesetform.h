#pragma once

#include "commonplugin_export.h"

#include <QWidget>

class IndexCare;
class IndexFactsView;
class QDialogButtonBox;
class QLabel;

/**
 * The index: where it lies, what it holds, its care (check, compact, back up), and the way to another one.
 *
 * One window for the process; it reads anew whenever it is shown. What it does in the background goes on
 * while it is closed and ends with it. Another index is asked of the host by SettingsNotifier; where nobody
 * answers, main.ini keeps it for the next start. GUI thread.
 */
class COMMONPLUGIN_EXPORT DataBaseSetForm : public QWidget
{
    Q_OBJECT

public:
    static DataBaseSetForm *instance();
    /// Whether a check, a compaction or a backup runs.
    static bool isAnyWorkRunning();

public slots:
    void refresh();
    /// Asks for the file of another index.
    bool mayMake(const QString &path);
    void openAnother();

protected:
    void showEvent(QShowEvent *event) override;

private:
    explicit DataBaseSetForm(QWidget *parent = nullptr);
    void build();
    QDialogButtonBox *buildButtons();
    void say(const QString &text);

    IndexFactsView *m_facts = nullptr;
    IndexCare *m_care = nullptr;
    QLabel *m_said = nullptr;
};
