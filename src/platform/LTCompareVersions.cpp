#include "platform/LTCompareVersions.h"

#include <QStringView>

#include <algorithm>

namespace {

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

int sign(qsizetype difference)
{
    return difference < 0 ? -1 : (difference > 0 ? 1 : 0);
}

QStringView withoutDecoration(QStringView version)
{
    version = version.trimmed();
    const bool hasPrefix = version.size() >= 2 && (version[0] == u'v' || version[0] == u'V') && isDigit(version[1]);
    return hasPrefix ? version.mid(1) : version;
}

/// Splits off what stands before the next dot. An empty or missing component reads as "0".
QStringView takeComponent(QStringView &rest)
{
    const auto dot = rest.indexOf(u'.');
    const auto component = dot < 0 ? rest : rest.left(dot);
    rest = dot < 0 ? QStringView() : rest.mid(dot + 1);
    return component.isEmpty() ? QStringView(u"0") : component;
}

/// Splits off the leading run of digits, or of anything but digits.
QStringView takePart(QStringView &component)
{
    if (component.isEmpty())
        return {};
    const bool digits = isDigit(component.front());
    const auto end = std::find_if(
        component.begin(), component.end(), [digits](QChar character) { return isDigit(character) != digits; });
    const auto part = component.left(end - component.begin());
    component = component.mid(part.size());
    return part;
}

/// What sorts first where two components part: a text, then the component's end, then a number.
enum class PartKind { Text, End, Number };

PartKind kindOf(QStringView part)
{
    if (part.isEmpty())
        return PartKind::End;
    return isDigit(part.front()) ? PartKind::Number : PartKind::Text;
}

int compareNumbers(QStringView first, QStringView second)
{
    const auto withoutZeros = [](QStringView digits) {
        const auto firstSignificant = std::find_if(digits.begin(), digits.end(), [](QChar c) { return c != u'0'; });
        return digits.mid(firstSignificant - digits.begin());
    };
    first = withoutZeros(first);
    second = withoutZeros(second);
    return first.size() != second.size() ? sign(first.size() - second.size()) : sign(first.compare(second));
}

int compareComponents(QStringView first, QStringView second)
{
    for (;;) {
        const auto firstPart = takePart(first);
        const auto secondPart = takePart(second);
        const auto kind = kindOf(firstPart);
        if (kind != kindOf(secondPart))
            return kind < kindOf(secondPart) ? -1 : 1;
        if (kind == PartKind::End)
            return 0;
        const int order =
            kind == PartKind::Number ? compareNumbers(firstPart, secondPart) : sign(firstPart.compare(secondPart));
        if (order != 0)
            return order;
    }
}

} // namespace

int LTCompareVersions(const std::optional<QString> &first, const std::optional<QString> &second)
{
    if (!first || !second)
        return int(first.has_value()) - int(second.has_value());

    auto firstRest = withoutDecoration(*first);
    auto secondRest = withoutDecoration(*second);
    while (!firstRest.isEmpty() || !secondRest.isEmpty()) {
        const int order = compareComponents(takeComponent(firstRest), takeComponent(secondRest));
        if (order != 0)
            return order;
    }
    return 0;
}

std::optional<QString> LTHighestVersionNumber(const QStringList &versions)
{
    const auto highest = std::max_element(versions.begin(), versions.end(),
        [](const QString &first, const QString &second) { return LTCompareVersions(first, second) < 0; });
    return highest == versions.end() ? std::nullopt : std::optional(*highest);
}
