#pragma once

#include <QString>

#include <utility>
#include <vector>

/// Messages that wait for the thread and the moment to be delivered in.
class LogMessages
{
public:
    enum class Recipient {
        /// The host's log target for the user; the system's log where there is none.
        User,
        SystemLog
    };

    struct Message
    {
        Recipient recipient;
        QString text;
    };

    void add(Recipient recipient, const QString &text) { m_messages.push_back({recipient, text}); }
    const std::vector<Message> &messages() const { return m_messages; }
    std::vector<Message> take() { return std::exchange(m_messages, {}); }

private:
    std::vector<Message> m_messages;
};
