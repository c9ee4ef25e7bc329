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
    /// Answers what was set, whatever other threads set meanwhile.
    Pointer set(Value value)
    {
        auto pointer = std::make_shared<Value>(std::move(value));
        replace(pointer);
        return pointer;
    }
    void clear() { replace(nullptr); }
    /// Takes the value out, to be changed, when it is still the known one and nobody but the caller has it; null
    /// otherwise.
    std::shared_ptr<Value> take(Pointer &known)
    {
        const std::lock_guard lock(m_mutex);
        if (m_value != known || m_value.use_count() != 2)
            return nullptr;
        // Letting go of a share, unlike counting them, orders all that others did with theirs before what comes next.
        known.reset();
        return std::move(m_value);
    }

private:
    void replace(std::shared_ptr<Value> value)
    {
        const std::lock_guard lock(m_mutex);
        m_value.swap(value); // the old one ends outside of the lock, with the argument
    }

    mutable std::mutex m_mutex;
    std::shared_ptr<Value> m_value;
};
