#include "selecthideform.h"

#include "attributes.h"
#include "companionwindow.h"
#include "fieldpage.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

selectHideForm::selectHideForm(QWidget *parent, int page)
    : QWidget(parent, Qt::Window)
    , m_pages(new QTabWidget(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    build();
    m_pages->setCurrentIndex(page);
}

void selectHideForm::build()
{
    setWindowTitle(tr("Fields"));
    m_pages->setAccessibleName(tr("Tables"));
    const auto addPage = [this](RecordLevel level, const QString &title) {
        auto *page = new FieldPage(QLatin1String(recordTableName(level)), this);
        connect(page, &FieldPage::changed, this, &selectHideForm::updateFieldHeader);
        m_pages->addTab(page, title);
    };
    addPage(RecordLevel::Patient, tr("&Patients"));
    addPage(RecordLevel::Study, tr("&Studies"));
    addPage(RecordLevel::Series, tr("S&eries"));
    addPage(RecordLevel::Image, tr("&Images"));
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(QDialogButtonBox::Close)->setText(tr("Close"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    closeOnEscape(this);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_pages);
    layout->addWidget(buttons);
}
