#include "ncomboboxdelegate.h"

#include "inquirycondition.h"

NComboBoxDelegate::NComboBoxDelegate(QObject *parent)
    : ComboBoxDelegate({QLatin1String(InquiryWord::equal), QLatin1String(InquiryWord::greater),
                           QLatin1String(InquiryWord::less)},
        parent)
{ }
