#pragma once

#include "comboboxdelegate.h"

/// Edits how exactly a condition compares.
class PATIENTMANAGER_EXPORT NDelegateQueryType : public ComboBoxDelegate
{
    Q_OBJECT

public:
    explicit NDelegateQueryType(QObject *parent = nullptr);
};
