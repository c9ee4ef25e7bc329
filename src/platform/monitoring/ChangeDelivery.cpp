#include "platform/monitoring/ChangeDelivery.h"

#include "platform/LTAppEnvironment.h"
#include "platform/MainQueue.h"

#include <algorithm>
#include <vector>

namespace {

constexpr std::chrono::milliseconds quietTime(100);
constexpr std::chrono::milliseconds longestWait(1000);

MainQueue &mainQueue()
{
    return LTAppEnvironment::current().mainQueue();
}

} // namespace

ChangeDelivery::ChangeDelivery() = default;
ChangeDelivery::~ChangeDelivery() = default;

void ChangeDelivery::noteChange(Number number, Recipient &recipient)
{
    m_waiting.emplace(number, &recipient);
    m_latestChange = mainQueue().now();
    if (m_firstChange)
        return; // the planned call finds out that it comes too early
    m_firstChange = m_latestChange;
    plan();
}

ChangeDelivery::Time ChangeDelivery::due() const
{
    return std::min(m_latestChange + quietTime, *m_firstChange + longestWait);
}

void ChangeDelivery::plan()
{
    auto &queue = mainQueue();
    m_call = queue.callAfter(due() - queue.now(), [this] { timeHasCome(); });
}

void ChangeDelivery::timeHasCome()
{
    if (mainQueue().now() < due())
        plan();
    else
        deliver();
}

void ChangeDelivery::deliver()
{
    // The last recipient may take everything with it.
    const auto self = shared_from_this();
    m_firstChange.reset();
    // Later changes wait for the next time.
    std::vector<Number> numbers;
    for (const auto &[number, recipient] : m_waiting)
        numbers.push_back(number);
    for (const auto &waiting : m_waiting)
        waiting.second->lookAgain();
    for (const auto number : numbers) {
        const auto found = m_waiting.find(number);
        if (found == m_waiting.end())
            continue;
        auto *recipient = found->second;
        m_waiting.erase(found);
        recipient->tell();
    }
}
