#pragma once

#include "platform/network/DownloadCallbacks.h"
#include "platform/network/SessionConfiguration.h"
#include "platform/network/URLRequest.h"

#include <QStringList>

#include <functional>
#include <memory>

class DownloadBatch;

/// Downloads files: a batch of tasks with one end.
///
/// All completions are called and destroyed on the network thread, one at a time for the whole process, never before
/// the call that leads to them has returned. They must not wait for another thread that may call
/// cancelAllTasksAndWait().
///
/// Thread-safe. The object may be destroyed while its tasks go on; destroying it is as finishTasksAndInvalidate(), and
/// cancels the tasks that were never resumed. When the process ends before, nothing is called any more.
class LTDownloadManager
{
public:
    /// `delegate` may be null. `completionHandler` may be empty; it is called once, when the batch is finished or
    /// cancelled and the last task's completion has returned, also when there was no task.
    LTDownloadManager(SessionConfiguration configuration, std::shared_ptr<LTDownloadManagerDelegate> delegate,
        std::function<void()> completionHandler);
    ~LTDownloadManager();

    /// `remoteFileExistsAtURL:completionHandler:`. Asks the server for the head of the file and answers on the network
    /// thread whether it has one: the status has to be one of success. False also when the server cannot be reached,
    /// does not allow the question, or is silent for too long.
    static void remoteFileExistsAtURL(const QUrl &url, std::function<void(bool)> completionHandler);

    LTDownloadManager(const LTDownloadManager &) = delete;
    LTDownloadManager &operator=(const LTDownloadManager &) = delete;

    /// Adds a task, which waits to be resumed, and answers its identifier. Empty when no more tasks are accepted: then
    /// nothing is called.
    QString addDownloadTaskWithDownloadRequest(URLRequest request, DownloadCompletion completionHandler);

    /// Starts a task, at the latest when enough others have ended. Nothing for a task that was resumed before, has
    /// ended or was never there.
    void resumeDownloadTaskWithIdentifier(const QString &identifier);

    /// The tasks that have not ended, in the order of adding.
    QStringList allTasksIdentifiers() const;

    /// Accepts no more tasks. Those that are there can still be resumed, and end as usual.
    void finishTasksAndInvalidate();

    /// Accepts no more tasks and ends those that are there with the error "cancelled" (-999).
    void cancelAllTasksAndInvalidate();

    /// The same, but returns when every completion has returned and no more will be called. For owners that go away. On
    /// the network thread, that is inside of a completion, it does not wait.
    void cancelAllTasksAndWait();

private:
    std::shared_ptr<DownloadBatch> m_batch;
};
