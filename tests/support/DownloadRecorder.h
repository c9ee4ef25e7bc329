#pragma once

#include "platform/network/LTDownloadManager.h"

#include <QByteArray>
#include <QMap>
#include <QStringList>

#include <condition_variable>
#include <mutex>

/// How one download ended, as its completion saw it.
struct DownloadOutcome
{
    QUrl file;
    /// Of the file, read during the completion; null when there was none.
    QByteArray content;
    URLResponse response;
    std::optional<KRError> error;
    /// Whether the completion was called on the thread of the test.
    bool onTestThread = true;

    int errorCode() const { return error ? error->code : 0; }
    QString errorText() const { return error ? error->localizedDescription : QString(); }
};

/// Remembers what completions were told, in order. Thread-safe; has to outlive its batches. Waits fail the program
/// after a minute.
class DownloadRecorder
{
public:
    /// A task's completion, remembered under the name.
    DownloadCompletion task(const QString &name);
    /// A batch's completion, remembered as the event "end".
    std::function<void()> batch();

    /// Until the batch has ended.
    void waitForEnd();
    void waitForEvents(int count);

    /// "name", "name -999", "end", ...
    QStringList events() const;
    DownloadOutcome outcome(const QString &name) const;

private:
    void record(const QString &event);
    template <class Condition>
    void waitUntil(Condition condition);

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    QStringList m_events;
    QMap<QString, DownloadOutcome> m_outcomes;
};

/// Adds, resumes, finishes, and waits for the end.
DownloadOutcome download(const QUrl &url, const SessionConfiguration &configuration = {});
