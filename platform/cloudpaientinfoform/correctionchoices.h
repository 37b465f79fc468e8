#pragma once

#include <QWidget>

class QRadioButton;

/// Whose data are corrected, and where. What cannot be chosen is not offered. GUI thread.
class CorrectionChoices : public QWidget
{
    Q_OBJECT

public:
    explicit CorrectionChoices(QWidget *parent);

    /// @param studies how many the patient has
    void offer(int studies, bool isInService);
    bool isThisStudyAlone() const;
    bool isServiceToo() const;

signals:
    void changed();

private:
    QRadioButton *m_allStudies = nullptr;
    QRadioButton *m_thisStudy = nullptr;
    QRadioButton *m_both = nullptr;
    QRadioButton *m_indexOnly = nullptr;
    bool m_isInService = false;
};
