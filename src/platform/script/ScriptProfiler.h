#pragma once

#include "platform/Export.h"

#include <QByteArray>

#include <memory>

class ScriptLocations;

/// Finds out where scripts spend their time: looks at the stacks of all sessions about a thousand times a second, from
/// its making to its end. One at a time. Main thread only; needs the environment's main queue.
class KORVAN_EXPORT ScriptProfiler
{
public:
    /// Null when the engine cannot do it here.
    static std::unique_ptr<ScriptProfiler> start();
    ~ScriptProfiler();
    ScriptProfiler(const ScriptProfiler &) = delete;
    ScriptProfiler &operator=(const ScriptProfiler &) = delete;

    /// What was seen until now, as the JSON of a file ".cpuprofile": functions in the author's files and lines, those
    /// of source maps for generated scripts.
    QByteArray profile();

    /// Where what sessions evaluate is noted, for samples to be placed; null while nobody profiles.
    static ScriptLocations *locations();

private:
    struct State;

    ScriptProfiler();
    void collect();
    void collectLater();

    std::unique_ptr<State> m_state;
};
