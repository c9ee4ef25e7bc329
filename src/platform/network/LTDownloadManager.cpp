#include "platform/network/LTDownloadManager.h"

#include "platform/network/DownloadBatch.h"

LTDownloadManager::LTDownloadManager(SessionConfiguration configuration,
    std::shared_ptr<LTDownloadManagerDelegate> delegate, std::function<void()> completionHandler)
    : m_batch(std::make_shared<DownloadBatch>(
        std::move(configuration), std::move(delegate), std::move(completionHandler), NetworkThread::shared()))
{ }

LTDownloadManager::~LTDownloadManager()
{
    m_batch->invalidate(DownloadBatch::Ending::FinishResumed);
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
