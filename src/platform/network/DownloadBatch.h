#pragma once

#include "platform/network/DownloadCallbacks.h"
#include "platform/network/NetworkThread.h"
#include "platform/network/SessionConfiguration.h"
#include "platform/network/TransferQueue.h"
#include "platform/network/URLRequest.h"

#include <QStringList>

#include <map>
#include <memory>
#include <mutex>

/// The tasks of one LTDownloadManager, which they outlive: each of them keeps the batch until it has ended.
/// Thread-safe.
///
/// What tasks go through after they were resumed happens on the network thread only.
class DownloadBatch : public std::enable_shared_from_this<DownloadBatch>
{
public:
    DownloadBatch(SessionConfiguration configuration, std::shared_ptr<LTDownloadManagerDelegate> delegate,
        std::function<void()> completionHandler, std::shared_ptr<NetworkThread> thread);

    QString add(URLRequest request, DownloadCompletion completionHandler);
    void resume(const QString &identifier);
    QStringList identifiers() const;

    enum class Ending {
        FinishAll,
        /// Tasks that were never resumed are cancelled.
        FinishResumed,
        Cancel
    };
    void invalidate(Ending ending);
    void cancelAndWait();

private:
    using Key = quint64;
    struct Task
    {
        URLRequest request;
        DownloadCompletion completionHandler;
        bool isResumed = false;
        /// Network thread only; 0 until the transfer has started.
        TransferID transfer = 0;
    };

    void acceptNoMore();
    void start(Key key);
    void end(Ending ending);
    void cancel(Key key);
    void taskEnded(Key key, const QUrl &file, const URLResponse &response, const std::optional<KRError> &error);
    void completeIfDone();

    const SessionConfiguration m_configuration;
    const std::shared_ptr<LTDownloadManagerDelegate> m_delegate;
    const std::shared_ptr<NetworkThread> m_thread;
    mutable std::mutex m_mutex;
    /// In the order of adding.
    std::map<Key, Task> m_tasks;
    Key m_lastKey = 0;
    bool m_isInvalid = false;
    std::function<void()> m_completionHandler;
};
