#pragma once

#include "commonplugin_export.h"
#include "dicomjson.h"

#include <QVariant>

/// A study as a search in the cloud tells of it, for the lists that show such.
struct COMMONPLUGIN_EXPORT FoundStudy
{
    /// What lists show of it, in their order.
    enum Field { Name, Id, Date, Modalities, Description, Images, FieldCount };

    QString uid;
    QString name; ///< as people read it
    QString id;
    QString date; ///< as DICOM writes it
    QString modalities; ///< as people read them
    QString description;
    int images = -1; ///< as the service says; -1 where it does not

    static FoundStudy of(const DicomJson &answer);
    /// @param images as the service says. @return as people read it, empty where it does not say
    static QString countText(int images);
    /// An answer's number of images; -1 where it has none.
    static int countOf(const DicomJson &answer, quint32 tag);

    /// As people read it; empty for other columns.
    QString text(int field) const;
    /// What a list is sorted by.
    QVariant sortKey(int field) const;
};
