#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QString>

/// Controls as this library's windows have them: with a name for programs, one for people who hear the
/// window, and a hint.
namespace NamedParts {

inline void describe(QWidget *control, const char *name, const QString &accessibleName, const QString &hint)
{
    control->setObjectName(QLatin1String(name));
    control->setAccessibleName(accessibleName);
    control->setToolTip(hint);
}

template <typename Button>
Button *button(const char *name, const QString &text, const QString &hint, QWidget *parent)
{
    auto *made = new Button(text, parent);
    describe(made, name, QString(text).remove(QLatin1Char('&')), hint);
    return made;
}

inline QLineEdit *lineEdit(
    const char *name, const QString &accessibleName, const QString &hint, QWidget *parent)
{
    constexpr int mostCharacters = 2048;
    auto *edit = new QLineEdit(parent);
    describe(edit, name, accessibleName, hint);
    edit->setMaxLength(mostCharacters);
    return edit;
}

/// A plain, wrapped text that is hidden at first.
inline QLabel *hintLabel(const char *name, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->hide();
    return label;
}

} // namespace NamedParts
