#include "swimconfig.h"

#include "appearancepage.h"
#include "applicationspage.h"
#include "choicepage.h"
#include "cloudpage.h"
#include "companionwindow.h"
#include "destinationspage.h"
#include "receivepage.h"
#include "sharedwindow.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>

namespace {

constexpr int listMargin = 32;
constexpr QSize usualSize{720, 420};

} // namespace

swimconfig *swimconfig::instance()
{
    return sharedWindow<swimconfig>([] { return new swimconfig; });
}

swimconfig::swimconfig(QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    build();
}

void swimconfig::build()
{
    setWindowTitle(tr("Settings"));
    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("pages"));
    m_list->setAccessibleName(tr("Pages of settings"));
    m_stack = new QStackedWidget(this);
    addPage(ChoicePage::imports(this));
    addPage(ChoicePage::deletion(this));
    addPage(new DestinationsPage(this));
    addPage(new ReceivePage(this));
    addPage(new ApplicationsPage(this));
    addPage(new CloudPage(this));
    addPage(new AppearancePage(this));
    m_list->setFixedWidth(m_list->sizeHintForColumn(0) + listMargin);
    connect(m_list, &QListWidget::currentRowChanged, m_stack, &QStackedWidget::setCurrentIndex);
    m_list->setCurrentRow(Imports);
    m_failure = new QLabel(this);
    m_failure->setObjectName(QStringLiteral("failure"));
    m_failure->setWordWrap(true);
    m_failure->setTextFormat(Qt::PlainText);
    m_failure->hide();
    auto *columns = new QHBoxLayout;
    columns->addWidget(m_list);
    columns->addWidget(m_stack, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(columns, 1);
    layout->addWidget(m_failure);
    layout->addWidget(buildButtons());
    resize(usualSize.expandedTo(sizeHint()));
}

void swimconfig::addPage(SettingsPage *page)
{
    m_pages.append(page);
    m_list->addItem(page->title());
    m_stack->addWidget(page);
}

QWidget *swimconfig::buildButtons()
{
    auto *buttons = new QDialogButtonBox(this);
    QPushButton *ok = buttons->addButton(QDialogButtonBox::Ok);
    ok->setText(tr("OK"));
    ok->setObjectName(QStringLiteral("ok"));
    ok->setDefault(true);
    buttons->addButton(QDialogButtonBox::Cancel)->setText(tr("Cancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &swimconfig::save);
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    closeOnEscape(this);
    return buttons;
}

void swimconfig::showPage(Page page)
{
    m_list->setCurrentRow(page);
    bringUp(this);
    raise();
    activateWindow();
}

void swimconfig::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    complain({});
    for (SettingsPage *page : qAsConst(m_pages)) {
        page->read();
    }
}

void swimconfig::save()
{
    for (int i = 0; i < m_pages.size(); ++i) {
        const QString fault = m_pages[i]->fault();
        if (!fault.isEmpty()) {
            m_list->setCurrentRow(i);
            complain(fault);
            return;
        }
    }
    QStringList failed;
    for (SettingsPage *page : qAsConst(m_pages)) {
        failed += page->write();
    }
    failed.removeDuplicates();
    if (failed.isEmpty()) {
        close();
    } else {
        complain(tr("These settings cannot be kept, since this file cannot be written: %1")
                     .arg(failed.join(QStringLiteral(", "))));
    }
}

void swimconfig::complain(const QString &text)
{
    m_failure->setText(text);
    m_failure->setAccessibleName(text);
    m_failure->setVisible(!text.isEmpty());
}
