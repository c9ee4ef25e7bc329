#include "HostOptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>

namespace {

std::optional<QString> valueIfSet(const QCommandLineParser &parser, const QCommandLineOption &option)
{
    return parser.isSet(option) ? std::optional(parser.value(option)) : std::nullopt;
}

} // namespace

HostOptions parseHostOptions(const QCoreApplication &application)
{
    const QCommandLineOption folder(QStringLiteral("folder"),
        QStringLiteral("A plug-in folder; may be repeated, replaces the usual ones."), QStringLiteral("DIR"));
    const QCommandLineOption support({QStringLiteral("support-dir"), QStringLiteral("support-folder")},
        QStringLiteral("The application's support folder."), QStringLiteral("DIR"));
    const QCommandLineOption defaults(
        QStringLiteral("defaults"), QStringLiteral("The file of the user's settings."), QStringLiteral("FILE"));
    const QCommandLineOption resources(
        QStringLiteral("resources"), QStringLiteral("The application's resources."), QStringLiteral("DIR"));
    const QCommandLineOption version(
        QStringLiteral("host-version"), QStringLiteral("The application's version."), QStringLiteral("VERSION"));
    const QCommandLineOption blocklist(QStringLiteral("blocklist-url"),
        QStringLiteral("Where the vendor's list is fetched, up to the host's name."), QStringLiteral("URL"));
    const QCommandLineOption safeMode(QStringLiteral("safe-mode"), QStringLiteral("Load every plug-in disabled."));
    const QCommandLineOption appearance(
        QStringLiteral("appearance"), QStringLiteral("system, light or dark."), QStringLiteral("NAME"));
    QCommandLineOption screenshots(QStringLiteral("screenshots"), QString(), QStringLiteral("DIR"));
    screenshots.setFlags(QCommandLineOption::HiddenFromHelp);
    QCommandLineOption endWhenShown(QStringLiteral("end-when-shown"));
    endWhenShown.setFlags(QCommandLineOption::HiddenFromHelp);

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("The reference host of KorvanPluginManager."));
    parser.addOptions(
        {folder, support, defaults, resources, version, blocklist, safeMode, appearance, screenshots, endWhenShown});
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(
        QStringLiteral("files"), QStringLiteral("Documents to open."), QStringLiteral("[FILE…]"));
    parser.process(application);

    HostOptions options;
    if (parser.isSet(folder))
        options.folders = parser.values(folder);
    options.supportFolder = valueIfSet(parser, support);
    options.defaultsFile = valueIfSet(parser, defaults);
    options.resourcesFolder = valueIfSet(parser, resources);
    options.hostVersion = valueIfSet(parser, version);
    options.blocklistURL = valueIfSet(parser, blocklist);
    options.safeMode = parser.isSet(safeMode);
    options.appearance = valueIfSet(parser, appearance);
    options.screenshotFolder = valueIfSet(parser, screenshots);
    options.endsWhenShown = parser.isSet(endWhenShown);
    options.files = parser.positionalArguments();
    return options;
}
