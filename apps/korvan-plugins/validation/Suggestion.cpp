#include "validation/Suggestion.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace {

/// How many characters have to be put in, left out or changed.
int distanceBetween(const QString &first, const QString &second)
{
    std::vector<int> row(std::size_t(second.size()) + 1);
    std::iota(row.begin(), row.end(), 0);
    for (qsizetype i = 0; i < first.size(); ++i) {
        int diagonal = row[0];
        row[0] = int(i) + 1;
        for (std::size_t j = 1; j < row.size(); ++j) {
            const int changed = diagonal + (first[i] == second[qsizetype(j) - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, changed});
        }
    }
    return row.back();
}

} // namespace

QString nearestName(const QString &name, const QStringList &known)
{
    constexpr qsizetype longestName = 64;
    constexpr qsizetype mostNames = 1000;
    if (name.size() > longestName || known.size() > mostNames)
        return {};
    QString nearest;
    int shortest = name.size() < 4 ? 2 : 3; // below these it is near
    for (const auto &each : known) {
        if (each.size() > longestName)
            continue;
        const int distance = distanceBetween(name.toLower(), each.toLower());
        if (distance < shortest) {
            nearest = each;
            shortest = distance;
        }
    }
    return nearest;
}

QString suggestion(const QString &name, const QStringList &known)
{
    const auto nearest = nearestName(name, known);
    return nearest.isEmpty() ? QString() : QStringLiteral(" Do you mean “%1”?").arg(nearest);
}
