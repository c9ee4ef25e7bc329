#include "support/TestCommand.h"

std::shared_ptr<KRPluginCommand> commandWithSource(const QString &source)
{
    return commandWithScript(std::make_shared<KRPluginScript>(source, QStringLiteral("Tidy.js")));
}

std::shared_ptr<KRPluginCommand> commandWithScript(std::shared_ptr<KRPluginScript> script)
{
    const OrderedVariantDictionary handlers{
        {QStringLiteral("run"), QStringLiteral("onRun")},
        {QStringLiteral("setUp"), QStringLiteral("onSetUp")},
        {QStringLiteral("tearDown"), QStringLiteral("onTearDown")},
    };
    return std::make_shared<KRPluginCommand>(std::move(script), QStringLiteral("tidy"), QStringLiteral("Tidy Layers"),
        handlers, std::nullopt, KRPluginCommand::Scope::Document);
}
