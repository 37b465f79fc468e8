#include "seriespreview.h"

#include "objectsretrieve.h"
#include "previewwindow.h"

SeriesPreview::SeriesPreview(WebClient &client, const QString &series, QObject *parent)
    : QObject(parent)
    , m_retrieve(new ObjectsRetrieve(client, series, m_folder.path(), this))
{
    connect(m_retrieve, &ObjectsRetrieve::received, this, [this](const QString &path) {
        m_files.append(path);
        emit progress(m_files.size(), m_bytes);
    });
    connect(m_retrieve, &ObjectsRetrieve::progress, this, [this](qint64 bytes) {
        m_bytes = bytes;
        emit progress(m_files.size(), m_bytes);
    });
    connect(m_retrieve, &ObjectsRetrieve::finished, this, [this](const WebFailure &failure) {
        m_retrieve->deleteLater();
        m_retrieve = nullptr;
        if (!m_files.isEmpty() && failure.problem != WebProblem::Stopped) {
            show();
        } else {
            deleteLater();
        }
        emit finished(failure);
    });
}

SeriesPreview::~SeriesPreview()
{
    delete m_preview; // before its files
}

void SeriesPreview::abort()
{
    if (m_retrieve) {
        m_retrieve->abort();
    }
}

void SeriesPreview::show()
{
    m_preview = new PreviewWindow;
    connect(m_preview, &PreviewWindow::closed, this, &QObject::deleteLater);
    m_preview->showFiles(m_files);
    m_preview->show();
}
