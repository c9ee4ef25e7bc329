#include "widgets/console/LogQueue.h"

void LogQueue::append(LogEntry entry)
{
    m_characters += entry.text.size();
    m_entries.push_back(std::move(entry));
}

void LogQueue::clear()
{
    m_entries.clear();
    m_characters = 0;
}

void LogQueue::dropFirst(std::size_t count)
{
    m_characters -= charactersOfFirst(count);
    m_entries.erase(m_entries.begin(), m_entries.begin() + std::ptrdiff_t(count));
}

void LogQueue::moveFirst(std::size_t count, LogQueue &target)
{
    const auto characters = charactersOfFirst(count);
    const auto end = m_entries.begin() + std::ptrdiff_t(count);
    target.m_entries.insert(
        target.m_entries.end(), std::make_move_iterator(m_entries.begin()), std::make_move_iterator(end));
    m_entries.erase(m_entries.begin(), end);
    target.m_characters += characters;
    m_characters -= characters;
}

qsizetype LogQueue::charactersOfFirst(std::size_t count) const
{
    qsizetype characters = 0;
    for (std::size_t i = 0; i < count; ++i)
        characters += m_entries[i].text.size();
    return characters;
}

std::size_t LogQueue::surplus(std::size_t mostEntries, qsizetype mostCharacters) const
{
    auto count = m_entries.size() > mostEntries ? m_entries.size() - mostEntries : 0;
    auto left = m_characters - charactersOfFirst(count);
    for (; left > mostCharacters && count < m_entries.size(); ++count)
        left -= m_entries[count].text.size();
    return count;
}
