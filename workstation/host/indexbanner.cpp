#include "indexbanner.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

namespace {

/// Dark on amber: readable beside a light and a dark theme alike.
constexpr char look[] = "IndexBanner { background: #ffe0a3; border-bottom: 1px solid #b07400; }"
                        "IndexBanner QLabel { color: #3b2a00; }";
constexpr int iconSide = 24;

} // namespace

IndexBanner::IndexBanner(QWidget *parent)
    : QFrame(parent)
    , m_label(new QLabel(this))
{
    setObjectName(QStringLiteral("indexBanner"));
    setStyleSheet(QLatin1String(look));
    auto *icon = new QLabel(this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(iconSide, iconSide));
    m_label->setWordWrap(true);
    m_label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_label->setTextFormat(Qt::PlainText);
    auto *row = new QHBoxLayout(this);
    row->addWidget(icon, 0, Qt::AlignTop);
    row->addWidget(m_label, 1);
    hide();
}

void IndexBanner::say(const QString &text)
{
    m_label->setText(text);
    m_label->setAccessibleName(text);
    setVisible(!text.isEmpty());
}

QString IndexBanner::text() const
{
    return m_label->text();
}
