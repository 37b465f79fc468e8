#pragma once

#include "commonplugin_export.h"
#include "studysearch.h"

#include <QWidget>

class QComboBox;
class QDateEdit;
class QGridLayout;
class QLineEdit;

/// The fields of a search in the cloud. Enter in any of them asks. GUI thread.
class COMMONPLUGIN_EXPORT CloudQuestionForm : public QWidget
{
    Q_OBJECT

public:
    explicit CloudQuestionForm(QWidget *parent);

    StudyQuestion question() const;

signals:
    void asked();

private:
    QLineEdit *addText(QGridLayout *grid, int place, const char *name, const QString &label,
        const QString &accessibleName, const QString &toolTip);
    void addModality(QGridLayout *grid, int place);
    void addDates(QGridLayout *grid, int place);
    void onPick();

    QLineEdit *m_name = nullptr;
    QLineEdit *m_id = nullptr;
    QComboBox *m_modality = nullptr;
    QComboBox *m_pick = nullptr; ///< its data are the days before today, or one of those below
    QDateEdit *m_first = nullptr;
    QDateEdit *m_last = nullptr;
};
