#pragma once

#include "commonplugin_export.h"

#include <QLabel>

/// What a line of a list has no room for, in full: wrapped, to be marked and copied, and gone where there is
/// nothing to say.
class COMMONPLUGIN_EXPORT DetailLabel : public QLabel
{
    Q_OBJECT

public:
    explicit DetailLabel(QWidget *parent = nullptr);

    void setDetail(const QString &text);
};
