#include "datasavetypeform.h"

#include "companionwindow.h"
#include "importrequest.h"
#include "sharedwindow.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

DataSaveTypeForm *DataSaveTypeForm::instance()
{
    return sharedWindow<DataSaveTypeForm>([] { return new DataSaveTypeForm; });
}

DataSaveTypeForm::DataSaveTypeForm(QWidget *parent)
    : QWidget(parent, Qt::Dialog)
{
    build();
}

void DataSaveTypeForm::build()
{
    setWindowTitle(tr("Import"));
    setWindowFlag(Qt::WindowStaysOnTopHint);
    setWindowModality(Qt::ApplicationModal);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(tr("How shall the files be imported?"), this));
    const auto add = [this, layout](
                         ImportMode mode, const QString &name, const QString &text, const QString &hint) {
        auto *button = new QPushButton(text, this);
        button->setObjectName(name);
        button->setAutoDefault(true);
        button->setAccessibleDescription(hint);
        connect(button, &QPushButton::clicked, this, [this, mode] { choose(int(mode)); });
        layout->addWidget(button);
        layout->addWidget(new QLabel(hint, this));
    };
    add(ImportMode::Reference, QStringLiteral("reference"), tr("&Reference them where they are"),
        tr("Takes no space; the files must stay where they are"));
    add(ImportMode::Copy, QStringLiteral("copy"), tr("&Copy them into the store"),
        tr("Right for discs, sticks and network folders"));
    auto *cancel = new QPushButton(tr("Cancel"), this);
    cancel->setObjectName(QStringLiteral("cancel"));
    layout->addWidget(cancel, 0, Qt::AlignRight);
    connect(cancel, &QPushButton::clicked, this, &QWidget::close);
    closeOnEscape(this);
}

void DataSaveTypeForm::ask(QObject *asker, const std::function<void(int)> &answer)
{
    m_asker = asker;
    m_answer = answer;
    show();
    raise();
    activateWindow();
}

void DataSaveTypeForm::choose(int type)
{
    const std::function<void(int)> answer = m_answer;
    const bool wanted = !m_asker.isNull();
    close();
    if (!answer) {
        emit dataType(type);
    } else if (wanted) {
        answer(type);
    }
}

void DataSaveTypeForm::closeEvent(QCloseEvent *event)
{
    m_asker = nullptr;
    m_answer = nullptr;
    QWidget::closeEvent(event);
}
