#pragma once

#include "commonplugin_export.h"

#include <QString>
#include <QStringList>

/// How this workstation receives, as main.ini has it in group "dicom". Read anew whenever it is asked for,
/// from the file of the checked rule. GUI thread.
struct COMMONPLUGIN_EXPORT ReceiveSettings
{
    static constexpr int usualPort = 11112;
    static constexpr char thisComputer[] = "127.0.0.1";
    static constexpr char wholeNetwork[] = "0.0.0.0";

    bool enabled = false;
    QString aeTitle; ///< how we are called
    QString address; ///< numeric, of this computer
    int port = usualPort;
    QStringList callers; ///< AE titles of those who may send; empty for anybody
    bool acceptPrivateClasses = false;
    bool synced = true;

    static ReceiveSettings read();
    /// Writes what differs from the file. @return whether it holds these now
    bool write() const;
    /// The file that write() writes.
    static QString file();

    enum class Fault { None, BadAeTitle, BadAddress, BadPort, BadCaller };
    Fault fault() const;

    /// Our AE title, whoever needs it.
    static QString ownAeTitle();

    bool operator==(const ReceiveSettings &other) const;
};
