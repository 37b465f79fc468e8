#pragma once

#include "imagebase_export.h"

#include <QByteArray>
#include <QString>

/// What stands for what identifies, made from a site's key: the same every time, and nothing that leads back
/// without the key. Any thread.
class IMAGEBASE_EXPORT Pseudonyms
{
public:
    explicit Pseudonyms(QByteArray siteKey);

    /// The UID that stands for another: "2.25." and a number of 128 bits.
    QByteArray uid(const QByteArray &original) const;
    /// Ten letters and digits that stand for a patient. @param identity what tells the patient from others
    QString code(const QByteArray &identity) const;
    /// By how many days a patient's dates move, always back: 30 to 3,679.
    int daysBack(const QByteArray &identity) const;

private:
    QByteArray digest(const char *purpose, const QByteArray &text) const;

    QByteArray m_key;
};
