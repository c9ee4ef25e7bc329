// Any three texts, a line each: their order is a strict weak one.

#include "platform/LTCompareVersions.h"

#include <QtGlobal>

#include <algorithm>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    auto versions = text.split(u'\n').mid(0, 3);
    while (versions.size() < 3)
        versions.append(QString());
    std::sort(versions.begin(), versions.end());
    do {
        const auto &a = versions[0];
        const auto &b = versions[1];
        const auto &c = versions[2];
        const int order = LTCompareVersions(a, b);
        if (LTCompareVersions(a, a) != 0 || order != -LTCompareVersions(b, a))
            qFatal("the two directions disagree");
        if (order <= 0 && LTCompareVersions(b, c) <= 0 && LTCompareVersions(a, c) > 0)
            qFatal("not transitive");
    } while (std::next_permutation(versions.begin(), versions.end()));
    if (LTCompareVersions(std::nullopt, versions[0]) != -1)
        qFatal("nil is not the oldest");
    const auto highest = LTHighestVersionNumber(versions);
    const auto isNewer = [&](const QString &version) { return LTCompareVersions(version, highest) > 0; };
    if (!highest || std::any_of(versions.begin(), versions.end(), isNewer))
        qFatal("not the highest");
    return 0;
}
