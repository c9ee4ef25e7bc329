#pragma once

#include "platform/KRError.h"

#include <QList>
#include <QString>

#include <optional>

/// A file that an option of the command line names.
struct NamedFile
{
    /// As it was written, for example "--profile".
    QString option;
    QString path;
};

/// Why the output would take another file's place: one that is read, or another output. Nil when none would.
std::optional<KRError> clashOfOutput(const NamedFile &output, const QList<NamedFile> &others);

/// Why nothing can be written there, as far as that can be told before there is something to write; nil when it seems
/// possible. `what` is the output's name in a sentence.
std::optional<KRError> refusalToWrite(const QString &what, const QString &path);
