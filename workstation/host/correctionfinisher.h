#pragma once

#include "correctionrequest.h"
#include "correctionthread.h"

#include <QObject>
#include <QVector>

struct WebService;

/// Finishes or takes back, in the background, the corrections of patient data that a kill or a service out of
/// reach has left half done. GUI thread.
class CorrectionFinisher : public QObject
{
    Q_OBJECT

public:
    explicit CorrectionFinisher(QObject *parent);

    /// Ends what it is at, which is left for the next time, and begins anew.
    /// @param service an empty address where nobody is signed in: then what needs no service is finished
    void begin(const QString &databasePath, const WebService &service);

signals:
    /// What came of it, in a sentence; not where there was nothing to be done.
    void ended(const QString &text);

private:
    void tell(const QVector<CorrectionReport> &reports);

    CorrectionThread m_thread;
};
