#pragma once

#include "patientmanager_export.h"

#include <QWidget>

#include <memory>

namespace Ui {
class tableInfoForm;
}

/// A read-only panel with a text about the current table or inquiry. Knows nothing but the text that it is
/// given, which may be HTML. GUI thread.
class PATIENTMANAGER_EXPORT tableInfoForm : public QWidget
{
    Q_OBJECT

public:
    explicit tableInfoForm(QWidget *parent = nullptr);
    ~tableInfoForm() override;

public slots:
    /// Replaces the text that was there.
    void onTableInfo(const QString &text);

private:
    std::unique_ptr<Ui::tableInfoForm> ui;
};
