#pragma once

#include "commonplugin_export.h"
#include "webservice.h"

#include <QString>

/**
 * Who signs in to which cloud service, as username.ini keeps it: the group "currentusername" says who works
 * now and is emptied when the user signs out, the group "cloudservice" keeps what the next sign-in begins
 * with. The password is in neither. A value; GUI thread.
 */
struct COMMONPLUGIN_EXPORT CloudAccount
{
    QString address; ///< of the DICOMweb service's root, as the user typed it
    QString user; ///< empty where an access token stands for the password
    bool mayBePlain = false; ///< whether credentials may travel unencrypted beyond this computer
    bool remembers = false; ///< whether the password is in the secret store
    QString authorities; ///< a PEM file of certificates that are trusted beside the system's; may be empty

    /// What the last sign-in used; an address set in the settings wins.
    static CloudAccount read();
    /// Whose password the secret store may have, whatever was set since: the last one who signed in.
    static CloudAccount lastSignedIn();
    /// Whether whoever used the workstation last was signed in to the cloud.
    static bool isCloudUser();
    /// The file: rule 2 of ConfigLocation.
    static QString file();

    /// Writes that this account is signed in. @return false where the file cannot be written
    bool writeSignedIn() const;
    /// Writes that a local user works, without the cloud. The account itself is kept for the next sign-in.
    bool writeLocal() const;

    /// Whether it is http or https, names a host, and holds neither a user nor a question.
    bool isAddressGood() const;
    /// The service as this account reaches it, over the proxy of the settings.
    /// @param password or, without a user, an access token
    WebService service(const QString &password) const;
    /// What the secret store calls the password.
    QString secretName() const;
};
