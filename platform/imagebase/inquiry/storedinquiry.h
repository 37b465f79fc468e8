#pragma once

#include "imagebase_export.h"
#include "inquirycondition.h"

#include <QSqlDatabase>
#include <QSqlError>

/// The stored inquiries of an index, read with bound names.
namespace StoredInquiry {

/// The conditions of an inquiry in the order in which they were stored; none where there is no such inquiry.
IMAGEBASE_EXPORT InquiryConditions read(
    const QSqlDatabase &db, const QString &name, QSqlError *error = nullptr);

/// What the empty name stands for: the records updated today.
IMAGEBASE_EXPORT InquiryConditions updatedToday();

} // namespace StoredInquiry
