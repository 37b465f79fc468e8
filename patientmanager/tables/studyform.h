#pragma once

#include "dependentform.h"

#include <memory>

namespace Ui {
class StudyForm;
}

/// The studies of the patient picked above, or those of a list of keys. A new patient picks its first study.
/// GUI thread.
class PATIENTMANAGER_EXPORT StudyForm : public DependentForm
{
    Q_OBJECT

public:
    explicit StudyForm(QWidget *parent = nullptr);
    ~StudyForm() override;

    QList<qlonglong> getSelectList() const;

public slots:
    void selectIdx(qlonglong pk);
    void onSelectPatient(qlonglong patient_fk);
    void onStudy(const QList<qlonglong> &pks);
    /// Lets the form grow, or holds it at one row's height.
    void onFixHeight(bool fix);

signals:
    void selectStudy(qlonglong study_pk);

protected:
    void reportRow(int row) override;

private:
    std::unique_ptr<Ui::StudyForm> ui;
};
