#pragma once

#include "dependentform.h"

#include <memory>

namespace Ui {
class ImageformatForm;
}

/// The instances of the series picked above, or those of a condition. At first as high as one row. GUI
/// thread.
class PATIENTMANAGER_EXPORT ImageformatForm : public DependentForm
{
    Q_OBJECT

public:
    explicit ImageformatForm(QWidget *parent = nullptr);
    ~ImageformatForm() override;

public slots:
    void onSelectSeries(qlonglong series_fk);
    /// Shows the instances of an SQL condition.
    void onInstances(const QString &strFileter);
    /// Lets the form grow, or holds it at one row's height.
    void onFixHeight(bool fix);

signals:
    void selectInstance(qint64 pk, long instanceNum, const QString &filePath);

protected:
    void reportRow(int row) override;

private:
    std::unique_ptr<Ui::ImageformatForm> ui;
};
