#pragma once

#include "patientmanager_export.h"

#include <QMetaObject>
#include <QPointer>
#include <QSharedPointer>
#include <QString>
#include <QWidget>

#include <memory>

class QAction;
class QDockWidget;
class QPatient;

namespace Ui {
class PatientQueryForm;
}

/**
 * The panel beside the tables: a simple query for patients, room for thumbnails, and buttons that start
 * applications; each section can be collapsed to its header.
 *
 * Shows and starts nothing itself: it tells by signals what is wanted, and the host does it. The host also
 * fills the widget "QueryWidget" and connects the check boxes of the two dates, if they are to be edited.
 * GUI thread.
 */
class PATIENTMANAGER_EXPORT PatientQueryForm : public QWidget
{
    Q_OBJECT

public:
    explicit PatientQueryForm(QWidget *parent = nullptr);
    ~PatientQueryForm() override;

signals:
    /// Conditions on the patient table, joined by "&&" without blanks, with the values exactly as typed and
    /// not escaped. Always ends with both bounds of the update time, which stand as the date edits show them.
    void searchPatient(QString filter);
    void setComboBoxIdx(int index);
    void loadDir(bool iDir);
    /// As advanceInquiry(), one of the two is enough to follow.
    void IsChecked(bool checked);
    void compareStart();
    void jointStart();
    void vesselStart();
    void swiStart();
    /// True: stored inquiries take over the display; false: back to the simple query.
    void advanceInquiry(bool bRet);
    void brainSegment(bool checked);

public slots:
    /// Makes the action's shortcut work while the panel has the focus.
    void onAction(QAction *action);
    /// These three are for hosts that connect them, and do nothing.
    void onPatient(QSharedPointer<QPatient> patient);
    void onInstancePK(qint64 pk);
    void onDeleteThumbView();
    /// The dock that a double click on the title makes float and takes back; may be null. From then on it
    /// loses its title bar whenever it is docked.
    void setDockWidget(QDockWidget *dockWidget);

protected:
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private slots:
    void on_search_clicked();
    void on_AdvanceInquiry_clicked(bool checked);
    void on_LoadDir_clicked();
    void on_btQueryMinimize_clicked();
    void on_btThumbnailMinimize_clicked();
    void on_btApplicationMinimize_clicked();
    void on_dockButton_clicked();
    void on_pushButton_joint_clicked(bool checked);
    void on_pushButton_regist_clicked();
    void on_pushButton_swi_clicked(bool checked);
    void on_pushButton_vessel_clicked(bool checked);
    void on_pushButton_infarction_clicked(bool checked);
    void on_pushButton_swim_clicked();
    void on_pushButton_ich_clicked(bool checked);
    void on_pushButton_clicked();
    void enablePatient(bool enabled);
    void enablePatientID(bool enabled);
    void enableIDCardNum(bool enabled);
    void enableInPatientNo(bool enabled);
    void enableOutPatientNo(bool enabled);
    void getComboBox(const QString &name);
    void getComboBoxIdx(int index);

private:
    QString filterText() const;
    void onTopLevelChanged(bool isFloating);

    std::unique_ptr<Ui::PatientQueryForm> ui;
    QPointer<QDockWidget> dock;
    QMetaObject::Connection dockConnection;
};
