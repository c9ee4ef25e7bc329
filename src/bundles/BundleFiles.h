#pragma once

#include "commands/CommandTable.h"
#include "platform/FileWrapper.h"
#include "platform/OrderedDictionary.h"
#include "platform/Result.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// A manifest's text. An error when the dictionary holds what JSON cannot, such as dates or half a surrogate pair.
Result<QByteArray> manifestText(const OrderedVariantDictionary &metadata);

/// A plug-in's folder with everything that is written of it: the manifest, the source of each command's script under
/// the script's plain file name, and the icon.
FileWrapper pluginFileWrapper(const std::optional<QString> &name, const QByteArray &manifest,
    const CommandTable &commands, std::optional<FileWrapper> icon);
