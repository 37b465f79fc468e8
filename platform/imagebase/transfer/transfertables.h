#pragma once

#include "imagebase_export.h"
#include "keptstatement.h"

#include <QSqlDatabase>
#include <QString>

/**
 * The tables `series` and `images`: what of the index is known to be in the cloud. Its statements are kept,
 * as they are carried out for every image. For one thread, and not longer than the connection. What returns a
 * truth is false where the database refused; error() says why.
 */
class IMAGEBASE_EXPORT TransferTables
{
public:
    explicit TransferTables(const QSqlDatabase &db);

    /// Enters a series of the index and its images where they are missing; an upload that is recorded stays
    /// recorded. A series that the index does not have is left out.
    bool enter(const QString &seriesUid);
    /// The series without its images.
    bool enterSeries(const QString &seriesUid);
    /// One image; its series is the caller's to enter.
    bool enterImage(const QString &sopInstanceUid, const QString &seriesUid);
    /// Says of an image that was entered whether the cloud has it as it is here.
    bool flag(const QString &sopInstanceUid, bool isInCloud = true);

    QSqlError error() const { return m_error; }

private:
    bool run(KeptStatement &statement, const QVariantList &values);

    KeptStatement m_enterSeries;
    KeptStatement m_enterImages;
    KeptStatement m_enterImage;
    KeptStatement m_flag;
    QSqlError m_error;
};
