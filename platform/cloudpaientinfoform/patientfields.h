#pragma once

#include "patientvalues.h"

#include <QHash>
#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QGridLayout;
class QPlainTextEdit;

/// What the index has, what the service has, and what it is to be: three columns of the same values. GUI
/// thread.
class PatientFields : public QWidget
{
    Q_OBJECT

public:
    explicit PatientFields(QWidget *parent);

    void setIndex(const PatientValues &values);
    /// @param isThere false where the service has no such study, or cannot say
    void setService(const PatientValues &values, bool isThere);
    /// Begins what is to be.
    void setWanted(const PatientValues &values);
    PatientValues wanted() const;
    /// What is wrong with it, as a sentence; empty where nothing is.
    QString fault() const;
    void setEditable(bool isEditable);

signals:
    void edited();

private:
    void build();
    void addRow(QGridLayout *grid, PatientField field, QWidget *editor);
    void markDifferences();
    bool isKept(PatientField field, const PatientValues &values) const;

    QHash<PatientField, QLabel *> m_index;
    QHash<PatientField, QLabel *> m_service;
    PatientValues m_indexValues;
    PatientValues m_serviceValues;
    bool m_isInService = false;
    QLineEdit *m_name = nullptr;
    QLabel *m_nameShown = nullptr;
    QLineEdit *m_id = nullptr;
    QLineEdit *m_birthDate = nullptr;
    QComboBox *m_sex = nullptr;
    QPlainTextEdit *m_comments = nullptr;
};
