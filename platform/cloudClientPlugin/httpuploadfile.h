#pragma once

#include "cloudclientplugin_export.h"

#include <QObject>
#include <QStringList>

/**
 * The workstation's one contact to the cloud service.
 *
 * So far it knows the experts to whom a study can be sent: a group for each expert in an INI file, named by
 * the expert's id, with the key "name". One object for the process, made on first use; GUI thread.
 */
class CLOUDCLIENTPLUGIN_EXPORT HttpUploadFile : public QObject
{
    Q_OBJECT

public:
    static HttpUploadFile *instance();

    /// Names the file of the experts; an empty text goes back to "config/experts.ini" beside the program.
    static void setExpertFile(const QString &path);

    /// Reads the experts anew; a file that is missing gives none.
    void expertInfoList();
    /// Names of the experts as last read, in the order of their ids; the id where there is no name.
    QStringList getExpertNames() const;

private:
    HttpUploadFile() = default;

    QStringList m_expertNames;
};
