#include "TextTable.h"

#include "ControlCharacters.h"

#include <algorithm>

namespace {

QString padded(const QStringList &cells, const QList<qsizetype> &widths)
{
    QString line;
    for (qsizetype i = 0; i < cells.size(); ++i) {
        if (i > 0)
            line += QStringLiteral("  ");
        line += i + 1 < cells.size() ? cells[i].leftJustified(widths[i]) : cells[i];
    }
    while (line.endsWith(u' ')) // cells that are empty
        line.chop(1);
    return line;
}

} // namespace

TextTable::TextTable(const QStringList &heading)
    : m_heading(heading)
{ }

void TextTable::addRow(const QStringList &cells)
{
    QStringList row;
    for (const auto &cell : cells)
        row.append(withoutControlCharacters(cell, ControlCharacters::All));
    m_rows.append(row);
}

void TextTable::print(Output &output) const
{
    QList<qsizetype> widths;
    for (qsizetype i = 0; i < m_heading.size(); ++i) {
        auto width = m_heading[i].size();
        for (const auto &row : m_rows)
            width = std::max(width, row[i].size());
        widths.append(width);
    }
    output.line(padded(m_heading, widths), Output::Colour::Bold);
    for (const auto &row : m_rows)
        output.line(padded(row, widths));
}
