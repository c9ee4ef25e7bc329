#pragma once

#include "platform/OrderedDictionary.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

#include <map>
#include <vector>

/// Samples of running scripts as a tree of calls, and that as the JSON of files ".cpuprofile", which browsers'
/// developer tools, editors and other viewers of flame graphs open.
class CPUProfile
{
public:
    /// Where a function was running when it was seen.
    struct Call
    {
        /// What tells functions apart, whatever they are called.
        QString identity;
        /// "" for one without a name.
        QString function;
        /// What a source map calls it; "" when that is not known.
        QString originalName;
        /// "" for the engine's own.
        QString url;
        /// From 1; 0 when not known.
        int line = 0;
        int column = 0;
    };

    /// `interval` between two samples, in microseconds.
    explicit CPUProfile(qint64 interval)
        : m_interval(interval)
    { }

    /// The calls on the stack at a time in microseconds, outermost first. Times do not go back. Where more than a few
    /// intervals have passed since the last one, no script was running in between.
    void add(qint64 time, const QList<Call> &stack);
    qsizetype sampleCount() const { return m_samples.size(); }

    QByteArray toJSON() const;

private:
    struct Node
    {
        int function;
        int hits = 0;
        std::map<int, int> children;
        /// Samples by line.
        std::map<int, int> lines;
    };
    struct Sample
    {
        int node;
        qint64 time;
    };

    int functionOf(const Call &call);
    int childOf(int node, int function);
    void addSample(int node, qint64 time);
    OrderedVariantDictionary describe(int node) const;

    qint64 m_interval;
    QHash<QString, int> m_functionNumbers;
    std::vector<Call> m_functions;
    std::vector<Node> m_nodes;
    QList<Sample> m_samples;
};
