#pragma once

#include "dependentform.h"

#include <memory>

namespace Ui {
class SeriesForm;
}

/// The series of the study picked above, or those of a list of keys, by series number. A double click makes
/// them a multiple selection. GUI thread.
class PATIENTMANAGER_EXPORT SeriesForm : public DependentForm
{
    Q_OBJECT

public:
    explicit SeriesForm(QWidget *parent = nullptr);
    ~SeriesForm() override;

    QList<qlonglong> getSelectList() const;

public slots:
    void selectIdx(qlonglong pk);
    void onSelectStudy(qlonglong study_fk);
    void onSeries(const QList<qlonglong> &pks);
    /// Nothing of its own: the double click goes to selectList().
    void on_tableView_doubleClicked(const QModelIndex &index);

signals:
    /// The argument is the series' key.
    void selectSeries(qlonglong study_pk);

protected:
    void reportRow(int row) override;

private:
    std::unique_ptr<Ui::SeriesForm> ui;
};
