#include "databasesetform.h"

#include "companionwindow.h"
#include "createconnection.h"
#include "filechooser.h"
#include "indexcare.h"
#include "indexfactsview.h"
#include "kivmessageboxform.h"
#include "mainsetting.h"
#include "settingsnotifier.h"
#include "sharedwindow.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

namespace {

QPointer<DataBaseSetForm> &onlyForm()
{
    static QPointer<DataBaseSetForm> form;
    return form;
}

QGroupBox *grouped(const QString &title, QWidget *content, QWidget *parent)
{
    auto *box = new QGroupBox(title, parent);
    auto *layout = new QVBoxLayout(box);
    layout->addWidget(content);
    return box;
}

} // namespace

DataBaseSetForm *DataBaseSetForm::instance()
{
    onlyForm() = sharedWindow<DataBaseSetForm>([] { return new DataBaseSetForm; });
    return onlyForm();
}

bool DataBaseSetForm::isAnyWorkRunning()
{
    return onlyForm() && onlyForm()->m_care->isRunning();
}

DataBaseSetForm::DataBaseSetForm(QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    build();
}

void DataBaseSetForm::build()
{
    setWindowTitle(tr("Database"));
    m_facts = new IndexFactsView(this);
    m_care = new IndexCare(this);
    m_said = new QLabel(this);
    m_said->setObjectName(QStringLiteral("said"));
    m_said->setWordWrap(true);
    m_said->setTextFormat(Qt::PlainText);
    m_said->hide();
    connect(m_care, &IndexCare::changed, m_facts, &IndexFactsView::refresh);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(grouped(tr("Index"), m_facts, this));
    layout->addWidget(grouped(tr("Care"), m_care, this));
    layout->addWidget(m_said);
    layout->addStretch();
    layout->addWidget(buildButtons());
    closeOnEscape(this);
}

QDialogButtonBox *DataBaseSetForm::buildButtons()
{
    auto *buttons = new QDialogButtonBox(this);
    const auto add = [buttons](const QString &text, const QString &name, const QString &hint) {
        QPushButton *button = buttons->addButton(text, QDialogButtonBox::ActionRole);
        button->setObjectName(name);
        button->setToolTip(hint);
        return button;
    };
    connect(add(tr("&Open Another…"), QStringLiteral("openAnother"),
                tr("Work on another index, or make a new one")),
        &QPushButton::clicked, this, &DataBaseSetForm::openAnother);
    connect(add(tr("&Copy path"), QStringLiteral("copy"), tr("Copy the path of the index to the clipboard")),
        &QPushButton::clicked, this, [] { QApplication::clipboard()->setText(databasePath()); });
    connect(add(tr("Open &folder"), QStringLiteral("folder"), tr("Show the folder of the index")),
        &QPushButton::clicked, this,
        [] { QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(databasePath()).path())); });
    QPushButton *closeButton = buttons->addButton(tr("Close"), QDialogButtonBox::RejectRole);
    closeButton->setDefault(true);
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    return buttons;
}

void DataBaseSetForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    refresh();
}

void DataBaseSetForm::refresh()
{
    m_facts->refresh();
}

/// A mistyped name must not end in an empty index without a word.
bool DataBaseSetForm::mayMake(const QString &path)
{
    return QFileInfo::exists(path)
        || kivMessageBoxForm::question(this, tr("Open Index"),
               tr("There is no index %1. Make a new, empty one?").arg(path), kivMessageBoxForm::OkAndCancel,
               kivMessageBoxForm::AnswerCancel)
        == kivMessageBoxForm::AnswerOk;
}

void DataBaseSetForm::openAnother()
{
    const QString path = FileChooser::toOpenOrMake(
        this, {tr("Open Index"), databasePath(), tr("Indexes (*.db);;All files (*)")});
    if (path.isEmpty() || QFileInfo(path) == QFileInfo(databasePath()) || !mayMake(path)) {
        return;
    }
    SettingsNotifier *notifier = SettingsNotifier::instance();
    if (notifier->canOpenIndex()) {
        emit notifier->indexRequested(path);
        return;
    }
    const MainSetting setting = MainSetting::databasePath();
    say(setting.write(path) ? tr("The program works on %1 from its next start.").arg(path)
                            : tr("This file cannot be written: %1").arg(setting.file()));
}

void DataBaseSetForm::say(const QString &text)
{
    m_said->setText(text);
    m_said->setVisible(!text.isEmpty());
}
