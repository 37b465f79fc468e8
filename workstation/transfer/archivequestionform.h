#pragma once

#include "archivequestion.h"

#include <QWidget>

class QComboBox;
class QDateEdit;
class QGridLayout;
class QLineEdit;

/// The fields of a search in an archive. Enter in any of them asks. GUI thread.
class ArchiveQuestionForm : public QWidget
{
    Q_OBJECT

public:
    explicit ArchiveQuestionForm(QWidget *parent = nullptr);

    ArchiveQuestion question() const;
    /// Says what is wrong with what was typed; empty where nothing is.
    QString fault() const;

public slots:
    void clear();

signals:
    void asked();

private:
    QLineEdit *addField(QGridLayout *grid, int place, const QString &name, const QString &label,
        const QString &accessibleName, const QString &toolTip);
    void addDates(QGridLayout *grid);
    void onPick();
    QDate typedBirthDate() const;

    QLineEdit *m_name = nullptr;
    QLineEdit *m_id = nullptr;
    QLineEdit *m_birthDate = nullptr;
    QLineEdit *m_accession = nullptr;
    QLineEdit *m_description = nullptr;
    QComboBox *m_modality = nullptr;
    QComboBox *m_pick = nullptr;
    QDateEdit *m_first = nullptr;
    QDateEdit *m_last = nullptr;
};
