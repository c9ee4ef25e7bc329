#include "validation/TextPosition.h"

#include <algorithm>

TextPosition positionIn(QStringView text, qsizetype offset)
{
    TextPosition position;
    const auto end = std::min(offset, text.size());
    qsizetype lineStart = 0;
    for (qsizetype i = 0; i < end; ++i) {
        const bool isFirstOfPair = text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
        if (text[i] == u'\n' || (text[i] == u'\r' && !isFirstOfPair)) {
            ++position.line;
            lineStart = i + 1;
        }
    }
    position.column = int(end - lineStart) + 1;
    return position;
}
