#pragma once

#include <QByteArray>
#include <QSocketNotifier>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

/// The lines of a file descriptor, one at a time and without waiting: a terminal's, a pipe's or a file's. Main thread
/// only.
class InputLines
{
public:
    using Callback = std::function<void(std::optional<QString> line)>;

    /// The descriptor stays open, and nothing is read from it before somebody asks.
    explicit InputLines(int descriptor);
    ~InputLines();

    /// Calls back with the next line, without its end, from the event loop; nil at the input's end. One at a time.
    void next(Callback callback);
    bool isWaiting() const { return m_callback != nullptr; }

private:
    void read();
    /// Calls back when there is a whole line, or the input has ended.
    void deliver();

    int m_descriptor;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QByteArray m_bytes;
    bool m_hasEnded = false;
    Callback m_callback;
    /// Tells what waits in the event loop whether this object still exists.
    std::shared_ptr<char> m_life;
};
