#pragma once

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>

/// The first control of a form that has no tool tip or no accessible name of its own; empty where all have.
inline QString unnamedControl(const QWidget &form)
{
    for (const QWidget *control : form.findChildren<QWidget *>()) {
        const bool isControl = qobject_cast<const QAbstractButton *>(control)
            || qobject_cast<const QComboBox *>(control) || qobject_cast<const QLineEdit *>(control)
            || (qobject_cast<const QAbstractItemView *>(control)
                && !qobject_cast<const QHeaderView *>(control));
        // The list of a combo box is Qt's own.
        const bool isPart = control->parent()->inherits("QComboBox")
            || control->parent()->inherits("QComboBoxPrivateContainer");
        if (isControl && !isPart && (control->toolTip().isEmpty() || control->accessibleName().isEmpty())) {
            return QStringLiteral("%1 '%2'").arg(
                QLatin1String(control->metaObject()->className()), control->objectName());
        }
    }
    return {};
}
