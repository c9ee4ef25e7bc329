#include "validation/ModuleRules.h"

#include "commands/CoreModules.h"
#include "platform/script/RequiredModules.h"

#include <QFile>

void checkModules(Manifest &manifest, const QString &key, const QString &scriptPath, const QString &source)
{
    if (!source.contains(u"require"))
        return;
    const auto missing = missingModules(
        QFile::encodeName(scriptPath), source, QFile::encodeName(manifest.bundle()), namesOfCoreModules());
    for (const auto &module : missing) {
        const auto position = positionIn(module.text, module.offset);
        if (module.use == MissingModule::Use::Unconditional)
            manifest.errorInFile(key, module.file, position, module.message);
        else
            manifest.warningInFile(key, module.file, position, module.message);
    }
}
