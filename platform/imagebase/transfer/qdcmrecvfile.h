#pragma once

#include "imagebase_export.h"

#include <QObject>
#include <QStringList>

/**
 * Enters files that are to be uploaded into the transfer tables `series` and `images`.
 *
 * Made on the GUI thread without a parent and moved to a thread of its own; needtoWriteDB() is then still
 * called on the GUI thread, onNotifyWriteDB() runs on the worker's. Each call opens a connection of its own
 * to the index.
 */
class IMAGEBASE_EXPORT QDcmRecvFile : public QObject
{
    Q_OBJECT

public:
    explicit QDcmRecvFile(QObject *parent = nullptr);

    /// True where at least one of the series is known to the index, so that there is something to send.
    bool needtoWriteDB(const QStringList &seriesUIDs) const;

public slots:
    /// Adds what is missing: a `series` row a series, with the number of its instances, and an `images` row a
    /// file; one transaction. Answers with notifyUploadFile() and the same lists, also where the index
    /// refused.
    void onNotifyWriteDB(
        QStringList seriesUIDs, QStringList sopInstanceUIDs, QStringList filePaths, QString patientName);

signals:
    void notifyUploadFile(
        QStringList seriesUIDs, QStringList sopInstanceUIDs, QStringList filePaths, QString patientName);
};
