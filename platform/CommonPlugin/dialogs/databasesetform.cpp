#include "databasesetform.h"

#include "attributes.h"
#include "createconnection.h"
#include "importreporttext.h"
#include "sharedwindow.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QShortcut>
#include <QSqlQuery>
#include <QUrl>

namespace {

constexpr int pathCharacters = 50;
constexpr RecordLevel levels[] = {
    RecordLevel::Patient, RecordLevel::Study, RecordLevel::Series, RecordLevel::Image};

/// The index with what has not been written back into it yet.
qint64 sizeOnDisk(const QString &path)
{
    return QFileInfo(path).size() + QFileInfo(path + QLatin1String("-wal")).size();
}

QString recordCount(RecordLevel level)
{
    QSqlQuery query;
    const QString sql = QStringLiteral("SELECT count(*) FROM ") + QLatin1String(recordTableName(level));
    return query.exec(sql) && query.next() ? QLocale().toString(query.value(0).toLongLong())
                                           : QStringLiteral("–");
}

} // namespace

DataBaseSetForm *DataBaseSetForm::instance()
{
    return sharedWindow<DataBaseSetForm>([] { return new DataBaseSetForm; });
}

DataBaseSetForm::DataBaseSetForm(QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    build();
}

void DataBaseSetForm::build()
{
    setWindowTitle(tr("Database"));
    auto *lines = new QFormLayout;
    m_path = addLine(lines, tr("File:"), QStringLiteral("path"));
    m_path->setWordWrap(true);
    m_path->setMinimumWidth(pathCharacters * fontMetrics().averageCharWidth());
    m_size = addLine(lines, tr("Size:"), QStringLiteral("size"));
    const QStringList captions{tr("Patients:"), tr("Studies:"), tr("Series:"), tr("Images:")};
    for (int i = 0; i < captions.size(); ++i) {
        m_counts.append(addLine(lines, captions.at(i), QLatin1String(recordTableName(levels[i]))));
    }
    m_failure = new QLabel(this);
    m_failure->setObjectName(QStringLiteral("failure"));
    m_failure->setWordWrap(true);
    auto *buttons = new QDialogButtonBox(this);
    QPushButton *copy = buttons->addButton(tr("&Copy path"), QDialogButtonBox::ActionRole);
    QPushButton *open = buttons->addButton(tr("&Open folder"), QDialogButtonBox::ActionRole);
    QPushButton *closeButton = buttons->addButton(tr("Close"), QDialogButtonBox::RejectRole);
    copy->setObjectName(QStringLiteral("copy"));
    copy->setToolTip(tr("Copy the path of the index to the clipboard"));
    open->setToolTip(tr("Show the folder of the index"));
    closeButton->setDefault(true);
    connect(copy, &QPushButton::clicked, this, [] { QApplication::clipboard()->setText(databasePath()); });
    connect(open, &QPushButton::clicked, this,
        [] { QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(databasePath()).path())); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(lines);
    layout->addWidget(m_failure);
    layout->addStretch();
    layout->addWidget(buttons);
}

QLabel *DataBaseSetForm::addLine(QFormLayout *lines, const QString &caption, const QString &objectName)
{
    auto *value = new QLabel(this);
    value->setObjectName(objectName);
    value->setAccessibleName(caption);
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    lines->addRow(caption, value);
    return value;
}

void DataBaseSetForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    refresh();
}

void DataBaseSetForm::refresh()
{
    const QString path = databasePath();
    m_path->setText(path);
    m_size->setText(QLocale().formattedDataSize(sizeOnDisk(path)));
    m_failure->setText(connectionFailureText(connectionFailure()));
    m_failure->setVisible(!m_failure->text().isEmpty());
    const bool open = QSqlDatabase::database(QLatin1String(QSqlDatabase::defaultConnection), false).isOpen();
    for (int i = 0; i < m_counts.size(); ++i) {
        m_counts.at(i)->setText(open ? recordCount(levels[i]) : QStringLiteral("–"));
    }
}
