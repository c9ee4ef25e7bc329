#include "manager/RunningCommands.h"

#include <algorithm>

RunningCommands::RunningCommands(MainQueue &queue, std::function<void()> changed)
    : m_queue(queue)
    , m_changed(std::move(changed))
    , m_life(std::make_shared<char>())
{ }

RunningCommands::~RunningCommands()
{
    for (const auto &entry : m_entries)
        entry.command->abandonSession();
}

RunningCommands::Entries::iterator RunningCommands::find(const KRPluginCommandSpecifier &specifier)
{
    return std::find_if(
        m_entries.begin(), m_entries.end(), [&specifier](const Entry &entry) { return entry.specifier == specifier; });
}

RunningCommands::Entries::iterator RunningCommands::find(int serial)
{
    return std::find_if(
        m_entries.begin(), m_entries.end(), [serial](const Entry &entry) { return entry.serial == serial; });
}

void RunningCommands::track(const std::shared_ptr<KRPluginCommand> &command, Completion onComplete)
{
    if (!command)
        return;
    auto entry = find(command->commandSpecifier());
    if (entry == m_entries.end())
        entry = m_entries.insert(entry, {command->commandSpecifier(), nullptr, nullptr, 0, {}});
    entry->command = command;
    entry->serial = ++m_latestSerial;
    entry->since = m_queue.now();
    if (onComplete)
        entry->onComplete = std::move(onComplete);
    const auto life = std::weak_ptr(m_life);
    tellChange();
    if (!life.expired())
        cleanupFinished();
}

void RunningCommands::tellChange() const
{
    if (const auto changed = m_changed)
        changed();
}

QList<RunningCommand> RunningCommands::list() const
{
    QList<RunningCommand> commands;
    for (const auto &entry : m_entries) {
        const auto bundle = entry.command->pluginBundle();
        commands.append({entry.specifier, entry.command->name().value_or(QString()),
            bundle ? bundle->name().value_or(QString()) : QString(), m_queue.now() - entry.since});
    }
    return commands;
}

std::shared_ptr<KRPluginCommand> RunningCommands::stop(const KRPluginCommandSpecifier &specifier)
{
    const auto entry = find(specifier);
    if (entry == m_entries.end())
        return nullptr;
    const auto command = entry->command;
    const int serial = entry->serial;
    const auto life = std::weak_ptr(m_life);
    command->tearDownSession(); // which calls the script's own handler, and that may do anything
    if (!life.expired())
        finish(serial);
    return command;
}

std::shared_ptr<KRPluginCommand> RunningCommands::command(const KRPluginCommandSpecifier &specifier) const
{
    const auto entry = const_cast<RunningCommands *>(this)->find(specifier);
    return entry == m_entries.end() ? nullptr : entry->command;
}

std::shared_ptr<KRPluginCommand> RunningCommands::stopTracking(const KRPluginCommandSpecifier &specifier)
{
    const auto entry = find(specifier);
    if (entry == m_entries.end())
        return nullptr;
    const auto command = entry->command;
    finish(entry->serial);
    return command;
}

/// Calls the completion, once, and forgets the entry, unless the completion has put another in its place.
void RunningCommands::finish(int serial)
{
    const auto entry = find(serial);
    if (entry == m_entries.end())
        return;
    const auto command = entry->command;
    const auto life = std::weak_ptr(m_life);
    if (const auto onComplete = std::exchange(entry->onComplete, nullptr))
        onComplete(command->logString());
    if (life.expired())
        return;
    if (const auto finished = find(serial); finished != m_entries.end()) {
        m_entries.erase(finished);
        tellChange();
    }
}

void RunningCommands::cleanupFinished()
{
    // A handler that is called here may itself begin and end commands.
    std::vector<int> finished;
    const auto asked = m_entries;
    const auto life = std::weak_ptr(m_life);
    for (const auto &entry : asked) {
        if (entry.command->tearDownIfFinished())
            finished.push_back(entry.serial);
    }
    for (const int serial : finished) {
        if (!life.expired())
            finish(serial);
    }
    if (life.expired())
        return; // a handler or a completion has ended the manager

    if (m_entries.empty())
        m_lastTimerInterval = 0;
    else
        planPoll();
}

void RunningCommands::planPoll()
{
    m_lastTimerInterval = std::clamp(m_lastTimerInterval * 2, 1.0, 60.0);
    const auto interval = std::chrono::milliseconds(qint64(m_lastTimerInterval * 1000));
    m_plannedPolls.insert(m_queue.now() + interval);
    wait();
}

void RunningCommands::wait()
{
    if (m_plannedPolls.empty()) {
        m_nextPoll.reset();
        return;
    }
    m_nextPoll = m_queue.callAfter(*m_plannedPolls.begin() - m_queue.now(), [this] { pollDue(); });
}

void RunningCommands::pollDue()
{
    const auto now = m_queue.now();
    const auto life = std::weak_ptr(m_life);
    while (!life.expired() && !m_plannedPolls.empty() && *m_plannedPolls.begin() <= now) {
        m_plannedPolls.erase(m_plannedPolls.begin());
        cleanupFinished();
    }
    if (!life.expired())
        wait();
}

void RunningCommands::pollSoon()
{
    constexpr std::chrono::milliseconds delay(100);
    m_soonPoll = m_queue.callAfter(delay, [this] { cleanupFinished(); });
}
