#pragma once

#include "cloudclientplugin_export.h"

#include <QFile>
#include <QIODevice>
#include <QVector>

/**
 * Files as the parts of a multipart/related body, read from the disk while they are sent, so that memory
 * stays small whatever their size. The sizes are those at the time of adding; a file that has become shorter
 * since ends the reading with an error, and unreadableFile() names it. Open it for reading, and only on one
 * thread.
 */
class CLOUDCLIENTPLUGIN_EXPORT MultipartBody : public QIODevice
{
    Q_OBJECT

public:
    explicit MultipartBody(QByteArray partType, QObject *parent = nullptr);

    /// @return false where the file is not there or is empty; it is left out
    bool addFile(const QString &path);
    int parts() const { return m_parts.size(); }
    /// The value of the header Content-Type of the whole.
    QByteArray contentType() const;
    /// The file that could not be read to its end; empty where there is none.
    QString unreadableFile() const { return m_unreadable; }

    bool isSequential() const override { return false; }
    qint64 size() const override { return m_size + tail().size(); }
    bool seek(qint64 position) override;

protected:
    qint64 readData(char *data, qint64 most) override;
    qint64 writeData(const char * /*data*/, qint64 /*length*/) override { return -1; }

private:
    struct Part
    {
        QString path;
        qint64 begin; ///< of its head, in the whole
        qint64 length; ///< of the file
    };

    QByteArray head(int part) const;
    QByteArray tail() const;
    int partAt(qint64 position) const;
    qint64 readAt(qint64 position, char *data, qint64 most);
    qint64 readFile(const Part &part, qint64 offset, char *data, qint64 most);

    const QByteArray m_partType;
    const QByteArray m_boundary;
    QVector<Part> m_parts;
    qint64 m_size = 0;
    QFile m_file; ///< of the part that is being read
    QString m_unreadable;
};
