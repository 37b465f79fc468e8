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
        // The list of a combo box and the like are Qt's own.
        const QObject *whole = control->parent();
        const bool isPart = whole->inherits("QComboBox") || whole->inherits("QComboBoxPrivateContainer")
            || whole->inherits("QLineEdit") || whole->inherits("QAbstractSpinBox")
            || control->inherits("QTableCornerButton");
        if (isControl && !isPart && (control->toolTip().isEmpty() || control->accessibleName().isEmpty())) {
            return QStringLiteral("%1 '%2'").arg(
                QLatin1String(control->metaObject()->className()), control->objectName());
        }
    }
    return {};
}
