#pragma once

#include "comboboxdelegate.h"

/// Edits how a condition joins the next one of its group.
class PATIENTMANAGER_EXPORT NComboLogicDelegate : public ComboBoxDelegate
{
    Q_OBJECT

public:
    explicit NComboLogicDelegate(QObject *parent = nullptr);
};
