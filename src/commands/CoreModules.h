#pragma once

#include "platform/script/COScript.h"

/// The modules that every script can require by name, and the files that implement them.
///
/// They come from the application's resources, unless the user default "KorvanAPILocation" names a folder (all of them
/// are there) or anything else (that is the module "korvan"). A module without a file in the resources is left out.
COScript::CoreModules coreModulesOfApplication();
