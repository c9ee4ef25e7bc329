#pragma once

#include <QSocketNotifier>

#include <functional>
#include <list>
#include <memory>

/// What the user's Ctrl-C asks to stop, for as long as there is any: the first Ctrl-C calls what was added, from the
/// event loop; the next one ends the program, as it does without this, also while a script computes. Where the signal
/// is ignored it stays so. One at a time, main thread only.
class Interruptions
{
public:
    Interruptions();
    ~Interruptions();
    Interruptions(const Interruptions &) = delete;
    Interruptions &operator=(const Interruptions &) = delete;

    /// Until what this answers is gone, which keeps this object too.
    [[nodiscard]] static std::shared_ptr<void> add(
        const std::shared_ptr<Interruptions> &interruptions, std::function<void()> interrupted);

private:
    using Callbacks = std::list<std::shared_ptr<std::function<void()>>>;

    void interrupt();

    Callbacks m_callbacks;
    int m_read = -1;
    bool m_isInForce = false;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
