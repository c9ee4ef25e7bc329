#pragma once

#include "platform/script/ScriptContext.h"
#include "platform/script/ScriptConverter.h"
#include "platform/script/ScriptException.h"
#include "platform/script/ScriptLocations.h"

/// Reads what a script has thrown, whatever it is: an error object with its place, or any other value as text. Where
/// the value itself knows no place, `sourceURL` names the file.
ScriptException readScriptException(ScriptContext &context, ScriptConverter &converter,
    const ScriptLocations &locations, JSValueRef thrown, const QString &sourceURL);

/// Completes the engine's report of a text that is no script: of the place in it the engine knows the line only, the
/// column and the stack are those of whoever asked for the text. The column is found by asking how much of that line it
/// takes to make the same error. What is wrong in the last `trailing` characters, which its author has never seen, is
/// at the end of what stands before them.
void addColumnToSyntaxError(
    ScriptContext &context, const QString &source, const ScriptString &sourceURL, JSValueRef error, qsizetype trailing);
