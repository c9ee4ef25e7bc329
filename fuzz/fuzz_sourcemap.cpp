// Any bytes: either no source map, or one that answers for every place.

#include "platform/script/SourceMapReader.h"

#include <QtGlobal>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto map = sourceMapFromJSON(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    if (!map)
        return 0;
    for (int line = 0; line < 40; ++line) {
        for (int column = 0; column < 200; ++column) {
            const auto place = map->find(line, column);
            if (place && (place->line < 1 || place->column < 1 || place->source.isNull()))
                qFatal("not a place");
        }
    }
    return 0;
}
