#pragma once

#include "patientmanager_export.h"

#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>

class AdvancedInquiryForm;
class PatientTreeView;
class QDockWidget;
class QModelIndex;
class QPatient;
class QPatients;
class QPatientTreeItem;
class QPatientTreeModel;
class QSeries;
class QStudy;
class selectHideForm;

namespace Ui {
class PatientTreeForm;
}

enum class RecordLevel : quint8;

/**
 * The panel that runs stored inquiries and shows the result as a tree of patients, studies and series.
 *
 * Tells by signals alone what is chosen in it; it knows no table form. A second argument of a selection names
 * the table of the keys, empty for none in particular. Opens the editor of inquiries and the field dialog,
 * which delete themselves when closed and end with the panel. Works on Qt's default connection. GUI thread.
 */
class PATIENTMANAGER_EXPORT PatientTreeForm : public QWidget
{
    Q_OBJECT

public:
    explicit PatientTreeForm(QWidget *parent = nullptr);
    ~PatientTreeForm() override;

    /// The dock that a double click on the title makes float and takes back; may be null.
    void setDockWidget(QDockWidget *dock);
    /// Why the tree shows nothing, for people; empty where the inquiry could be run.
    QString problemText() const;
    /// Asked before anything here fills the tables; where it answers no, nothing is run, opened or told. None
    /// at first.
    void setGuard(const std::function<bool()> &mayFillTables);
    /// Closes the editor and the field dialog. @return false where the editor stays, for its unsaved changes
    bool closeCompanions();
    /// Runs the chosen inquiry again and keeps what is open, selected and in sight. Tells nobody of a
    /// selection.
    void reload();

    void mouseDoubleClickEvent(QMouseEvent *event) override;

public slots:
    /// A click: tells of what hangs below the record.
    void onTreeModel(const QModelIndex &index);
    /// A double click: tells of all selected records; the table is that of the last one.
    void onMutiTreeModel();
    /// Runs the chosen inquiry.
    void on_AdvancedInquiry_clicked();
    void on_AdvancedInquiryNew_clicked();
    void on_AdvancedInquiryPatient_clicked();
    void on_AdvancedInquiryStudy_clicked();
    void on_AdvancedInquirySeries_clicked();
    void on_AdvancedInquirySettingField_clicked();
    /// An inquiry of this name is new.
    void getComboBox(const QString &name);
    /// Makes an inquiry the chosen one, blind to case where none has just this name; runs nothing.
    void getComboBoxIdx(const QString &name);
    /// The inquiry of this name is gone: runs the one that is chosen then.
    void getDeleteIdx(const QString &name);

signals:
    void selectPatientPks(QList<qlonglong> pks, QString tableName = QString());
    void selectStudyPks(QList<qlonglong> pks, QString tableName = QString());
    void selectSeriesPks(QList<qlonglong> pks, QString tableName = QString());
    void selectSeriesPk(QList<qlonglong> pks, QString tableName);
    void selectMutiPK(QList<qlonglong> pks, QString tableName);
    /// An SQL condition on the table of the images.
    void selectInstancesFilter(QString where);
    /// The record table to bring forward.
    void selectTable(QString tableName);
    void tableInfo(QString text);
    void searchPatient(QString filter);
    void updateFieldHeader();
    void deleteThumbView();
    void setComboBoxIdx(int index);
    /// problemText() after each inquiry.
    void inquiryProblem(QString text);

private:
    /// Reads the names again: new ones come to the end of the list, and what is chosen stays.
    void listInquiries();
    void setUpView();
    void run(const QString &inquiry);
    void showResult(std::unique_ptr<QPatients> patients);
    void showProblem();
    QString currentInquiry() const;
    void tellAllPatients();
    void tellTable(RecordLevel level, const QString &text);
    void clickPatient(const QPatient &patient);
    void clickStudy(const QStudy &study);
    void clickSeries(const QSeries &series);

    std::unique_ptr<Ui::PatientTreeForm> ui;
    QStringList storedInquiries; ///< as they were read last
    QString shownInquiry; ///< the one that was run last
    std::function<bool()> mayFillTables = [] { return true; };
    QPointer<QDockWidget> dockWidget;
    PatientTreeView *treeView = nullptr;
    QPatientTreeModel *patientTreeModel = nullptr;
    QList<QPatient *> allPatients;
    QList<QStudy *> allStudies;
    QList<QSeries *> allSeries;
    QPatients *patients = nullptr; ///< a child of the model that shows it
    QPointer<selectHideForm> fieldForm;
    QPointer<AdvancedInquiryForm> inquiryForm;
};
