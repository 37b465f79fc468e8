#pragma once

#include "commandline.h"
#include "connectionfailure.h"
#include "sessionservices.h"
#include "uilanguage.h"

#include <QObject>
#include <QTimer>

#include <memory>

class WorkstationWindow;

/**
 * One run of the workstation: its window, the language that it speaks and the index that it works on.
 *
 * Another language or another index needs another window. The session builds it in the place of the old one,
 * once nothing runs and the user has agreed to what would be lost. Ends with the application; GUI thread.
 */
class WorkstationSession : public QObject
{
    Q_OBJECT

public:
    explicit WorkstationSession(CommandLine line, QObject *parent = nullptr);
    ~WorkstationSession() override;

    /// Shows the window and begins what the command line asks for.
    void start();
    WorkstationWindow *window() const { return m_window.get(); }
    /// What windows come and go beside.
    const SessionServices &services() const { return m_services; }

public slots:
    /// Works on another index, made where there is none, as soon as nothing runs.
    void openIndex(const QString &path);
    /// Speaks the language of the settings as soon as nothing runs. Where the user rather keeps unsaved
    /// edits, the settings get the old one back.
    void changeLanguage();

signals:
    /// The program may end.
    void quitWanted(int code);
    /// Another window has taken the old one's place.
    void rebuilt();

private:
    void speak();
    void build();
    void show();
    void dismantle();
    void request();
    void tryChange();
    bool isBusy() const;
    void change();
    ConnectionFailure changeIndex(const QString &oldPath);
    void keepIndexPath(const QString &path) const;
    QString noticeText() const;

    const CommandLine m_line;
    UiLanguage m_language;
    SessionServices m_services;
    std::unique_ptr<WorkstationWindow> m_window;
    QTimer m_look; ///< runs while a change waits
    QString m_wantedIndex; ///< empty where the index stays
    bool m_wantsLanguage = false;
    QString m_keptLanguage; ///< of the settings, when it was last spoken
};
