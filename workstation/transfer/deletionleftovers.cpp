#include "deletionleftovers.h"

#include "systemtext.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSqlDatabase>
#include <QTableWidget>
#include <QVBoxLayout>

#include <cerrno>

namespace {

enum Column { FileColumn, ReasonColumn, ColumnCount };
constexpr QSize firstSize{960, 360};

QString reasonText(int systemError)
{
    switch (systemError) {
    case EACCES:
    case EPERM:
        return DeletionLeftovers::tr("The folder or the file is locked for you.");
    case EROFS:
        return DeletionLeftovers::tr("The disk can only be read.");
    case EISDIR:
        return DeletionLeftovers::tr("It is a folder.");
    case EBUSY:
        return DeletionLeftovers::tr("Another program uses it.");
    default:
        return systemText(systemError);
    }
}

} // namespace

DeletionLeftovers::DeletionLeftovers(const QVector<FileLeft> &files, QWidget *parent)
    : QDialog(parent)
    , m_files(files)
    , m_text(new QLabel(this))
    , m_table(new QTableWidget(0, ColumnCount, this))
    , m_again(new QPushButton(tr("&Try Again"), this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Files That Could Not Be Removed"));
    resize(firstSize);
    build();
    fill();
}

void DeletionLeftovers::build()
{
    m_text->setWordWrap(true);
    m_table->setHorizontalHeaderLabels({tr("File"), tr("Reason")});
    m_table->setAccessibleName(tr("Files that could not be removed"));
    m_table->setToolTip(tr("Each file that is still on the disk, and why"));
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setTabKeyNavigation(false);
    m_table->setWordWrap(false); // a path would end at its first hyphen
    m_table->setTextElideMode(Qt::ElideMiddle); // of paths; the reasons have their room
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setSectionResizeMode(FileColumn, QHeaderView::Stretch);
    m_again->setToolTip(tr("Try to remove these files once more"));
    m_again->setAccessibleName(tr("Try again"));
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(m_again, QDialogButtonBox::ActionRole);
    QPushButton *close = buttons->addButton(QDialogButtonBox::Close);
    close->setToolTip(tr("Leave these files where they are"));
    close->setAccessibleName(tr("Close"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_again, &QPushButton::clicked, this, &DeletionLeftovers::tryAgain);
    auto *column = new QVBoxLayout(this);
    column->addWidget(m_text);
    column->addWidget(m_table);
    column->addWidget(buttons);
}

void DeletionLeftovers::add(const QVector<FileLeft> &files)
{
    m_files += files;
    fill();
}

void DeletionLeftovers::tryAgain()
{
    m_files = FileDisposal::tryAgain(QSqlDatabase::database(), m_files);
    fill();
    if (!m_files.isEmpty()) {
        m_text->setText(tr("%Ln file(s) still could not be removed. Remove what locks them and try again.",
            nullptr, m_files.size()));
    }
}

void DeletionLeftovers::fill()
{
    const bool none = m_files.isEmpty();
    m_text->setText(none
            ? tr("All of these files have been removed, or belong to records again.")
            : tr("The records are deleted, but %Ln of their file(s) are still on the disk. Remove what "
                 "locks them and try again.",
                nullptr, m_files.size()));
    m_table->setRowCount(m_files.size());
    for (int row = 0; row < m_files.size(); ++row) {
        const FileLeft &file = m_files.at(row);
        m_table->setItem(row, FileColumn, new QTableWidgetItem(file.path));
        m_table->setItem(row, ReasonColumn, new QTableWidgetItem(reasonText(file.systemError)));
        m_table->item(row, FileColumn)->setToolTip(file.path);
    }
    m_table->resizeColumnToContents(ReasonColumn);
    m_again->setEnabled(!none);
}
