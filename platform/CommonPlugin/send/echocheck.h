#pragma once

#include "commonplugin_export.h"
#include "dicomnode.h"
#include "networkfailure.h"

#include <QObject>

#include <memory>
#include <thread>

class EchoScu;

/**
 * One question to a node whether it is there (C-ECHO), asked in the background. Made on the GUI thread, which
 * hears the answer; the destructor ends the question and waits for that.
 */
class COMMONPLUGIN_EXPORT EchoCheck : public QObject
{
    Q_OBJECT

public:
    explicit EchoCheck(const DicomNode &node, QObject *parent = nullptr);
    ~EchoCheck() override;

    /// Asks; once, when the receivers are connected.
    void start();

signals:
    /// @param failure none where the node answered
    void answered(const NetworkFailure &failure, qint64 milliseconds);

private:
    std::unique_ptr<EchoScu> m_echo;
    std::thread m_thread;
};
