#pragma once

#include "validation/TextPosition.h"

#include <QList>
#include <QString>

/// Something that is wrong with a plug-in, and where.
struct Problem
{
    enum class Severity {
        /// The plug-in does not do what its manifest says.
        Error,
        /// Something has no effect, or may not have the one that is meant.
        Warning
    };

    Severity severity = Severity::Error;
    /// The manifest's key that it is about, for example "commands[0].handlers.run"; "" for the whole of a file.
    QString key;
    QString message;
    /// Absolute path.
    QString file;
    /// The file's beginning where the whole of it is meant.
    TextPosition position;
};

using Problems = QList<Problem>;
