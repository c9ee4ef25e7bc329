#pragma once

#include <QString>
#include <QStringView>

#include <bitset>
#include <span>

/// The globals that core modules implement. A session makes one when a source that mentions it is about to be
/// evaluated: each property of a global object costs a session a microsecond, whether or not anybody uses it.
inline constexpr std::size_t scriptGlobalCount = 20;
using ScriptGlobals = std::bitset<scriptGlobalCount>;

/// Their names, in the order of the bits.
std::span<const QStringView, scriptGlobalCount> scriptGlobalNames();

/// Those whose names stand somewhere in the text as a whole word, be it in a comment or a string. The texts asked for
/// last are remembered, so that a script is searched once and not for each session. Main thread only.
ScriptGlobals scriptGlobalsIn(const QString &text);
