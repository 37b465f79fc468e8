#pragma once

#include <QWidget>

/// Enables or disables a control. The focus of one that is disabled would go to whatever comes next, and the
/// next Space would press that: it goes to a control that does no harm.
inline void setEnabledWithCare(QWidget *control, bool isEnabled, QWidget *harmless)
{
    if (!isEnabled && control->isEnabled() && control->window()->focusWidget() == control) {
        harmless->setFocus(Qt::OtherFocusReason);
    }
    control->setEnabled(isEnabled);
}
