#pragma once

#include "commonplugin_export.h"

#include <QWidget>

class QButtonGroup;
class QLabel;
class QVBoxLayout;

/**
 * The settings of imports and deletions: import mode, delete mode, duplicate policy.
 *
 * Each is read from and written to the main.ini that its reader uses. One window for the process; it reads
 * anew whenever it is shown and writes when OK is pressed. GUI thread.
 */
class COMMONPLUGIN_EXPORT swimconfig : public QWidget
{
    Q_OBJECT

public:
    static swimconfig *instance();

protected:
    void showEvent(QShowEvent *event) override;

private:
    struct Setting
    {
        const char *key;
        QString caption;
        QString hint;
        QStringList choices; ///< the value is the position
        QString (*find)(); ///< the file that the setting's reader opens, or empty
        QString (*fallback)(); ///< where it would look for one
    };

    explicit swimconfig(QWidget *parent = nullptr);
    static QList<Setting> settings();
    void build();
    void addSetting(QVBoxLayout *layout, const Setting &setting);
    void read();
    void save();

    QList<QButtonGroup *> m_groups; ///< in the order of settings()
    QLabel *m_failure = nullptr;
};
