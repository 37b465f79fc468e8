#pragma once

#include "commonplugin_export.h"

#include <QWidget>

class QLabel;
class QListWidget;
class QStackedWidget;
class SettingsPage;

/**
 * The settings of the workstation: imports, deletion, DICOM destinations, receiving, applications, cloud,
 * appearance.
 *
 * Each is read from and written to the file that its reader uses. One window for the process; it reads anew
 * whenever it is shown, writes all when OK is pressed, and nothing before. GUI thread.
 */
class COMMONPLUGIN_EXPORT swimconfig : public QWidget
{
    Q_OBJECT

public:
    enum Page { Imports, Deletion, Destinations, Receiving, Applications, Cloud, Appearance };

    static swimconfig *instance();
    /// Shows the window, or brings it back, with this page in front.
    void showPage(Page page);

protected:
    void showEvent(QShowEvent *event) override;

private:
    explicit swimconfig(QWidget *parent = nullptr);
    void build();
    void addPage(SettingsPage *page);
    QWidget *buildButtons();
    void save();
    void complain(const QString &text);

    QList<SettingsPage *> m_pages; ///< in the order of Page
    QListWidget *m_list = nullptr;
    QStackedWidget *m_stack = nullptr;
    QLabel *m_failure = nullptr;
};
