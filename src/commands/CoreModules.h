#pragma once

#include "platform/script/COScript.h"
#include "platform/script/ScriptHost.h"

/// The modules that every script can require by name, and the files that implement them.
///
/// They come from the application's resources, unless the user default "KorvanAPILocation" names a folder (all of them
/// are there) or anything else (that is the module "korvan"). A module without a file in the resources is left out.
COScript::CoreModules coreModulesOfApplication();

/// The core module behind a global of that name: one of `modules`, or one of the application's resources that has no
/// name of its own.
ScriptGlobal coreModuleOfGlobal(const QString &name, const COScript::CoreModules &modules);
