#include "NumberAnswer.h"

std::optional<QString> refusalOfNumber(const NumberPrompt &prompt, double number)
{
    if (!(number >= prompt.minimum && number <= prompt.maximum)) {
        return QStringLiteral("The number has to be at least %1 and at most %2.")
            .arg(prompt.minimum, 0, 'g', 15)
            .arg(prompt.maximum, 0, 'g', 15);
    }
    if (QString::number(number, 'f', prompt.decimals).toDouble() == number)
        return std::nullopt;
    if (prompt.decimals == 0)
        return QStringLiteral("The number has to be a whole number.");
    return QStringLiteral("The number can have at most %1.")
        .arg(prompt.decimals == 1 ? QStringLiteral("1 decimal") : QStringLiteral("%1 decimals").arg(prompt.decimals));
}
