#pragma once

#include "receiveservice.h"

#include <QObject>

class QStatusBar;
class QToolButton;

/// Says in the status bar whether others can send to us, what comes in, and what went wrong; a click leads
/// to the settings of it. Owned by the window.
class ReceiveController : public QObject
{
    Q_OBJECT

public:
    /// @param service outlives the window
    ReceiveController(ReceiveService *service, QStatusBar *bar);

    /// What the status bar says; empty where receiving is off.
    QString text() const;

    /// Why a port cannot be listened on.
    static QString failureText(int port, const ListenFailure &failure);

private:
    void update();
    QString statusText(const ReceiveStatus &status) const;
    QString comingText(const ReceiveStatus &status) const;
    QString details(const ReceiveStatus &status) const;
    void tellFailure(int port, const ListenFailure &failure);

    ReceiveService *const m_service;
    QToolButton *const m_note;
};
