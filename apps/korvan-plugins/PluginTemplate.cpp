#include "PluginTemplate.h"

#include "EditorFiles.h"
#include "hosting/Examples.h"
#include "hosting/FolderCopy.h"
#include "platform/JSONText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {

const auto extension = QStringLiteral(".korvanplugin");

KRError failure(const QString &message)
{
    return {{}, 0, message};
}

QByteArray jsonText(const QString &text)
{
    return jsonFromVariant(text, JSONStyle::Compact);
}

/// Puts the plug-in's own values into the copied manifest, which names them in double braces.
bool fillManifest(const NewPlugin &plugin, const QString &bundle)
{
    QFile file(bundle + QStringLiteral("/Contents/Korvan/manifest.json"));
    if (!file.open(QIODevice::ReadWrite))
        return false;
    auto manifest = file.readAll();
    manifest.replace("\"{{hostVersion}}\"", jsonText(plugin.hostVersion));
    manifest.replace("\"{{identifier}}\"", jsonText(plugin.identifier));
    manifest.replace("\"{{name}}\"", jsonText(plugin.name)); // the last: it may itself hold braces
    return file.resize(0) && file.seek(0) && file.write(manifest) == manifest.size() && file.flush();
}

bool addEditorFiles(const QString &typings, const QString &bundle)
{
    const auto copy = bundle + u'/' + editorTypings;
    return copyFolder(typings, copy) && QDir().rename(copy + u'/' + editorProject, bundle + u'/' + editorProject);
}

} // namespace

std::optional<QString> folderNameForPlugin(const QString &name)
{
    // With the extension and what is put behind a copy's name it stays below the 255 bytes of file systems.
    constexpr qsizetype longestName = 200;
    QString folder;
    for (const auto character : name) {
        const bool isUsable = character != u'/' && character != u'\\' && character.unicode() >= u' '
            && !(character.unicode() >= 0x7f && character.unicode() < 0xa0);
        const bool isSecondDot = character == u'.' && folder.endsWith(u'.'); // hosts do not unpack names with two
        if (!isSecondDot)
            folder += isUsable ? character : QChar(u'-');
    }
    while (folder.startsWith(u'.') || folder.startsWith(u' '))
        folder.remove(0, 1);
    while (folder.toUtf8().size() > longestName)
        folder.chop(folder.back().isLowSurrogate() ? 2 : 1);
    folder = folder.trimmed();
    return folder.isEmpty() ? std::nullopt : std::optional(folder + extension);
}

std::optional<QString> identifierForPlugin(const QString &name)
{
    QString words;
    const auto characters = name.toLower().normalized(QString::NormalizationForm_D);
    for (const auto character : characters) {
        if (character.isMark())
            continue; // an accent of the letter before it
        const bool isUsable = (character >= u'a' && character <= u'z') || (character >= u'0' && character <= u'9');
        if (isUsable)
            words += character;
        else if (!words.isEmpty() && !words.endsWith(u'-'))
            words += u'-';
    }
    while (words.endsWith(u'-'))
        words.chop(1);
    return words.isEmpty() ? std::nullopt : std::optional(QStringLiteral("com.example.") + words);
}

std::optional<KRError> createPlugin(const NewPlugin &plugin, const QString &path)
{
    const auto examples = examplesFolder();
    const auto source = examples.value_or(QString()) + QStringLiteral("/templates/") + plugin.templateName;
    if (!examples || !QFileInfo(source).isDir())
        return failure(QStringLiteral("The templates that come with this program are not installed."));
    const auto typings = typingsFolder();
    if (!typings)
        return failure(QStringLiteral("The typings that come with this program are not installed."));
    const QFileInfo target(path);
    if (target.exists() || target.isSymLink())
        return failure(QStringLiteral("There is already something at \"%1\".").arg(path));
    if (!QDir().mkpath(target.path()))
        return failure(QStringLiteral("The folder \"%1\" cannot be made.").arg(target.path()));
    // Hidden, so that no host finds a half of it.
    const QTemporaryDir work(target.path() + QStringLiteral("/.new-plugin-XXXXXX"));
    const auto copy = work.filePath(target.fileName());
    const bool isMade =
        work.isValid() && copyFolder(source, copy) && fillManifest(plugin, copy) && addEditorFiles(*typings, copy);
    // Whatever came to that place meanwhile is not empty, and is not replaced.
    if (!isMade || !QDir().rename(copy, path))
        return failure(QStringLiteral("The plug-in \"%1\" cannot be written.").arg(path));
    return std::nullopt;
}
