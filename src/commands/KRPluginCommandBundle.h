#pragma once

#include "platform/Export.h"
#include "platform/script/ScriptObject.h"

#include <QString>
#include <QUrl>

#include <optional>

/// What a command needs of the plug-in that it belongs to. It holds it weakly.
class KORVAN_EXPORT KRPluginCommandBundle : public ScriptObject
{
public:
    ~KRPluginCommandBundle() override;

    virtual std::optional<QString> identifier() const = 0;
    /// For the user.
    virtual std::optional<QString> name() const = 0;
    /// The plug-in's folder; empty for one that is not on disk.
    virtual QUrl url() const = 0;
    virtual bool disableCocoaScriptPreprocessor() const = 0;
    /// Whether its commands may register data suppliers.
    virtual bool suppliesData() const = 0;
};
