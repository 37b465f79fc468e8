#pragma once

#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVector>

/// An upload that is asked for.
struct UploadOrder
{
    struct File
    {
        QString path;
        QString sopInstance; ///< empty: the file is asked for it
        QString series; ///< likewise
        qint64 bytes = 0;
    };

    qint64 id = 0;
    QString service; ///< as CloudSession::plainAddress() writes it
    QString patientName;
    QStringList series; ///< as they were asked for
    QVector<File> files;

    /// Grows with time, and is no other program's.
    static qint64 newId();
};

Q_DECLARE_METATYPE(UploadOrder)
