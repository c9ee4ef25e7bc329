#pragma once

#include <memory>
#include <mutex>
#include <utility>

/// One value that is replaced as a whole and may be asked for from any thread: whoever has it keeps what it was.
/// Nothing but the exchange of a pointer happens under the lock.
template <class Value>
class Snapshot
{
public:
    using Pointer = std::shared_ptr<const Value>;

    /// Null when nothing was set.
    Pointer get() const
    {
        const std::lock_guard lock(m_mutex);
        return m_value;
    }
    void set(Value value) { replace(std::make_shared<const Value>(std::move(value))); }
    void clear() { replace(nullptr); }

private:
    void replace(Pointer value)
    {
        const std::lock_guard lock(m_mutex);
        m_value.swap(value); // the old one ends outside of the lock, with the argument
    }

    mutable std::mutex m_mutex;
    Pointer m_value;
};
