#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <optional>

class ScheduledCall;

/// Tells those whose folders have changed, all together once it has become quiet: 100 ms after the latest change of any
/// of them, at most a second after the first one. Main thread only.
class ChangeDelivery : public std::enable_shared_from_this<ChangeDelivery>
{
public:
    class Recipient
    {
    public:
        /// Called for all of them before the first one is told.
        virtual void lookAgain() = 0;
        /// May end any recipient, this one too.
        virtual void tell() = 0;

    protected:
        ~Recipient() = default;
    };
    using Number = long long;

    ChangeDelivery();
    ~ChangeDelivery();

    /// What a recipient is known by; those with lower ones are told first.
    Number nextNumber() { return ++m_latestNumber; }
    /// There was a change just now.
    void noteChange(Number number, Recipient &recipient);
    void forget(Number number) { m_waiting.erase(number); }

private:
    using Time = std::chrono::milliseconds;

    Time due() const;
    void plan();
    void timeHasCome();
    void deliver();

    Number m_latestNumber = 0;
    std::map<Number, Recipient *> m_waiting;
    std::optional<Time> m_firstChange;
    Time m_latestChange{0};
    std::unique_ptr<ScheduledCall> m_call;
};
