#pragma once

#include "patientmanager_export.h"

#include <QDateTime>
#include <QList>
#include <QMainWindow>
#include <QPointer>
#include <QSharedPointer>
#include <QStringList>
#include <QThread>

#include <memory>

class DataBaseSetForm;
class DeletionNotifier;
class DirectoryViewer;
class DownloadCloudDataForm;
class ImageformatForm;
class LoginForm;
class NRunnable;
class PatientForm;
class PatientTreeForm;
class QDcmRecvFile;
class QPatient;
class SeriesForm;
class StudyForm;
class UploadProgressForm;
class dicomSend;
class selectHideForm;
class tableInfoForm;
struct UploadBatch;

namespace Ui {
class PatientManagerMainWindow;
}

/**
 * The window that a host constructs and embeds: the four record tables one above the other, the actions, the
 * imports.
 *
 * Owns the record forms, the information panel and the patient tree; joins them by signals alone, since the
 * forms do not know one another. The tree has no parent until it is shown in its dock. Opens the index at
 * construction; where that fails the window still opens, and imports stay off. GUI thread; the destructor
 * stops what still runs and waits for its two threads. It has no menus: the host finds the fifteen actions by
 * object name and places them.
 */
class PATIENTMANAGER_EXPORT PatientManagerMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit PatientManagerMainWindow(QWidget *parent = nullptr);
    ~PatientManagerMainWindow() override;

    /// Guarded, since the host may have deleted a form.
    QPointer<PatientForm> getPatientForm() const;
    QPointer<StudyForm> getStudyForm() const;
    QPointer<SeriesForm> getSeriesForm() const;
    QPointer<ImageformatForm> getImagesForm() const;
    QPointer<PatientTreeForm> getPatientTreeForm() const;
    QPointer<::tableInfoForm> getTableInfoForm() const;

    /// Object name of the dock of the patient tree.
    static constexpr char treeDockName[] = "DockPatientTree";
    /// Shows the dock of the patient tree, made at the first call; without the tree does nothing.
    void showPatientTreeForm();
    /// For hosts that call it; does nothing, and must stay so.
    void showPatientManager();
    /// When the user last asked for an upload; null until then.
    QDateTime getUploadTime() const;

    /// The latest selection that a form reported: keys of one record table, and its name (empty before the
    /// first).
    QList<qlonglong> selectedKeys() const;
    QString selectedTable() const;

    /**
     * The window keeps one patient object and fills it anew at each request: of a selection of patients the
     * one at the index, of studies their patient with just these studies, of series their patient with one
     * study that holds just these series. Otherwise it is empty, without a key.
     * @param index must lie within the selected patients
     */
    QSharedPointer<QPatient> getPatient(int index);
    /// The patient object as it was filled last; null before the first request. Hosts call these three
    /// through the table of virtual functions: their order is part of the interface.
    virtual QPatient *getPatient();
    virtual QSharedPointer<QPatient> getPatientSharePointer();
    /// Fills the patient object from the first selected key and tells it by patientChanged(), an empty one,
    /// too.
    virtual void updateSelectPatient();

    /// Offers a file, or all that lies below a folder, to each configured DICOM destination by
    /// notifySendSelectData(); walks the folder first, unless there is no destination.
    void forwordData(QString path);
    /// True while the folder picker is on screen.
    bool isLoadFiles() const;
    /// True from the start of an import, by an action or by a drop on a table, until its end has been
    /// handled.
    bool isImporting() const;
    /// Removes the files that a file query finds for each selected key, and the folders that this empties, by
    /// the setting of deletions; the records stay.
    void deleteDataFloder(QString sql);
    /// Tells how deletions end; there for as long as the window.
    DeletionNotifier *deletions() const;
    /// Whether an upload was asked for by the action, or what onUpLoadFlag() was told since.
    bool isUploadToCloudByManual() const;
    /// Whether every image that an upload was asked for is in the cloud, by the index; true where that cannot
    /// be asked.
    bool LogInUpLoadClouldFinished() const;
    /// The same; true until the action has begun an upload.
    bool isuploadCloudFinished() const;
    /// Ends the upload that was made last, if it has not ended.
    void deleteUploadTask();
    /// Marks in the index what the upload that was made last has stored, if it has not ended.
    void setUploadedCloudflag();
    /// For a host that has signed the user in. @param userType 0 without the cloud, 1 with it
    void setLoginInfo(QByteArray userName, QByteArray password, QByteArray jsessionid, int userType);
    /// Shows the window in which the user signs in, one for the process; tells loginWanted().
    void openLogin();
    /// Stops this window's imports, waiting ones too; each still ends with its report and a refresh.
    void cancelImports();

public slots:
    /// Takes the path of an import: forwards it, then imports in the configured mode or asks for one.
    void onLoadSelecetPath(QString filePath);
    void onSelectTable(QList<qlonglong> pks, QString tableName);
    /// The login window's answer, which comes once for each time that the window was opened. The window is
    /// shown maximised, or where it stands in a host's frame.
    void onLoginInfo(QByteArray userName, QByteArray password, QByteArray jsessionid, int userType);
    void onMutiSelect(QList<qlonglong> pks, QString tableName);
    /// Shows one record form and hides the other three; an unknown table name changes nothing.
    void onShowTable(QString tableName);
    /// Imports the path taken last: 0 references files in place, 1 copies them into the store.
    void onLoadDir(int type);
    /// Begins the upload of files that the index knows by now.
    void onNotifyUploadFile(
        QStringList seriesUIDs, QStringList sopInstanceUIDs, QStringList filePaths, QString patientName);
    /// Whether an upload runs, and deletions are refused: the answer to uploadFlag().
    void onUpLoadFlag(bool isUploading);
    /// Deletes what is selected without asking; returns when it is gone.
    void onDeleteSelected();

signals:
    void patientChanged(QPatient *patient);
    void basicInquiyShow();
    void deletereflash(QString tableName);
    void updateFieldHeader();
    void jessionInfo(QByteArray jsessionid);
    void loginInfo(QByteArray userName, QByteArray password, QByteArray jsessionid, int userType);
    void thumbViewReflash();
    void notifySendSelectData(QStringList files, QString aeTitle, QString ip, int port);
    void notifyInstanceSent();
    void notifyWriteDB(
        QStringList seriesUIDs, QStringList sopInstanceUIDs, QStringList filePaths, QString patientName);
    void uploadFlag();
    void runnable();
    /// The login window has been opened: a host whose frame hides it brings it to the front.
    void loginWanted();
    /// It was closed without a login; this window is back where the login had closed it.
    void loginCancelled();
    /// Image files that the user wants to look at, beginning with the first.
    void picturesWanted(const QStringList &files);
    /// A sentence for the user that asks for nothing, as a host's status line shows them.
    void told(const QString &text);

private slots:
    void on_actionLoadDir_triggered();
    void on_actionDatabase_triggered();
    void on_actionRefresh_triggered();
    void on_actionSettingField_triggered();
    void on_actionSubmit_triggered();
    void on_actionRevertall_triggered();
    void on_actionTest_triggered();
    void on_actionDelete_triggered();
    void on_actionSendDicom_triggered();
    void on_actionSaveDicom_triggered();
    void on_actionUploadCloudData_triggered();
    void on_actionDownloadCloudData_triggered();
    void on_actionPatientInfoEdit_triggered();
    void on_actionCloudBrower_triggered();
    void on_actionAnonymize_triggered();

private:
    Q_INVOKABLE void getSelectPatientPk(); // by name for tests, and for nobody else
    void buildPatient(int index);
    void createForms();
    void createTreeDock();
    void startReceiver();
    void stackForms();
    void showSendDialog();
    void connectUploads();
    void askToUpload(const QString &tableName, const QList<qlonglong> &pks);
    void upload(const UploadBatch &batch);
    void onLoginEnded();
    void goOnWithUpload();
    void showDownloads();
    bool isSignedIn() const;
    void keepLogin(QByteArray name, QByteArray secret, QByteArray sessionId, int type);
    void userTypeReflesh();
    void onLoginCancelled();
    void editPatientInfo();
    void sendFiles(const QStringList &files, const QStringList &names, const QStringList &modalities);
    void readNewPatients();
    void openPrivateConnection();
    void closePrivateConnection();
    void startLoader(const QStringList &paths, int type);
    void retireLoader(NRunnable *loader);
    void stopThreads();

    QThread recvThread;
    QPointer<PatientForm> patientForm;
    QPointer<StudyForm> studyForm;
    QPointer<SeriesForm> seriesForm;
    QPointer<ImageformatForm> imagesForm;
    QPointer<PatientTreeForm> patientTreeForm;
    QPointer<::tableInfoForm> tableInfoForm;
    QString currentTableName;
    QList<qlonglong> selectedPks;
    QList<QSharedPointer<QPatient>> patients; ///< empty, or the one that is filled at each request
    QStringList loadList;
    int dataCopyType = 0;
    QByteArray userName;
    QByteArray password;
    QByteArray jsessionid;
    int userType = -1; ///< nobody has signed in, or said that nobody will
    QPointer<LoginForm> loginForm;
    QPointer<DownloadCloudDataForm> downloadForm;
    bool isClosedForLogin = false;
    QString cloudBrowserExe = QStringLiteral("kivcloudbrowser.exe");
    QStringList cloudBrowserArgs;
    QString waitingUploadTable; ///< with its keys, the upload that waits for a login
    QList<qlonglong> waitingUploadPks;
    bool isDownloadWaiting = false; ///< for a login
    bool uploadByManual = false;
    bool uploadStarted = false;
    bool isDeleting = false;
    DeletionNotifier *deletionNotifier = nullptr;
    DataBaseSetForm *databaseSetForm = nullptr;
    QPointer<selectHideForm> fieldForm;
    QPointer<DirectoryViewer> directoryViewer;
    QPointer<dicomSend> sendDialog;
    std::unique_ptr<Ui::PatientManagerMainWindow> ui;
    QString connectionName;
    QDcmRecvFile *recvFile = nullptr;
    QThread *loadThread = nullptr;
    QList<NRunnable *> loaders; // made here, living in loadThread, not finished yet
    QDateTime uploadTime;
};
