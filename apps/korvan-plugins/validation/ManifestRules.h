#pragma once

#include "validation/CommandFacts.h"

// What a manifest's schema cannot say. Each rule reports what breaks it to the manifest.

/// Numbers that are read as another version than they show, and bounds that no version lies between.
void checkVersions(Manifest &manifest);
/// Homepage and update feed have to be web addresses that hosts open.
void checkURLs(Manifest &manifest);
/// The plug-in's identifier has to be one under which updates can be downloaded.
void checkIdentifier(Manifest &manifest);
/// The icon has to be an image that is in the bundle.
void checkIcon(Manifest &manifest);
/// Identifiers that come twice, handlers that nothing can run.
void checkCommands(Manifest &manifest, const QList<CommandFacts> &commands);
/// Shortcuts that two commands share, or that mean another key than it seems.
void checkShortcuts(Manifest &manifest, const QList<CommandFacts> &commands);
/// Entries of the menu that name no command, or one that cannot be run.
void checkMenu(Manifest &manifest, const QList<CommandFacts> &commands);
