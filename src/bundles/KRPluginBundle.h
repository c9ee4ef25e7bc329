#pragma once

#include "bundles/KRPluginBundleIconInfo.h"
#include "commands/CommandTable.h"
#include "commands/KRPluginCommandBundle.h"
#include "platform/Export.h"
#include "platform/LogMessages.h"
#include "platform/OrderedDictionary.h"
#include "platform/Snapshot.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVariantList>
#include <QVariantMap>

#include <memory>
#include <optional>
#include <vector>

struct PluginDetails;
struct PluginLoading;
struct PluginManifest;

/// One plug-in folder: what its manifest says, and its commands, which it owns. Held by shared pointers. Main thread
/// only.
///
/// Read once and never again: a reload makes new bundles. Only what has a setter changes afterwards.
class KORVAN_EXPORT KRPluginBundle final : public KRPluginCommandBundle
{
public:
    /// `pluginBundleWithURL:`. Null, without a message, unless there is a folder with the extension "korvanplugin" at
    /// the URL; else as initPluginBundleWithURL().
    static std::shared_ptr<KRPluginBundle> pluginBundleWithURL(const QUrl &url);
    /// Reads the bundle. Null when the manifest is missing or no JSON object; that is said to the host's log target,
    /// or in the system log. Wrongly typed values count as absent, an unreadable icon is only logged.
    static std::shared_ptr<KRPluginBundle> initPluginBundleWithURL(const QUrl &url);
    /// The same for a folder that was found by a walk; messages wait in `loading`. Any thread, as long as one only
    /// holds the bundle.
    static std::shared_ptr<KRPluginBundle> initWithPath(const QByteArray &path, PluginLoading &loading);
    /// `initWithName:identifier:commands:icon:`. A bundle without a folder: its url() is empty. Author, its e-mail and
    /// the description are empty texts, the version is "1.0". It becomes the plug-in of the commands, which are in
    /// order; of two with the same identifier the later one stays. A null image: no icon.
    static std::shared_ptr<KRPluginBundle> initWithName(const std::optional<QString> &name,
        const std::optional<QString> &identifier, const std::vector<std::shared_ptr<KRPluginCommand>> &commands,
        const QImage &icon);
    /// Hands messages that have waited to those who take them.
    static void deliver(const std::vector<LogMessages::Message> &messages);
    ~KRPluginBundle() override;

    /// `commandsFromArray:korvanPluginURL:pluginBundle:`. The elements that make a command, by identifier; a later one
    /// replaces an earlier one. Nil gives none.
    static CommandTable commandsFromArray(const std::optional<QVariantList> &array, const QUrl &korvanPluginURL,
        const std::shared_ptr<KRPluginBundle> &pluginBundle);
    /// The localized "untitled script".
    static QString scriptDefaultTitle();

    /// The bundle's folder.
    QUrl url() const override;
    const CommandTable &commands() const { return m_commands; }
    std::optional<QString> identifier() const override { return m_identifier; }
    std::optional<QString> version() const { return m_version; }
    std::optional<QString> name() const override { return m_name; }
    std::optional<QString> pluginDescription() const;
    std::optional<QString> author() const;
    std::optional<QString> authorEmail() const;
    bool suppliesData() const override { return m_suppliesData; }
    QUrl homepageURL() const;
    std::optional<QString> compatibleVersion() const;
    std::optional<QString> maximumCompatibleVersion() const;

    /// The update feed; empty when there is none. The main thread has to be the first to ask; from then on any thread
    /// may.
    QUrl updatingInfoURL() const;
    /// Any thread.
    void setUpdatingInfoURL(const QUrl &url);
    /// The manifest's "menu", or one made from the commands on first request and kept.
    QVariantMap menuDescription() const;
    /// Nil: the next request makes a new one.
    void setMenuDescription(const std::optional<QVariantMap> &description);
    /// False until whoever found the bundle has decided.
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled) { m_enabled = enabled; }
    bool disableCocoaScriptPreprocessor() const override { return m_disableCocoaScriptPreprocessor; }
    void setDisableCocoaScriptPreprocessor(bool disable) { m_disableCocoaScriptPreprocessor = disable; }
    /// Null when the manifest names no icon.
    const std::shared_ptr<KRPluginBundleIconInfo> &iconInfo() const { return m_iconInfo; }
    /// The icon's picture; null without an icon, and when its bytes are no image.
    QImage icon() const;
    /// The picture for dialogs: 64 by 64 points, of so many pixels each (1 to 8) as the result's own ratio says. The
    /// application's picture "img-plugin-thumbnail-alert-112" takes the place of an icon that there is none of; without
    /// that one too, it is empty.
    QImage alertIcon(qreal devicePixelRatio = 1) const;
    void setIconInfo(const std::shared_ptr<KRPluginBundleIconInfo> &info) { m_iconInfo = info; }

    /// "identifier(version)", with "unknown.plugin" and "000" for what is nil.
    QString versionedIdentifier() const;
    /// Whether the application's major version lies between both bounds. A plug-in that does not declare both of them
    /// is not compatible; this strictness is deliberate.
    bool isCompatible() const;
    /// The file or folder of that name in Contents/Resources; empty when there is none.
    QUrl urlForResourceNamed(const QString &name) const;
    /// The compiled programs and libraries in the bundle's folder that this process may execute, each with its
    /// architectures (see CPUArchitecture.h). Scripts and whatever else is no Mach-O file for a known architecture is
    /// not among them. Hidden files count, and so does every folder; links do not, neither to files nor to folders.
    /// What cannot be read is passed over. Walks the whole folder on every call.
    QMap<QUrl, QStringList> executableFileURLsAndArchitectures() const;
    /// Whether the plug-in carries an executable that is not for the application's own processor, be it one that the
    /// system would translate. True for every plug-in where the processor is neither 64-bit x86 nor 64-bit Arm. Walks
    /// the whole folder on every call.
    bool hasUnsupportedBinaries() const;
    QString debugDescription() const;

    /// The bundle as its manifest would say it, keys in the manifest's usual order; what is nil is left out.
    /// "suppliesData" and "disableCocoaScriptPreprocessor" are left out too, even when they are true; that loss is
    /// deliberate. "menu" is always there, as menuDescription() makes one.
    OrderedVariantDictionary metadata() const;
    /// Writes the bundle as a folder at the URL: the manifest, each command's script under its plain file name, and the
    /// icon. Of several scripts with the same file name the first one is written, and none in the place of the
    /// manifest; that is deliberate. Whatever else the bundle was read with is not written.
    ///
    /// False when that fails; why is said to the host's log target, or in the system log. Nothing is made then, and
    /// never anything replaced: it fails where something is at the URL already, and where there is no folder for it.
    bool writeToURL(const QUrl &url) const;
    /// Hands an error to the host's log target, as the sender "__plugin-loader", or writes it to the system log.
    static void logErrorString(const QString &message);

    const ScriptClass &scriptClass() const override;

private:
    struct Key
    { };

public:
    /// For initWithPath() and initWithName() alone; the latter has no path.
    KRPluginBundle(Key key, const QByteArray &path);

private:
    void take(PluginManifest manifest, PluginLoading &loading);
    void readIcon(const QString &iconPath, LogMessages &messages);
    static void addCommand(CommandTable &table, const std::shared_ptr<KRPluginCommand> &command,
        const std::shared_ptr<KRPluginBundle> &bundle);
    void makeCommands(std::vector<CommandEntry> &entries, PluginLoading &loading);
    void fillGaps();
    PluginDetails &details() const;

    QByteArray m_path;
    CommandTable m_commands;
    std::optional<QString> m_identifier;
    std::optional<QString> m_version;
    std::optional<QString> m_name;
    /// The manifest as it was read, until somebody asks for what was not taken from it yet.
    mutable QByteArray m_manifestText;
    mutable std::unique_ptr<PluginDetails> m_details;
    /// Null while it is the manifest's.
    Snapshot<QUrl> m_updatingInfoURL;
    std::shared_ptr<KRPluginBundleIconInfo> m_iconInfo;
    bool m_suppliesData = false;
    bool m_enabled = false;
    bool m_disableCocoaScriptPreprocessor = false;
};
