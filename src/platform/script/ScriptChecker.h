#pragma once

#include "platform/Export.h"
#include "platform/script/ScriptOutline.h"

#include <QString>

#include <memory>
#include <optional>

struct ScriptSyntaxError
{
    /// As the engine says it, for example "SyntaxError: Unexpected token ';'".
    QString message;
    /// From 1; columns count UTF-16 code units.
    int line = 1;
    int column = 1;
};

/// What can be said of a script without running it.
struct ScriptCheck
{
    std::optional<ScriptSyntaxError> error;
    /// Of a text with an error, nothing.
    std::optional<ScriptOutline> outline;
};

/// Checks scripts with the engine's own parser. Nothing of them is run. Made and destroyed on the main thread,
/// otherwise for any thread: texts that are valid are checked side by side, those with errors one after another.
class KORVAN_EXPORT ScriptChecker
{
public:
    enum class MessageSends {
        /// A text that is not valid JavaScript is searched for bracketed message sends, as a session does.
        Rewritten,
        Rejected
    };

    ScriptChecker();
    ~ScriptChecker();
    ScriptChecker(const ScriptChecker &) = delete;
    ScriptChecker &operator=(const ScriptChecker &) = delete;

    /// With message sends rewritten, lines are those of the text, columns those of the rewritten line.
    ScriptCheck check(const QString &source, MessageSends messageSends);
    /// Whether every session has a global of that name from the start.
    bool isBuiltIn(const QString &name) const;

private:
    struct Engine;
    class Parsers;

    std::unique_ptr<Engine> m_engine;
    std::unique_ptr<Parsers> m_parsers;
};
