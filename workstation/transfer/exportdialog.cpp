#include "exportdialog.h"

#include "exportlist.h"
#include "exporttext.h"
#include "filechooser.h"
#include "indexconnection.h"
#include "kivmessageboxform.h"
#include "plaincaption.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QThread>
#include <QVBoxLayout>

#include <memory>
#include <optional>

namespace {

constexpr char zipSuffix[] = ".zip";
constexpr int usualWidth = 560;
constexpr int countingWaitMs = 300; ///< the dialog does not close before its count has ended

} // namespace

ExportDialog::ExportDialog(const ExportRequest &records, const QString &what, QWidget *parent)
    : QDialog(parent, Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint)
    , m_request(records)
    , m_what(what)
{
    setObjectName(QStringLiteral("exportDialog"));
    setWindowTitle(tr("Export As"));
    build(what);
    follow();
    count();
}

ExportDialog::~ExportDialog()
{
    m_counter->wait();
}

void ExportDialog::build(const QString &what)
{
    m_size = new QLabel(tr("%1, being counted…").arg(what), this);
    m_size->setObjectName(QStringLiteral("exportSize"));
    m_check = new QCheckBox(tr("&Read everything back and compare it"), this);
    m_check->setChecked(m_request.check);
    m_compress = new QCheckBox(tr("&Compress what becomes smaller by it"), this);
    m_compress->setChecked(m_request.compress);
    m_problem = new QLabel(this);
    m_problem->setObjectName(QStringLiteral("exportProblem"));
    m_problem->setWordWrap(true);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    QPushButton *go = buttons->addButton(tr("&Export"), QDialogButtonBox::AcceptRole);
    go->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &ExportDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ExportDialog::reject);

    auto *column = new QVBoxLayout(this);
    column->addWidget(m_size);
    column->addWidget(buildFormats());
    column->addLayout(buildTarget());
    column->addWidget(m_check);
    column->addWidget(m_compress);
    column->addWidget(m_problem);
    column->addStretch();
    column->addWidget(buttons);
    resize(usualWidth, sizeHint().height());
}

QWidget *ExportDialog::buildFormats()
{
    auto *box = new QGroupBox(tr("Make"), this);
    auto *column = new QVBoxLayout(box);
    m_formats = new QButtonGroup(this);
    for (const ExportFormat format :
        {ExportFormat::NamedFolders, ExportFormat::Media, ExportFormat::Zip, ExportFormat::KeyFolders}) {
        auto *button = new QRadioButton(exportFormatText(format), box);
        button->setChecked(format == m_request.format);
        m_formats->addButton(button, int(format));
        column->addWidget(button);
    }
    connect(m_formats, &QButtonGroup::idClicked, this, &ExportDialog::follow);
    return box;
}

QLayout *ExportDialog::buildTarget()
{
    m_targetCaption = new QLabel(this);
    m_target = new QLineEdit(QDir::toNativeSeparators(m_request.target), this);
    m_target->setObjectName(QStringLiteral("exportTarget"));
    m_targetCaption->setBuddy(m_target);
    auto *choose = new QPushButton(tr("C&hoose…"), this);
    choose->setAutoDefault(false);
    connect(choose, &QPushButton::clicked, this, &ExportDialog::browse);
    auto *row = new QHBoxLayout;
    row->addWidget(m_targetCaption);
    row->addWidget(m_target, 1);
    row->addWidget(choose);
    return row;
}

void ExportDialog::count()
{
    const auto size = std::make_shared<std::optional<ExportSize>>();
    m_counter = QThread::create([request = m_request, size] {
        const IndexConnection connection(request.databasePath, countingWaitMs);
        if (connection.isOpen()) {
            *size = exportSize(connection.database(), request.level, request.keys);
        }
    });
    m_counter->setParent(this);
    connect(m_counter, &QThread::finished, this, [this, size] {
        m_size->setText(*size ? tr("%1: %2").arg(m_what, exportSizeText((*size)->files, (*size)->bytes))
                              : tr("%1, which could not be counted").arg(m_what));
    });
    m_counter->start();
}

ExportFormat ExportDialog::format() const
{
    return ExportFormat(m_formats->checkedId());
}

/// The target is a folder, but for an archive, which is a file.
void ExportDialog::follow()
{
    const bool isZip = format() == ExportFormat::Zip;
    m_compress->setEnabled(isZip);
    m_targetCaption->setText(isZip ? tr("&Archive:") : tr("&Folder:"));
    m_target->setAccessibleName(isZip ? tr("Archive to make") : tr("Folder to export to"));
    const QString target = QDir::fromNativeSeparators(m_target->text());
    const bool namesZip = target.endsWith(QLatin1String(zipSuffix), Qt::CaseInsensitive);
    if (isZip && !namesZip && QFileInfo(target).isDir()) {
        m_target->setText(QDir::toNativeSeparators(zipProposal(target)));
    } else if (!isZip && namesZip) {
        m_target->setText(QDir::toNativeSeparators(QFileInfo(target).path()));
    }
    m_problem->clear();
}

QString ExportDialog::zipProposal(const QString &folder) const
{
    const QString stem = tr("Images", "the name of an archive");
    QString name = stem + QLatin1String(zipSuffix);
    for (int i = 2; QFileInfo::exists(QDir(folder).filePath(name)); ++i) {
        name = QStringLiteral("%1 %2%3").arg(stem).arg(i).arg(QLatin1String(zipSuffix));
    }
    return QDir(folder).filePath(name);
}

void ExportDialog::browse()
{
    const FileChooser::Request request{
        plainCaption(m_targetCaption->text()), m_target->text(), tr("ZIP archives (*.zip)")};
    const QString chosen = format() == ExportFormat::Zip
        ? FileChooser::toOpenOrMake(this, request)
        : FileChooser::toFolder(this, {request.title, request.start, {}});
    if (!chosen.isEmpty()) {
        m_target->setText(QDir::toNativeSeparators(chosen));
    }
}

QString ExportDialog::problem() const
{
    const QFileInfo target(QDir::fromNativeSeparators(m_target->text()));
    const bool isZip = format() == ExportFormat::Zip;
    const QFileInfo folder(isZip ? target.absolutePath() : target.absoluteFilePath());
    if (m_target->text().trimmed().isEmpty() || !target.isAbsolute()) {
        return tr("Choose where to export to.");
    }
    if (!folder.isDir()) {
        return tr("There is no folder %1.").arg(QDir::toNativeSeparators(folder.filePath()));
    }
    if (isZip && (target.isDir() || target.fileName().isEmpty())) {
        return tr("Name the archive to make.");
    }
    return folder.isWritable()
        ? QString()
        : tr("The folder %1 cannot be written.").arg(QDir::toNativeSeparators(folder.filePath()));
}

void ExportDialog::accept()
{
    const QString reason = problem();
    m_problem->setText(reason);
    if (!reason.isEmpty()) {
        m_target->setFocus();
        return;
    }
    m_request.format = format();
    m_request.target = QDir::cleanPath(QDir::fromNativeSeparators(m_target->text()));
    m_request.check = m_check->isChecked();
    m_request.compress = m_compress->isChecked();
    const bool isZip = m_request.format == ExportFormat::Zip;
    if (isZip && !m_request.target.endsWith(QLatin1String(zipSuffix), Qt::CaseInsensitive)) {
        m_request.target += QLatin1String(zipSuffix);
    }
    const bool replaces = isZip && QFileInfo::exists(m_request.target);
    if (replaces
        && kivMessageBoxForm::question(this, windowTitle(),
               tr("Replace the archive %1?").arg(QDir::toNativeSeparators(m_request.target)),
               kivMessageBoxForm::OkAndCancel, kivMessageBoxForm::AnswerCancel)
            == kivMessageBoxForm::AnswerCancel) {
        return;
    }
    QDialog::accept();
    emit requested(m_request);
}
