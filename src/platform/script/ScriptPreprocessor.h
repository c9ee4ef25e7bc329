#pragma once

#include <QString>

#include <vector>

/// Rewrites bracketed message sends into method calls, everywhere in a script:
///
///     [layer setName:"Sky" animated:true]   →   layer.setName_animated("Sky", true)
///     [[document layers] count]             →   document.layers().count()
///
/// Strings, comments, regular expressions, the texts of templates, array literals and subscripts stay as they are;
/// every line keeps its number. A text without message sends comes back as it is. Whether a bracket is a message send
/// is decided by what no array literal or subscript can hold: a name that follows a complete expression.
///
/// Meant for texts that are not valid JavaScript as they stand: a valid script holds no message send.
QString withMessageSendsRewritten(const QString &source);

/// Where the columns of a text were before message sends were rewritten; lines are the same.
class ColumnsBeforeRewriting
{
public:
    /// `source` is what was handed to withMessageSendsRewritten().
    explicit ColumnsBeforeRewriting(const QString &source);

    /// Both from 1. A column in what was put in is the one where that was done.
    int columnBefore(int line, int column) const;

private:
    /// Something that was replaced, from 0: in the original line.
    struct Replacement
    {
        int line;
        int column;
        int length;
        int newLength;
    };

    std::vector<Replacement> m_replacements;
};
