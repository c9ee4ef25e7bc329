#pragma once

#include <QString>

#include <chrono>
#include <mutex>

/// One line on the terminal that tells how something long gets on, and is gone at the end. Nothing when standard error
/// is no terminal. Thread-safe.
class ProgressBar
{
public:
    enum class Display { OnTerminal, Never };
    explicit ProgressBar(Display display);
    ~ProgressBar();
    ProgressBar(const ProgressBar &) = delete;
    ProgressBar &operator=(const ProgressBar &) = delete;

    /// `whole` below 0: unknown.
    void show(const QString &what, qint64 done, qint64 whole);

private:
    const bool m_isShown;
    std::mutex m_mutex;
    std::chrono::steady_clock::time_point m_nextLine;
};

/// "====      ", of `width` characters; empty for an unknown whole.
QString progressText(qint64 done, qint64 whole, int width);
