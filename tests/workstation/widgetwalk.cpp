#include "widgetwalk.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QHash>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QToolBar>
#include <QtTest>

namespace {

QString describe(const QWidget *widget)
{
    QStringList path;
    for (const QWidget *w = widget; w && path.size() < 4; w = w->parentWidget()) {
        path.prepend(
            QStringLiteral("%1 '%2'").arg(QLatin1String(w->metaObject()->className()), w->objectName()));
    }
    return path.join(QStringLiteral(" > "));
}

/// Made by Qt itself: the list of a combo box, the field of a spin box, the corners of a tool bar.
bool isPartOfAControl(const QWidget *widget)
{
    for (const QWidget *w = widget; w; w = w->parentWidget()) {
        if (w->objectName().startsWith(QLatin1String("qt_")) || w->inherits("QComboBoxPrivateContainer")) {
            return true;
        }
    }
    return widget->inherits("QTableCornerButton") || widget->inherits("QLineEditIconButton");
}

bool isControl(const QWidget *widget)
{
    const auto *label = qobject_cast<const QLabel *>(widget);
    if (label && label->text().isEmpty()) {
        return false;
    }
    return (widget->focusPolicy() != Qt::NoFocus || qobject_cast<const QAbstractButton *>(widget))
        && !widget->isWindow() && !isPartOfAControl(widget);
}

QString mnemonicOf(const QString &text)
{
    return QKeySequence::mnemonic(text).toString();
}

void addShared(QStringList *faults, const QHash<QString, QStringList> &users)
{
    for (auto user = users.begin(); user != users.end(); ++user) {
        if (!user.key().isEmpty() && user.value().size() > 1) {
            faults->append(user.key() + QStringLiteral(": ") + user.value().join(QStringLiteral(", ")));
        }
    }
}

void addSharedLetters(QStringList *faults, const QList<QAction *> &entries)
{
    QHash<QString, QStringList> users;
    for (const QAction *entry : entries) {
        users[mnemonicOf(entry->text())].append(entry->text());
        if (entry->menu()) {
            addSharedLetters(faults, entry->menu()->actions());
        }
    }
    addShared(faults, users);
}

bool isInMenu(const QAction *action)
{
    const QList<QWidget *> places = action->associatedWidgets();
    return std::any_of(
        places.begin(), places.end(), [](const QWidget *w) { return qobject_cast<const QMenu *>(w); });
}

} // namespace

namespace WidgetWalk {

QStringList unnamedControls(const QWidget &window)
{
    QStringList faults;
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        if (isControl(widget)) {
            QAccessibleInterface *face = QAccessible::queryAccessibleInterface(widget);
            if (!face || face->text(QAccessible::Name).trimmed().isEmpty()) {
                faults.append(describe(widget));
            }
        }
    }
    return faults;
}

QStringList unreachedByTab(QWidget &window)
{
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window)) {
        return {QStringLiteral("the window does not become active")};
    }
    QList<QWidget *> wanted;
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        const bool isReachable = widget->isVisible() && widget->isEnabled() && widget->window() == &window
            && (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
        if (isReachable && isControl(widget) && !qobject_cast<QLabel *>(widget)) {
            wanted.append(widget);
        }
    }
    if (wanted.isEmpty()) {
        return {};
    }
    wanted.first()->setFocus();
    QSet<QWidget *> reached;
    for (int step = 0; step < 4 * wanted.size() && QApplication::focusWidget(); ++step) {
        reached.insert(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QStringList faults;
    for (const QWidget *widget : qAsConst(wanted)) {
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        const bool isOneOfGroup = button && button->isCheckable() && button->autoExclusive();
        const bool isInProxy = widget->focusProxy() && reached.contains(widget->focusProxy());
        if (!reached.contains(const_cast<QWidget *>(widget)) && !isInProxy && !isOneOfGroup) {
            faults.append(describe(widget));
        }
    }
    return faults;
}

QStringList sharedKeys(const QWidget &window)
{
    QStringList faults;
    QHash<QString, QStringList> users;
    for (const QAction *action : window.findChildren<QAction *>()) {
        if (action->isEnabled() && action->shortcutContext() == Qt::WindowShortcut) {
            for (const QKeySequence &keys : action->shortcuts()) {
                users[keys.toString()].append(action->text());
            }
        }
    }
    for (const QShortcut *shortcut : window.findChildren<QShortcut *>()) {
        if (shortcut->context() == Qt::WindowShortcut && shortcut->isEnabled()) {
            users[shortcut->key().toString()].append(QStringLiteral("a shortcut"));
        }
    }
    addShared(&faults, users);
    for (const QMenuBar *bar : window.findChildren<QMenuBar *>()) {
        addSharedLetters(&faults, bar->actions());
    }
    return faults;
}

QStringList mouseOnlyActions(const QWidget &window)
{
    QStringList faults;
    for (const QToolBar *bar : window.findChildren<QToolBar *>()) {
        for (const QAction *action : bar->actions()) {
            const bool isWidget = action->inherits("QWidgetAction");
            if (!action->isSeparator() && !isWidget && action->isEnabled() && action->shortcut().isEmpty()
                && !isInMenu(action)) {
                faults.append(action->objectName() + QLatin1Char(' ') + action->text());
            }
        }
    }
    return faults;
}

} // namespace WidgetWalk
