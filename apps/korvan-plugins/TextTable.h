#pragma once

#include "Output.h"

#include <QList>
#include <QStringList>

/// Rows of texts in aligned columns under a heading.
class TextTable
{
public:
    explicit TextTable(const QStringList &heading);

    /// Control characters in it are shown as escapes: they would break the columns.
    void addRow(const QStringList &cells);
    void print(Output &output) const;

private:
    QStringList m_heading;
    QList<QStringList> m_rows;
};
