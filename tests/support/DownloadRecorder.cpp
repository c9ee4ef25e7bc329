#include "support/DownloadRecorder.h"

#include <QFile>
#include <QThread>

using namespace Qt::StringLiterals;

namespace {

QByteArray contentOf(const QUrl &file)
{
    QFile opened(file.toLocalFile());
    return !file.isEmpty() && opened.open(QIODevice::ReadOnly) ? QByteArray("") + opened.readAll() : QByteArray();
}

} // namespace

DownloadCompletion DownloadRecorder::task(const QString &name)
{
    return [this, name, testThread = QThread::currentThreadId()](
               const QUrl &file, const URLResponse &response, const std::optional<KRError> &error) {
        const DownloadOutcome outcome{file, contentOf(file), response, error, QThread::currentThreadId() == testThread};
        {
            const std::lock_guard lock(m_mutex);
            m_outcomes.insert(name, outcome);
        }
        record(error ? u"%1 %2"_s.arg(name).arg(error->code) : name);
    };
}

std::function<void()> DownloadRecorder::batch()
{
    return [this] { record(u"end"_s); };
}

void DownloadRecorder::waitForEnd()
{
    waitUntil([this] { return m_events.contains(u"end"_s); });
}

void DownloadRecorder::waitForEvents(int count)
{
    waitUntil([this, count] { return m_events.size() >= count; });
}

QStringList DownloadRecorder::events() const
{
    const std::lock_guard lock(m_mutex);
    return m_events;
}

DownloadOutcome DownloadRecorder::outcome(const QString &name) const
{
    const std::lock_guard lock(m_mutex);
    return m_outcomes.value(name);
}

void DownloadRecorder::record(const QString &event)
{
    const std::lock_guard lock(m_mutex);
    m_events.append(event);
    m_changed.notify_all();
}

template <class Condition>
void DownloadRecorder::waitUntil(Condition condition)
{
    std::unique_lock lock(m_mutex);
    if (!m_changed.wait_for(lock, std::chrono::minutes(1), condition))
        qFatal("Waited in vain after: %s", qPrintable(m_events.join(u", "_s)));
}

DownloadOutcome download(const QUrl &url, const SessionConfiguration &configuration)
{
    DownloadRecorder recorder;
    LTDownloadManager manager(configuration, nullptr, recorder.batch());
    manager.resumeDownloadTaskWithIdentifier(
        manager.addDownloadTaskWithDownloadRequest({url, {}}, recorder.task(u"file"_s)));
    manager.finishTasksAndInvalidate();
    recorder.waitForEnd();
    return recorder.outcome(u"file"_s);
}
