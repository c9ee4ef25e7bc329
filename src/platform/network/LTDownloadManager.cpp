#include "platform/network/LTDownloadManager.h"

#include "platform/network/DownloadBatch.h"
#include "platform/network/URLSession.h"

namespace {

/// The question goes ahead of something else, which it must not hold up for long.
constexpr std::chrono::milliseconds existenceTimeout(2000);

bool isSuccess(int status)
{
    return status >= 200 && status < 300;
}

} // namespace

LTDownloadManager::LTDownloadManager(SessionConfiguration configuration,
    std::shared_ptr<LTDownloadManagerDelegate> delegate, std::function<void()> completionHandler)
    : m_batch(std::make_shared<DownloadBatch>(
        std::move(configuration), std::move(delegate), std::move(completionHandler), NetworkThread::shared()))
{ }

LTDownloadManager::~LTDownloadManager()
{
    m_batch->invalidate(DownloadBatch::Ending::FinishResumed);
}

void LTDownloadManager::remoteFileExistsAtURL(const QUrl &url, std::function<void(bool)> completionHandler)
{
    const URLRequest request{url, existenceTimeout, URLRequest::Method::Head};
    const auto task = URLSession::sharedSession().dataTaskWithRequest(request,
        [completion = std::move(completionHandler)](const QByteArray &, const URLResponse &response,
            const std::optional<KRError> &error) { completion(!error && isSuccess(response.statusCode)); });
    task->resume();
}

QString LTDownloadManager::addDownloadTaskWithDownloadRequest(URLRequest request, DownloadCompletion completionHandler)
{
    return m_batch->add(std::move(request), std::move(completionHandler));
}

void LTDownloadManager::resumeDownloadTaskWithIdentifier(const QString &identifier)
{
    m_batch->resume(identifier);
}

QStringList LTDownloadManager::allTasksIdentifiers() const
{
    return m_batch->identifiers();
}

void LTDownloadManager::finishTasksAndInvalidate()
{
    m_batch->invalidate(DownloadBatch::Ending::FinishAll);
}

void LTDownloadManager::cancelAllTasksAndInvalidate()
{
    m_batch->invalidate(DownloadBatch::Ending::Cancel);
}

void LTDownloadManager::cancelAllTasksAndWait()
{
    m_batch->cancelAndWait();
}
