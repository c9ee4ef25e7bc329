#include "platform/network/DownloadBatch.h"

#include "platform/network/DownloadFile.h"
#include "platform/network/TransferPool.h"
#include "platform/network/URLError.h"

#include <vector>

DownloadBatch::DownloadBatch(SessionConfiguration configuration, std::shared_ptr<LTDownloadManagerDelegate> delegate,
    std::function<void()> completionHandler, std::shared_ptr<NetworkThread> thread)
    : m_configuration(std::move(configuration))
    , m_delegate(std::move(delegate))
    , m_thread(std::move(thread))
    , m_completionHandler(std::move(completionHandler))
{ }

QString DownloadBatch::add(URLRequest request, DownloadCompletion completionHandler)
{
    const std::lock_guard lock(m_mutex);
    if (m_isInvalid)
        return {};
    m_tasks.emplace(++m_lastKey, Task{std::move(request), std::move(completionHandler)});
    return QString::number(m_lastKey);
}

void DownloadBatch::resume(const QString &identifier)
{
    const Key key = identifier.toULongLong();
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_tasks.find(key);
        if (found == m_tasks.end() || found->second.isResumed)
            return;
        found->second.isResumed = true;
    }
    m_thread->post([self = shared_from_this(), key] { self->start(key); });
}

QStringList DownloadBatch::identifiers() const
{
    const std::lock_guard lock(m_mutex);
    QStringList identifiers;
    for (const auto &[key, task] : m_tasks)
        identifiers.append(QString::number(key));
    return identifiers;
}

void DownloadBatch::invalidate(Ending ending)
{
    acceptNoMore();
    m_thread->post([self = shared_from_this(), ending] { self->end(ending); });
}

void DownloadBatch::cancelAndWait()
{
    if (m_thread->isCurrentThread()) {
        invalidate(Ending::Cancel);
        return;
    }
    acceptNoMore();
    m_thread->postAndWait([self = shared_from_this()] { self->end(Ending::Cancel); });
}

void DownloadBatch::acceptNoMore()
{
    const std::lock_guard lock(m_mutex);
    m_isInvalid = true;
}

void DownloadBatch::start(Key key)
{
    std::unique_lock lock(m_mutex);
    const auto found = m_tasks.find(key);
    if (found == m_tasks.end()) // cancelled meanwhile
        return;
    auto file = std::make_shared<DownloadFile>(
        found->second.request.url, m_configuration.temporaryFolder,
        [delegate = m_delegate, identifier = QString::number(key)](qint64 written, qint64 expected) {
            if (delegate)
                delegate->downloadTaskDidWriteData(identifier, written, expected);
        },
        [self = shared_from_this(), key](const QUrl &temporaryFile, const URLResponse &response,
            const std::optional<KRError> &error) { self->taskEnded(key, temporaryFile, response, error); });
    found->second.transfer = m_thread->transfers().start(
        std::make_unique<Transfer>(found->second.request, m_configuration, std::move(file)));
}

void DownloadBatch::end(Ending ending)
{
    std::vector<Key> cancelled;
    {
        const std::lock_guard lock(m_mutex);
        for (const auto &[key, task] : m_tasks) {
            if (ending == Ending::Cancel || (ending == Ending::FinishResumed && !task.isResumed))
                cancelled.push_back(key);
        }
    }
    for (const Key key : cancelled)
        cancel(key);
    completeIfDone();
}

void DownloadBatch::cancel(Key key)
{
    std::unique_lock lock(m_mutex);
    const auto found = m_tasks.find(key);
    if (found == m_tasks.end())
        return;
    const TransferID transfer = found->second.transfer;
    const QUrl url = found->second.request.url;
    lock.unlock();
    if (transfer != 0)
        m_thread->transfers().cancel(transfer);
    else
        taskEnded(key, {}, {}, urlError(URLErrorCode::Cancelled, url));
}

void DownloadBatch::taskEnded(
    Key key, const QUrl &file, const URLResponse &response, const std::optional<KRError> &error)
{
    std::unique_lock lock(m_mutex);
    const auto task = m_tasks.extract(key);
    lock.unlock();
    if (m_delegate)
        m_delegate->downloadTaskDidEnd(QString::number(key));
    if (task && task.mapped().completionHandler)
        task.mapped().completionHandler(file, response, error);
    m_thread->post([self = shared_from_this()] { self->completeIfDone(); }); // when the file has been removed
}

void DownloadBatch::completeIfDone()
{
    std::unique_lock lock(m_mutex);
    if (!m_isInvalid || !m_tasks.empty())
        return;
    const std::function<void()> completionHandler = std::exchange(m_completionHandler, nullptr);
    lock.unlock();
    if (completionHandler)
        completionHandler();
}
