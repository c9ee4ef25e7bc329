#pragma once

#include "validation/Manifest.h"

#include <QList>
#include <QString>

#include <optional>

/// A function that a command's entry names, or takes for granted.
struct HandlerFact
{
    /// The manifest's key that names it.
    QString key;
    QString function;
    qsizetype offset = 0;
};

/// What a host makes of one entry of a manifest's "commands".
struct CommandFacts
{
    /// "commands[0]".
    QString key;
    const JSONNode *node = nullptr;
    QString script;
    qsizetype scriptOffset = 0;
    QString identifier;
    /// Of what gives the command its identifier.
    qsizetype identifierOffset = 0;
    QString identifierKey;
    bool hasRunHandler = false;
    /// Without the defaults of "setUp" and "tearDown", which may be missing in the script.
    QList<HandlerFact> handlers;
};

/// The commands of a manifest, in its order. Entries that make none are left out.
QList<CommandFacts> commandsOf(const Manifest &manifest);
