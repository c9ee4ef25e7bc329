#pragma once

#include "platform/Export.h"

#include <QString>
#include <QUrl>

/// Names the place of the framework's own texts.
class KORVAN_EXPORT KorvanPluginManagerLocalizationHelper
{
public:
    /// The folder of the framework's own resources.
    static QUrl bundle();
};

/// The text for the user under an English text, in the language of the program's installed translators (context: the
/// table's name). The English text itself where there is no translation. Any thread.
KORVAN_EXPORT QString KorvanPluginManagerLocalizedStringFromTable(const QString &key, const QString &table);

/// The same from the table "Localizable".
KORVAN_EXPORT QString KorvanPluginManagerLocalizedString(const QString &key);
