#include "platform/script/CPUProfile.h"

#include "platform/JSONText.h"

#include <QVariantList>

#include <algorithm>

namespace {

/// Names that viewers of this format know.
const auto rootName = QStringLiteral("(root)");
const auto idleName = QStringLiteral("(idle)");

} // namespace

int CPUProfile::functionOf(const Call &call)
{
    const auto known = m_functionNumbers.constFind(call.identity);
    if (known == m_functionNumbers.constEnd()) {
        m_functions.push_back(call);
        m_functionNumbers.insert(call.identity, int(m_functions.size()) - 1);
        return int(m_functions.size()) - 1;
    }
    // The first place of the function that was ever seen comes nearest to where it begins.
    auto &first = m_functions[std::size_t(*known)];
    const bool isEarlier =
        call.line > 0 && (first.line == 0 || std::pair(call.line, call.column) < std::pair(first.line, first.column));
    if (isEarlier) {
        first.line = call.line;
        first.column = call.column;
        first.url = call.url;
    }
    if (first.originalName.isEmpty())
        first.originalName = call.originalName;
    return *known;
}

int CPUProfile::childOf(int node, int function)
{
    const auto known = m_nodes[std::size_t(node)].children.find(function);
    if (known != m_nodes[std::size_t(node)].children.end())
        return known->second;
    const int child = int(m_nodes.size());
    m_nodes[std::size_t(node)].children.emplace(function, child);
    m_nodes.push_back({function, 0, {}, {}});
    return child;
}

void CPUProfile::addSample(int node, qint64 time)
{
    ++m_nodes[std::size_t(node)].hits;
    m_samples.append({node, time});
}

void CPUProfile::add(qint64 time, const QList<Call> &stack)
{
    if (m_nodes.empty())
        m_nodes.push_back({functionOf({rootName, rootName, {}, {}, 0, 0}), 0, {}, {}});
    constexpr qint64 longestSilence = 10; // in intervals
    if (!m_samples.isEmpty() && time - m_samples.last().time > longestSilence * m_interval)
        addSample(childOf(0, functionOf({idleName, idleName, {}, {}, 0, 0})), m_samples.last().time + m_interval);
    int node = 0;
    for (const auto &call : stack)
        node = childOf(node, functionOf(call));
    addSample(node, time);
    if (!stack.isEmpty() && stack.last().line > 0)
        ++m_nodes[std::size_t(node)].lines[stack.last().line];
}

OrderedVariantDictionary CPUProfile::describe(int number) const
{
    const auto &node = m_nodes[std::size_t(number)];
    const auto &function = m_functions[std::size_t(node.function)];
    // The format counts lines and columns of functions from 0, those of ticks from 1.
    const OrderedVariantDictionary callFrame{
        {QStringLiteral("functionName"), function.originalName.isEmpty() ? function.function : function.originalName},
        {QStringLiteral("scriptId"), QString::number(node.function)},
        {QStringLiteral("url"), function.url},
        {QStringLiteral("lineNumber"), function.line - 1},
        {QStringLiteral("columnNumber"), std::max(function.column, function.line > 0 ? 1 : 0) - 1},
    };
    QVariantList children;
    for (const auto &[child, childNumber] : node.children)
        children.append(childNumber + 1);
    QVariantList ticks;
    for (const auto &[line, count] : node.lines) {
        ticks.append(QVariant::fromValue(
            OrderedVariantDictionary{{QStringLiteral("line"), line}, {QStringLiteral("ticks"), count}}));
    }
    return {
        {QStringLiteral("id"), number + 1},
        {QStringLiteral("callFrame"), QVariant::fromValue(callFrame)},
        {QStringLiteral("hitCount"), node.hits},
        {QStringLiteral("children"), children},
        {QStringLiteral("positionTicks"), ticks},
    };
}

QByteArray CPUProfile::toJSON() const
{
    QVariantList nodes;
    for (int number = 0; number < int(m_nodes.size()); ++number)
        nodes.append(QVariant::fromValue(describe(number)));
    QVariantList samples;
    QVariantList deltas;
    const qint64 start = m_samples.isEmpty() ? 0 : m_samples.first().time;
    auto latest = start;
    for (const auto &sample : m_samples) {
        samples.append(sample.node + 1);
        deltas.append(sample.time - latest);
        latest = sample.time;
    }
    return jsonFromVariant(QVariant::fromValue(OrderedVariantDictionary{
                               {QStringLiteral("nodes"), nodes},
                               {QStringLiteral("startTime"), start},
                               {QStringLiteral("endTime"), latest + (m_samples.isEmpty() ? 0 : m_interval)},
                               {QStringLiteral("samples"), samples},
                               {QStringLiteral("timeDeltas"), deltas},
                           }),
        JSONStyle::Compact);
}
