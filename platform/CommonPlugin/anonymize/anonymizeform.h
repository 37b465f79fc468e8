#pragma once

#include "commonplugin_export.h"

#include <QStringList>
#include <QWidget>

#include <memory>

/**
 * Makes copies of patients or studies that do not say whose they are: into a folder, into the index as new
 * records, or for whoever connects to be sent or uploaded. The originals are never changed.
 *
 * Works on the index that is open as the default connection. The work is on threads. Closing asks while there
 * is some, stops it, and closes once it has ended; the destructor waits for it. Both remove what is half
 * done, except what the index has taken by then. GUI thread.
 */
class COMMONPLUGIN_EXPORT AnonymizeForm : public QWidget
{
    Q_OBJECT

public:
    explicit AnonymizeForm(QWidget *parent = nullptr);
    ~AnonymizeForm() override;

    /// Ticks records in place of those that are ticked, and shows them.
    /// @param tableName patient, generalstudy, generalseries or imageformat; of the last two the study is
    /// ticked
    void choose(const QString &tableName, const QList<qlonglong> &keys);
    QSize sizeHint() const override;

    /// Whether copies are being made in any of these windows, or wait for an answer.
    static bool isAnyRunning();
    /// Ends that soon.
    static void stopAll();

signals:
    /// Anonymised files that shall be sent. Names and modalities stand beside them, one each, as the send
    /// dialog takes them. The files stay for a month, or as long as somebody reads them again.
    void sendRequested(const QStringList &files, const QStringList &names, const QStringList &modalities);
    /// Anonymised files that shall be uploaded, and what they are called together.
    void uploadRequested(const QStringList &files, const QString &name);
    /// Originals whose pictures may show names are to be looked at, beginning with the first.
    void picturesWanted(const QStringList &paths);
    /// The index has new records.
    void imported();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
