#pragma once

#include "webfailure.h"

#include <QObject>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

class ObjectsRetrieve;
class PreviewWindow;
class WebClient;

/**
 * Brings the objects of a series into a temporary folder and shows them in a preview of its own; the folder
 * goes with the preview, or with what did not get that far. Owned by its parent; GUI thread.
 */
class SeriesPreview : public QObject
{
    Q_OBJECT

public:
    SeriesPreview(WebClient &client, const QString &series, QObject *parent);
    ~SeriesPreview() override;

    void abort();
    /// Whether it still needs the client.
    bool isFetching() const { return m_retrieve != nullptr; }
    PreviewWindow *preview() const { return m_preview; }

signals:
    void progress(int images, qint64 bytes);
    /// All is there, and shown where there was anything.
    void finished(const WebFailure &failure);

private:
    void show();

    QTemporaryDir m_folder;
    ObjectsRetrieve *m_retrieve = nullptr; ///< null once all is there
    QStringList m_files;
    PreviewWindow *m_preview = nullptr; ///< deletes this when it is closed
    qint64 m_bytes = 0;
};
