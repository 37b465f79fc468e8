#include "settingspage.h"

#include <QBoxLayout>
#include <QLabel>

SettingsPage::SettingsPage(QString title, QWidget *parent)
    : QWidget(parent)
    , m_title(std::move(title))
{ }

void SettingsPage::addHint(QBoxLayout *layout, const QString &text)
{
    auto *hint = new QLabel(text, this);
    hint->setWordWrap(true);
    hint->setTextFormat(Qt::PlainText);
    layout->addWidget(hint);
}
