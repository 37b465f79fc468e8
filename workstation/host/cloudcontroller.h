#pragma once

#include "webfailure.h"

#include <QObject>
#include <QTimer>

class CloudSignIn;
class CorrectionFinisher;
class PatientManagerMainWindow;
class QMenu;
class QStatusBar;
class QToolButton;
class QWidget;

/**
 * What the host does for the cloud: signs in whoever was remembered, says in the status bar who is signed in,
 * asks to sign in again once a session has ended, and has gone on with what earlier runs have left. Owned by
 * the window; GUI thread.
 */
class CloudController : public QObject
{
    Q_OBJECT

public:
    /// @param window the frame, which stays open while the library's window is closed for a login
    CloudController(PatientManagerMainWindow *library, QStatusBar *bar, QWidget *window);

    /// Once the index is open.
    void begin(const QString &databasePath);
    /// What the status bar says.
    QString text() const;

    /// Whether images are on their way to the service, or from it.
    static bool isUploading();
    static bool isTransferring();
    /// Lets go of the index; what is not at its end goes on with the next one that is opened.
    static void releaseIndex();

signals:
    /// Something to be said while nothing runs.
    void ended(const QString &text);

private:
    void buildMenu();
    void restore();
    void onSignInFailed(const WebFailure &failure);
    void onSessionChanged();
    void onRefused();
    void signIn();
    void signOut();
    void showFrame();
    void update();
    void finishCorrections();

    PatientManagerMainWindow *const m_library;
    QWidget *const m_window;
    QToolButton *const m_note;
    QMenu *const m_menu;
    CloudSignIn *const m_signIn;
    CorrectionFinisher *const m_corrections;
    QString m_databasePath;
    QString m_problem; ///< why the remembered user is not signed in
    QTimer m_again; ///< runs while the remembered user waits for a service that is away
    bool m_isAsking = false;
};
