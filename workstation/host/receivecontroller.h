#pragma once

#include "receiveservice.h"

#include <QObject>

class QLabel;
class QStatusBar;

/// Says in the status bar whether others can send to us, what comes in, and what went wrong. Owned by the
/// window.
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
    QString details(const ReceiveStatus &status) const;
    void tellFailure(int port, const ListenFailure &failure);

    ReceiveService *const m_service;
    QLabel *const m_label;
};
