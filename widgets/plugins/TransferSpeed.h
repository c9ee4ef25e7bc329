#pragma once

#include "widgets/Export.h"

#include <QtGlobal>

#include <chrono>
#include <deque>

/// How fast bytes arrive, over the last three seconds. A plain value.
class KORVAN_WIDGETS_EXPORT TransferSpeed
{
public:
    /// So many bytes have arrived in all. Time does not go back.
    void add(std::chrono::milliseconds now, qint64 totalBytes);
    /// 0 while too little is known.
    double bytesPerSecond() const;

private:
    struct Sample
    {
        std::chrono::milliseconds time;
        qint64 bytes;
    };

    std::deque<Sample> m_samples;
};
