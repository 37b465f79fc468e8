#include "ndelegatequerytype.h"

#include "inquirycondition.h"

NDelegateQueryType::NDelegateQueryType(QObject *parent)
    : ComboBoxDelegate({QLatin1String(InquiryWord::precise), QLatin1String(InquiryWord::fuzzy)}, parent)
{ }
