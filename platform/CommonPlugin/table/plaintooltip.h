#pragma once

#include <QString>

/// The text as a tool tip that shows it as it is: names of files and patients may look like markup.
inline QString plainToolTip(const QString &text)
{
    return text.isEmpty() ? QString() : QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped());
}
