#include "uploadlines.h"

#include "promptsockets.h"
#include "webclient.h"

#include <algorithm>

namespace {

constexpr int clients = 2; ///< of six connections each
constexpr int hurryMs = 10;
constexpr int plainPort = 80;
constexpr int securePort = 443;

quint16 portOf(const WebService &service)
{
    const bool isSecure = service.address.scheme() == QLatin1String("https");
    const bool hasProxy = !service.proxy.hostName().isEmpty();
    return hasProxy ? service.proxy.port()
                    : static_cast<quint16>(service.address.port(isSecure ? securePort : plainPort));
}

} // namespace

UploadLines::UploadLines(QObject *parent)
    : QObject(parent)
    , m_hurryAgain(this)
{
    m_hurryAgain.setSingleShot(true);
    m_hurryAgain.setInterval(hurryMs);
    connect(&m_hurryAgain, &QTimer::timeout, this, [this] { PromptSockets::toPort(m_port); });
}

UploadLines::~UploadLines()
{
    for (auto line = m_lines.cbegin(); line != m_lines.cend(); ++line) {
        line.key()->disconnect(this);
        delete line.key();
    }
}

void UploadLines::setService(const WebService &service, int patienceMs)
{
    m_port = portOf(service);
    m_clients.clear();
    for (int client = 0; client < clients; ++client) {
        m_clients.push_back(std::make_shared<WebClient>(service));
        m_clients.back()->setPatience(patienceMs);
    }
}

std::shared_ptr<WebClient> UploadLines::idlest() const
{
    return *std::min_element(m_clients.cbegin(), m_clients.cend(),
        [](const auto &one, const auto &other) { return one.use_count() < other.use_count(); });
}

void UploadLines::send(const UploadBatch &batch)
{
    QVector<StoredFile> files;
    for (const QueuedFile &queued : batch.files) {
        files.append({queued.file.path, queued.file.sopInstance});
    }
    const std::shared_ptr<WebClient> client = idlest();
    auto *request = new StoreRequest(*client, files, this);
    m_lines.insert(request, {batch, client});
    connect(request, &StoreRequest::sent, this, &UploadLines::hurry);
    connect(request, &StoreRequest::finished, this, [this, request](const StoreAnswer &answer) {
        const Line line = m_lines.take(request);
        request->deleteLater();
        // The client must outlive its request.
        connect(request, &QObject::destroyed, this, [client = line.client] {});
        emit came(line.batch, answer);
    });
}

/// For connections that are new: some come up together, so there is a second look a little later.
void UploadLines::hurry()
{
    if (!m_hurryAgain.isActive()) {
        PromptSockets::toPort(m_port);
        m_hurryAgain.start();
    }
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
