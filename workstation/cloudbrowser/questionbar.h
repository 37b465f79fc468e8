#pragma once

#include "studysearch.h"

#include <QWidget>

class QComboBox;
class QLineEdit;
class QPushButton;

/// What studies are looked for by. GUI thread.
class QuestionBar : public QWidget
{
    Q_OBJECT

public:
    explicit QuestionBar(QWidget *parent);

    StudyQuestion question() const;
    void setSearchable(bool isSearchable);

signals:
    void asked();

private:
    QLineEdit *addLine(const QString &label, const char *name, const QString &hint);
    QString dateOf(const QLineEdit *line) const;

    QLineEdit *m_name = nullptr;
    QLineEdit *m_id = nullptr;
    QLineEdit *m_from = nullptr;
    QLineEdit *m_to = nullptr;
    QComboBox *m_modality = nullptr;
    QPushButton *m_search = nullptr;
};
