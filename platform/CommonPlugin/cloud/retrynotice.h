#pragma once

#include "commonplugin_export.h"

#include <QString>
#include <QTimer>
#include <QWidget>

class QLabel;

/// Says why a service is left alone and when it is asked next, and offers to ask it now. Hidden while there
/// is nothing to say. GUI thread.
class COMMONPLUGIN_EXPORT RetryNotice : public QWidget
{
    Q_OBJECT

public:
    explicit RetryNotice(QWidget *parent = nullptr);

    /// @param why a sentence without its full stop. @param nextTryMs since the epoch; where that has passed,
    /// it is being asked
    void showTrouble(const QString &why, qint64 nextTryMs);
    /// It goes a moment later, unless the trouble is back by then.
    void clear();

signals:
    void tryWanted();

private:
    void tell();

    QLabel *m_text;
    QTimer m_second;
    QTimer m_linger;
    QString m_why;
    qint64 m_nextTryMs = 0;
};
