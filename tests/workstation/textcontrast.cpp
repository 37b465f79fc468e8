#include "textcontrast.h"

#include "palettes.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHash>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>
#include <QStyleOption>
#include <QToolButton>

namespace {

constexpr double leastContrast = 4.5;
constexpr int iconGap = 4;

using Role = QPalette::ColorRole;
using Pairs = QVector<QPair<Role, Role>>;

QString faultOf(const QWidget *widget, double contrast, const QString &what)
{
    return QStringLiteral("%1 '%2': %3 in %4")
        .arg(QLatin1String(widget->metaObject()->className()), widget->objectName())
        .arg(contrast)
        .arg(what);
}

QString textOf(const QWidget *widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(widget)) {
        return label->pixmap(Qt::ReturnByValue).isNull() ? label->text() : QString();
    }
    const auto *tool = qobject_cast<const QToolButton *>(widget);
    if (tool && tool->toolButtonStyle() == Qt::ToolButtonIconOnly && !tool->icon().isNull()) {
        return {};
    }
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget)) {
        return button->text();
    }
    if (const auto *box = qobject_cast<const QComboBox *>(widget)) {
        return box->currentText();
    }
    const auto *field = qobject_cast<const QLineEdit *>(widget);
    return field ? field->text() : QString();
}

QRect fieldRect(const QLineEdit *field)
{
    QStyleOptionFrame option;
    option.initFrom(field);
    option.lineWidth = field->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, field);
    QRect inside = field->style()->subElementRect(QStyle::SE_LineEditContents, &option, field);
    for (const QToolButton *icon : field->findChildren<QToolButton *>()) {
        const QRect place = icon->geometry();
        if (place.center().x() < inside.center().x()) {
            inside.setLeft(qMax(inside.left(), place.right() + 1));
        } else {
            inside.setRight(qMin(inside.right(), place.left() - 1));
        }
    }
    return inside;
}

QRect buttonRect(const QAbstractButton *button)
{
    QStyleOptionButton option;
    option.initFrom(button);
    const bool isCheck = qobject_cast<const QCheckBox *>(button);
    if (isCheck || qobject_cast<const QRadioButton *>(button)) {
        const auto element = isCheck ? QStyle::SE_CheckBoxContents : QStyle::SE_RadioButtonContents;
        return button->style()->subElementRect(element, &option, button);
    }
    const int frame = button->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, button) + 2;
    QRect inside = button->rect().adjusted(frame, frame, -frame, -frame);
    const auto *tool = qobject_cast<const QToolButton *>(button);
    if (button->icon().isNull()) {
        return inside;
    }
    if (tool && tool->toolButtonStyle() == Qt::ToolButtonTextUnderIcon) {
        inside.setTop(inside.top() + button->iconSize().height() + iconGap);
        return inside;
    }
    const int text = button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width();
    const int all = button->iconSize().width() + iconGap + text;
    const int spare = tool ? 0 : qMax(0, inside.width() - all) / 2;
    inside.setLeft(inside.left() + spare + all - text);
    return inside;
}

/// Where the text is, without frame and icon.
QRect textRect(const QWidget *widget)
{
    if (const auto *field = qobject_cast<const QLineEdit *>(widget)) {
        return fieldRect(field);
    }
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget)) {
        return buttonRect(button);
    }
    if (const auto *box = qobject_cast<const QComboBox *>(widget)) {
        QStyleOptionComboBox option;
        option.initFrom(box);
        const QRect inside =
            box->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, box);
        return inside.adjusted(iconGap / 2, iconGap / 2, -iconGap / 2, -iconGap / 2);
    }
    return widget->contentsRect();
}

/// The best contrast of any pixel to the colour that most have.
double inkContrast(const QImage &picture)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            ++counts[picture.pixel(x, y)];
        }
    }
    QRgb ground = 0;
    for (auto colour = counts.constBegin(); colour != counts.constEnd(); ++colour) {
        ground = colour.value() > counts.value(ground) ? colour.key() : ground;
    }
    double best = 1;
    for (auto colour = counts.constBegin(); colour != counts.constEnd(); ++colour) {
        best = qMax(best, Palettes::contrast(QColor(colour.key()), QColor(ground)));
    }
    return best;
}

/// The colours that the style draws the texts of a widget with.
Pairs pairsOf(const QWidget *widget)
{
    const QPair<Role, Role> chosen(QPalette::HighlightedText, QPalette::Highlight);
    if (qobject_cast<const QHeaderView *>(widget)) {
        return {{QPalette::ButtonText, QPalette::Button}};
    }
    if (qobject_cast<const QAbstractItemView *>(widget)) {
        return {{QPalette::Text, QPalette::Base}, {QPalette::Text, QPalette::AlternateBase}, chosen};
    }
    if (qobject_cast<const QMenu *>(widget) || qobject_cast<const QMenuBar *>(widget)) {
        return {{QPalette::WindowText, QPalette::Window}, {QPalette::Text, QPalette::Window}, chosen};
    }
    if (qobject_cast<const QGroupBox *>(widget)) {
        return {{QPalette::WindowText, QPalette::Window}};
    }
    return {};
}

void judgeColours(QStringList *faults, const QWidget *widget)
{
    const QPalette palette = widget->palette();
    for (const auto &pair : pairsOf(widget)) {
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            const double contrast =
                Palettes::contrast(palette.color(group, pair.first), palette.color(group, pair.second));
            if (contrast < leastContrast) {
                faults->append(faultOf(widget, contrast,
                    QStringLiteral("role %1 on %2, group %3").arg(pair.first).arg(pair.second).arg(group)));
            }
        }
    }
}

} // namespace

namespace TextContrast {

QStringList faintTexts(QWidget &window)
{
    const QImage whole = window.grab().toImage();
    QStringList faults;
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        judgeColours(&faults, widget);
        const QString text = textOf(widget);
        if (!widget->isVisible() || !widget->isEnabled() || text.trimmed().isEmpty()
            || widget->visibleRegion().isEmpty() || widget->window() != &window) {
            continue;
        }
        const QRect inside = textRect(widget) & widget->visibleRegion().boundingRect();
        const QRect place(widget->mapTo(&window, inside.topLeft()), inside.size());
        const double contrast = inkContrast(whole.copy(place & whole.rect()));
        if (contrast < leastContrast) {
            faults.append(faultOf(widget, contrast, text));
        }
    }
    return faults;
}

} // namespace TextContrast
