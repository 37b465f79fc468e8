#pragma once

#include "filedisposal.h"

#include <QDialog>
#include <QVector>

class QLabel;
class QPushButton;
class QTableWidget;

/// Files that a deletion could not remove, each with the reason, and another try at them. Deletes itself when
/// it is closed; GUI thread.
class DeletionLeftovers : public QDialog
{
    Q_OBJECT

public:
    DeletionLeftovers(const QVector<FileLeft> &files, QWidget *parent);

    /// Adds the files of another deletion.
    void add(const QVector<FileLeft> &files);

private:
    void build();
    void tryAgain();
    void fill();

    QVector<FileLeft> m_files;
    QLabel *const m_text;
    QTableWidget *const m_table;
    QPushButton *const m_again;
};
