#pragma once

/// What stands before an author's text in the text that the engine gets: whole lines, then blanks or code on the line
/// of its beginning. Errors are reported in the author's own lines and columns.
struct SourceOffset
{
    int lines = 0;
    int columns = 0;
    /// How many characters stand behind the author's text. What is wrong there is reported at the author's end.
    int trailing = 0;
};
