#include "anonymizesetuppage.h"

#include "anonymisedfolders.h"
#include "anonymizeoptionspanel.h"
#include "anonymizeoutputpanel.h"
#include "createconnection.h"
#include "recordpicker.h"

#include <QDateTime>
#include <QScrollArea>
#include <QSplitter>
#include <QVBoxLayout>

AnonymizeSetupPage::AnonymizeSetupPage(QWidget *parent)
    : QWidget(parent)
{
    auto *splitter = new QSplitter(this);
    splitter->addWidget(buildLeft());
    splitter->addWidget(buildRight());
    splitter->setChildrenCollapsible(false);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
    connect(m_picker, &RecordPicker::changed, this, &AnonymizeSetupPage::changed);
    connect(m_options, &AnonymizeOptionsPanel::changed, this, &AnonymizeSetupPage::changed);
    connect(m_outputs, &AnonymizeOutputPanel::changed, this, &AnonymizeSetupPage::changed);
}

QWidget *AnonymizeSetupPage::buildLeft()
{
    auto *left = new QWidget(this);
    m_picker = new RecordPicker(left);
    m_outputs = new AnonymizeOutputPanel(left);
    auto *column = new QVBoxLayout(left);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_picker, 1);
    column->addWidget(m_outputs);
    return left;
}

QWidget *AnonymizeSetupPage::buildRight()
{
    m_options = new AnonymizeOptionsPanel;
    auto *scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setAccessibleName(tr("Options"));
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(m_options);
    scroll->setMinimumWidth(m_options->minimumSizeHint().width());
    return scroll;
}

void AnonymizeSetupPage::choose(const QString &tableName, const QList<qlonglong> &keys)
{
    m_picker->choose(tableName, keys);
}

void AnonymizeSetupPage::reload()
{
    m_picker->reload();
}

QList<qlonglong> AnonymizeSetupPage::studies() const
{
    return m_picker->ticked();
}

bool AnonymizeSetupPage::hasStudies() const
{
    return m_picker->hasTicked();
}

AnonymizeOutput AnonymizeSetupPage::output() const
{
    return m_outputs->output();
}

DeidentifyRequest AnonymizeSetupPage::request() const
{
    DeidentifyRequest request;
    request.options = m_options->options();
    request.folder =
        output() == AnonymizeOutput::Folder ? m_outputs->folder() : AnonymisedFolders::base(databasePath());
    request.name =
        tr("anonymized %1").arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HHmm")));
    return request;
}

QString AnonymizeSetupPage::obstacle() const
{
    const QString why = m_options->obstacle();
    return !hasStudies() ? tr("Tick patients or studies first.")
        : why.isEmpty()  ? m_outputs->obstacle()
                         : why;
}

QString AnonymizeSetupPage::caution() const
{
    return m_options->caution();
}
