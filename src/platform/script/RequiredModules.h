#pragma once

#include "platform/Export.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

/// A module that a script requires by a literal name and that is not there.
struct MissingModule
{
    enum class Use {
        /// At the script's top level: the script ends there.
        Unconditional,
        /// In a block or a function, which may never be reached, or expects it.
        Conditional
    };

    /// The file that requires it, and that file's text without a byte-order mark.
    QString file;
    QString text;
    /// Of the name in the text, its quotation mark included.
    qsizetype offset = 0;
    Use use = Use::Unconditional;
    /// As a session says it.
    QString message;
};

/// The modules that are missing to a script and to those that it requires, found from the texts alone, as a session
/// would look for them: relative to the file that asks, and nowhere outside of `folder`. `coreModules` are there by
/// their names. A text that uses another "require" than the session's is passed over. Main thread not needed.
KORVAN_EXPORT std::vector<MissingModule> missingModules(
    const QByteArray &scriptPath, const QString &source, const QByteArray &folder, const QStringList &coreModules);
