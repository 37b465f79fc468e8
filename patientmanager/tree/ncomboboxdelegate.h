#pragma once

#include "comboboxdelegate.h"

/// Edits the symbol of a condition.
class PATIENTMANAGER_EXPORT NComboBoxDelegate : public ComboBoxDelegate
{
    Q_OBJECT

public:
    explicit NComboBoxDelegate(QObject *parent = nullptr);
};
