// Prints resources/typings/host.d.ts.

#include "HostTypings.h"
#include "bundles/KRPluginBundle.h"
#include "commands/CommandContext.h"
#include "document/DocumentContext.h"

#include <QCoreApplication>
#include <QImage>

#include <cstdio>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const auto command = std::make_shared<KRPluginCommand>(
        nullptr, std::nullopt, std::nullopt, QStringLiteral("onRun"), KRPluginCommand::Scope::Document);
    const auto plugin = KRPluginBundle::initWithName(std::nullopt, std::nullopt, {}, QImage());
    const QByteArray parts[] = {
        interfaceOfKeys(commandContextKeys(), "CommandContext"),
        interfaceOfKeys(std::span<const DocumentContextKey>(documentContextKeys), "DocumentContext"),
        interfaceOfClass(command->scriptClass(), "Command"),
        interfaceOfClass(plugin->scriptClass(), "Plugin"),
        interfaceOfClass(Document().scriptClass(), "Document"),
        interfaceOfClass(Layer(QVariantMap()).scriptClass(), "Layer"),
    };
    QByteArray text =
        "// What the application hands to scripts. Made by `./dev typings` from the tables that say what scripts may\n"
        "// use; changes are lost.\n\ndeclare namespace Korvan {\n";
    bool isFirst = true;
    for (const auto &part : parts) {
        text += (isFirst ? "" : "\n") + part;
        isFirst = false;
    }
    text += "}\n";
    return std::fwrite(text.constData(), 1, size_t(text.size()), stdout) == size_t(text.size()) ? 0 : 1;
}
