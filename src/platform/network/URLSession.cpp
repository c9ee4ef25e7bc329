#include "platform/network/URLSession.h"

#include "platform/network/NetworkThread.h"
#include "platform/network/Transfer.h"
#include "platform/network/TransferPool.h"
#include "platform/network/TransferReceiver.h"

namespace {

/// Gathers a transfer's body. Network thread only.
class DataReceiver final : public TransferReceiver
{
public:
    explicit DataReceiver(DataCompletion completion)
        : m_completion(std::move(completion))
    { }

    std::optional<KRError> receive(QByteArrayView bytes, qint64) override
    {
        m_data.append(bytes);
        return {};
    }

    void finish(const URLResponse &response, const std::optional<KRError> &error) override
    {
        m_completion(error ? QByteArray() : m_data, response, error);
    }

private:
    QByteArray m_data = QByteArrayLiteral("");
    DataCompletion m_completion;
};

} // namespace

URLSessionDataTask::URLSessionDataTask(std::shared_ptr<NetworkThread> thread, SessionConfiguration configuration,
    URLRequest request, DataCompletion completionHandler)
    : m_thread(std::move(thread))
    , m_configuration(std::move(configuration))
    , m_request(std::move(request))
    , m_completionHandler(std::move(completionHandler))
    , m_transfer(std::make_shared<std::optional<TransferID>>())
{ }

void URLSessionDataTask::resume()
{
    DataCompletion completion;
    {
        const std::lock_guard lock(m_mutex);
        completion = std::exchange(m_completionHandler, nullptr);
    }
    if (!completion)
        return;
    m_thread->post([thread = m_thread.get(), configuration = m_configuration, request = m_request,
                       transfer = m_transfer, receiver = std::make_shared<DataReceiver>(std::move(completion))] {
        *transfer = thread->transfers().start(std::make_unique<Transfer>(request, configuration, receiver));
    });
}

void URLSessionDataTask::cancel()
{
    m_thread->post([thread = m_thread.get(), transfer = m_transfer] {
        if (*transfer)
            thread->transfers().cancel(**transfer);
    });
}

URLSession URLSession::sharedSession()
{
    auto configuration = SessionConfiguration::defaultSessionConfiguration();
    configuration.maximumSize = largestSharedAnswer;
    configuration.longestTransfer = longestSharedTransfer;
    return URLSession(configuration);
}

URLSession::URLSession(SessionConfiguration configuration)
    : m_configuration(std::move(configuration))
{ }

std::shared_ptr<URLSessionDataTask> URLSession::dataTaskWithRequest(
    URLRequest request, DataCompletion completionHandler) const
{
    return std::make_shared<URLSessionDataTask>(
        NetworkThread::shared(), m_configuration, std::move(request), std::move(completionHandler));
}
