#pragma once

#include "recordform.h"

#include <memory>

class HttpUploadFile;
class QContextMenuEvent;
class QThread;
class RefreshPatientDataThead;

namespace Ui {
class PatientForm;
}

/// The patients of the index: today's at first, then whatever a search, a tree or a list of keys asks for.
/// Decides what the forms below it show. A click on a patient also has its upload state brought up to date,
/// by one of five workers whose threads end with the form or the application. GUI thread.
class PATIENTMANAGER_EXPORT PatientForm : public RecordForm
{
    Q_OBJECT

public:
    explicit PatientForm(QWidget *parent = nullptr);
    ~PatientForm() override;

    QList<qlonglong> getSelectList() const;
    void setLoginUserType(int type);
    /// Uploads the images of the first selected patient. @param userid who it is for, handed on
    void uploadFile(const QString &userid);
    /// Brings the states of all series that are not uploaded up to date, here and now; shows nothing of it.
    void refreshDateBaseState();

    /// How many of the workers are under way.
    int refreshCount() const;

    static constexpr int workerCount = 5;

public slots:
    void selectIndex(const QModelIndex &index) override;
    /// Selects a patient that stands near the top of the table; clears the selection otherwise.
    void selectIdx(qlonglong pk);
    /// Shows the patients of an SQL condition, all for an empty one, and empties the study form.
    void onSearchPatient(const QString &filter);
    /// Shows the patients of an SQL condition, all for an empty one, as a search at each keystroke does: as
    /// long as the chosen patient is among them the selection and the tables below stay as they are, else
    /// they are emptied and an empty selection is reported.
    void showFound(const QString &filter);
    void onPatient(const QList<qlonglong> &pks);
    /// Shows all patients; those that were selected stay so.
    void onShowPatient();
    void getPreSelectedRows();
    void showPreSelectedRows();
    /// Opens the default connection again where it was lost, then drops all edits.
    void on_revertall_clicked() override;
    /// Reads again with the same filter; where that fails, a new model without one takes over.
    void on_reflash_clicked();
    void on_reflash_enable(bool bRet);
    /// For hosts that connect it; records are deleted by the main window.
    void on_Delete_clicked();
    void onExpertList();

signals:
    void selectPatient(qlonglong patient_pk);
    void deleteSelected();
    /// Hands a patient to one worker.
    void refrshData(qlonglong pk);
    /// The upload states have been brought up to date, and are shown here.
    void uploadStatesRefreshed();

protected:
    bool event(QEvent *event) override;
    void reportRow(int row) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void showNames();
    void createWorkers();
    void stopRefreshes();
    void startRefresh(qlonglong pk);
    void endWorkers();

    std::unique_ptr<Ui::PatientForm> ui;
    HttpUploadFile *m_cloud;
    int m_loginUserType = 0;
    QString m_filter;
    qlonglong m_reported = 0; ///< the patient whose studies the form below was told to show
    QSet<qlonglong> m_preSelected;
    QList<QThread *> m_threads; ///< one for each worker, from the first click on
    QList<RefreshPatientDataThead *> m_workers;
    bool m_threadsCreated = false;
};
