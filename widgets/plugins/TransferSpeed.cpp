#include "widgets/plugins/TransferSpeed.h"

void TransferSpeed::add(std::chrono::milliseconds now, qint64 totalBytes)
{
    constexpr std::chrono::seconds window(3);
    constexpr std::size_t fewest = 2;
    if (!m_samples.empty() && m_samples.back().time == now)
        m_samples.back().bytes = totalBytes;
    else
        m_samples.push_back({now, totalBytes});
    while (m_samples.size() > fewest && now - m_samples.front().time > window)
        m_samples.pop_front();
}

double TransferSpeed::bytesPerSecond() const
{
    if (m_samples.size() < 2)
        return 0;
    const auto &first = m_samples.front();
    const auto &last = m_samples.back();
    constexpr double millisecondsInASecond = 1000;
    return double(last.bytes - first.bytes) * millisecondsInASecond / double((last.time - first.time).count());
}
