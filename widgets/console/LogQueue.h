#pragma once

#include "widgets/console/LogEntry.h"

#include <cstddef>
#include <deque>

/// Log entries, the oldest first, and how long their texts are together. A plain value.
class LogQueue
{
public:
    std::size_t size() const { return m_entries.size(); }
    const LogEntry &operator[](std::size_t index) const { return m_entries[index]; }

    void append(LogEntry entry);
    void clear();
    void dropFirst(std::size_t count);
    /// The first entries go to the end of another queue.
    void moveFirst(std::size_t count, LogQueue &target);

    /// Of the texts of the first entries.
    qsizetype charactersOfFirst(std::size_t count) const;
    /// How many of the first entries have to go, so that no more than so many entries and characters are left.
    std::size_t surplus(std::size_t mostEntries, qsizetype mostCharacters) const;

private:
    std::deque<LogEntry> m_entries;
    qsizetype m_characters = 0;
};
