#include "uploadlines.h"

#include "webclient.h"

UploadLines::~UploadLines()
{
    for (auto line = m_lines.cbegin(); line != m_lines.cend(); ++line) {
        line.key()->disconnect(this);
        delete line.key();
    }
}

void UploadLines::setService(const WebService &service, int patienceMs)
{
    m_client = std::make_shared<WebClient>(service);
    m_client->setPatience(patienceMs);
}

void UploadLines::send(const UploadBatch &batch)
{
    QVector<StoredFile> files;
    for (const QueuedFile &queued : batch.files) {
        files.append({queued.file.path, queued.file.sopInstance});
    }
    auto *request = new StoreRequest(*m_client, files, this);
    m_lines.insert(request, {batch, m_client});
    connect(request, &StoreRequest::finished, this, [this, request](const StoreAnswer &answer) {
        const Line line = m_lines.take(request);
        request->deleteLater();
        // The client must outlive its request.
        connect(request, &QObject::destroyed, this, [client = line.client] {});
        emit came(line.batch, answer);
    });
}

void UploadLines::abort(qint64 task)
{
    const QList<StoreRequest *> requests = m_lines.keys();
    for (StoreRequest *request : requests) {
        if (m_lines.contains(request) && m_lines[request].batch.task == task) {
            request->abort();
        }
    }
}
