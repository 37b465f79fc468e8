#include "ncombologicdelegate.h"

#include "inquirycondition.h"

NComboLogicDelegate::NComboLogicDelegate(QObject *parent)
    : ComboBoxDelegate(
        {QLatin1String(InquiryWord::conjunction), QLatin1String(InquiryWord::disjunction)}, parent)
{ }
