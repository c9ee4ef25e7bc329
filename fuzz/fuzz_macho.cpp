// Any bytes: at most as many slices as a table may have, which depend on nothing but the headers, and a file that ends
// earlier has the same ones or none.

#include "platform/MachOHeaders.h"

#include <QByteArray>

#include <algorithm>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // A copy of exactly these bytes, for a sanitizer to see the end of.
    const std::vector<char> bytes(data, data + size);
    const QByteArrayView view(bytes.data(), qsizetype(bytes.size()));
    const auto types = machOCPUTypes(view);
    if (types.size() > 44)
        qFatal("too many slices");
    if (machOCPUTypes(view.first(std::min(view.size(), machOHeadersSize))) != types)
        qFatal("something behind the headers counts");
    for (qsizetype end = std::min(view.size(), machOHeadersSize); end > 0; end = end * 7 / 8) {
        const std::vector<char> shorter(bytes.begin(), bytes.begin() + end);
        const auto fewer = machOCPUTypes(QByteArrayView(shorter.data(), end));
        if (!fewer.empty() && fewer != types)
            qFatal("other slices in a shorter file");
    }
    return 0;
}
