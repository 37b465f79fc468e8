#pragma once

#include "patientmanager_export.h"

#include <QDialog>
#include <QMap>
#include <QPointer>
#include <QSet>
#include <QTimer>

#include <memory>

class CloudClientAsyncHandler;
class FolderFiles;
class HttpUploadFile;
class QAction;
class UpLoadTask;
class UploadFailureModel;
class UploadRows;
class UploadedStates;

namespace Ui {
class UploadProgressForm;
}

/**
 * The uploads to the cloud, a row each: how far they are, what failed and why, and what can be done about it.
 *
 * One window for the process, made hidden on first use; closing hides it, and what runs goes on. Owns the
 * handles of its uploads. As uploads go on it brings the upload states of their series and patients up to
 * date. GUI thread.
 */
class PATIENTMANAGER_EXPORT UploadProgressForm : public QDialog
{
    Q_OBJECT

public:
    static UploadProgressForm *instance();
    ~UploadProgressForm() override;

    /**
     * Begins an upload, unless one of the series is in an upload that goes on. The row of one that does not
     * is replaced, unless it tells of files that failed and are not among these.
     * @param sopInstanceUIDs, @param seriesUIDs one for each file; where there are not as many, each file is
     * asked for its own
     * @param userId who it is for; a DICOMweb service has no use for it
     */
    void setUploadFiles(const QStringList &seriesUIDs, const QStringList &sopInstanceUIDs,
        const QStringList &filePaths, const QString &patientName, const QByteArray &userId);
    /// Begins an upload of files that need not be in the index, and shows the window.
    void uploadFiles(const QStringList &paths, const QString &name);
    /// Shows the uploads that an earlier run of the program, or a window before this one, has left; they go
    /// on by themselves.
    void resumeUploads();
    /// Whether files are on their way; not where an upload waits for the user to sign in.
    bool isUploading() const;

    /// Ends the upload made last, if it has not ended.
    void deleteUploadTask();
    /// Marks in the index what the upload made last has stored, if it has not ended.
    void setUploadedCloudflag();

signals:
    /// The user wants to sign in, so that uploads go on.
    void signInWanted();
    /// Upload states in the index have been brought up to date.
    void statesRefreshed();

protected:
    void closeEvent(QCloseEvent *event) override;

private slots:
    void on_selectFloders_clicked();
    void onProgress(int failed, int succeeded, int all, UpLoadTask *task);
    void onFinshUpLoad(
        int failed, int succeeded, const QStringList &failedPaths, const QByteArray &sessionId);
    void onFinshTask(UpLoadTask *task);

private:
    explicit UploadProgressForm(QWidget *parent = nullptr);

    void build();
    void buildFolderPanel();
    void buildFailures();
    void connectButtons();
    CloudClientAsyncHandler &handler();
    UpLoadTask *newTask(const QStringList &paths);
    bool makeRoomFor(const QStringList &seriesUIDs, const QStringList &filePaths);
    void follow(UpLoadTask *task, const QString &name);
    void connectProgress(UpLoadTask *task);
    void addRow(UpLoadTask *task, const QStringList &texts, const QStringList &seriesUIDs);
    void resetView();
    void onChanged(UpLoadTask *task);
    void refreshStates(UpLoadTask *task);
    void onFolderListed(const QString &path, const QStringList &files);

    void showUploads();
    void updateSummary();
    void updateNotices();
    void comeForward();
    bool hasEnded(int row) const;
    void removeEnded(int row);
    void clearFinished();
    void updateFailures();
    void readFailures();
    void enableButtons();
    void showDetails();
    UpLoadTask *chosenTask() const;
    QList<UpLoadTask *> failedTasks() const;

    std::unique_ptr<Ui::UploadProgressForm> ui;
    UploadRows *m_rows;
    UploadFailureModel *m_failures;
    FolderFiles *m_folder;
    UploadedStates *m_states;
    HttpUploadFile *m_client = nullptr; ///< null until the first upload
    std::shared_ptr<CloudClientAsyncHandler> m_handler;
    QPointer<UpLoadTask> m_current; ///< made last
    QMap<int, UpLoadTask *> m_tasks; ///< by number: those that have not ended
    QSet<int> m_begun; ///< whose series are known to be uploading
    bool m_hasBeenAsked = false; ///< setUploadFiles() has begun an upload
    QSet<int> m_hasFailed; ///< for whom the bar was set up
    QTimer m_update; ///< one for however many changes
    bool m_needsSession = false; ///< so that it came forward
    QAction *m_removeRow = nullptr;
};
