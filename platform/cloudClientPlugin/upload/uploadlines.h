#pragma once

#include "storerequest.h"
#include "uploadbatch.h"
#include "webservice.h"

#include <QHash>
#include <QObject>

#include <memory>

class WebClient;

/// The requests of uploads that are on their way. Lives on one thread with an event loop.
class UploadLines : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~UploadLines() override;

    /// For the requests from now on. @param patienceMs as WebClient has it
    void setService(const WebService &service, int patienceMs);

    int count() const { return m_lines.size(); }
    void send(const UploadBatch &batch);
    /// Cuts off the requests of a task; they come back before this returns.
    void abort(qint64 task);

signals:
    void came(const UploadBatch &batch, const StoreAnswer &answer);

private:
    struct Line
    {
        UploadBatch batch;
        std::shared_ptr<WebClient> client;
    };

    std::shared_ptr<WebClient> m_client;
    QHash<StoreRequest *, Line> m_lines;
};
