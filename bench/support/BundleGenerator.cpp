#include "support/BundleGenerator.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>

namespace {

const auto loremWords = QStringLiteral("tidy sort layers rename grid palette export align distribute spacing artboard");

class Generator
{
public:
    explicit Generator(const QString &folder)
        : m_folder(folder)
        , m_random(4711)
    { }

    GeneratedBundles generate(int count)
    {
        for (int i = 0; i < count; ++i)
            generateBundle(i);
        return m_result;
    }

private:
    void write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(path));
    }

    QString nestedFolder(int index)
    {
        QString folder = m_folder;
        const int depth = 1 + int(m_random.bounded(4));
        for (int level = 0; level < depth; ++level)
            folder += QStringLiteral("/Set %1").arg((index / 20 + level * 7) % 40);
        QDir().mkpath(folder);
        return folder;
    }

    QString text(int length)
    {
        static const auto words = loremWords.split(u' ');
        QString result;
        while (result.size() < length)
            result += words[int(m_random.bounded(int(words.size())))] + u' ';
        return result;
    }

    QByteArray script(int size)
    {
        QByteArray source;
        for (int i = 0; source.size() < size; ++i) {
            source += "// " + text(60).toUtf8() + "\nfunction helper" + QByteArray::number(i)
                + "(layer, index) {\n    var name = layer.name + ' ' + index;\n    if (name.length > 20) { return "
                  "name.slice(0, 20); }\n"
                  "    return name;\n}\n";
        }
        return source + "function onRun(context) { return helper0({name: 'a'}, 1); }\nfunction onSelection() { }\n";
    }

    QJsonObject command(int index, int scriptCount)
    {
        QJsonObject object{
            {QStringLiteral("name"), QStringLiteral("Command %1").arg(index)},
            {QStringLiteral("identifier"), QStringLiteral("command-%1").arg(index)},
            {QStringLiteral("script"), QStringLiteral("script-%1.js").arg(index % scriptCount)},
        };
        if (index % 3 == 0)
            object.insert(QStringLiteral("shortcut"), QStringLiteral("cmd shift %1").arg(index));
        if (index % 2 == 0) {
            object.insert(QStringLiteral("handlers"),
                QJsonObject{{QStringLiteral("run"), QStringLiteral("onRun")},
                    {QStringLiteral("actions"),
                        QJsonObject{{QStringLiteral("SelectionChanged.finish"), QStringLiteral("onSelection")}}}});
        }
        return object;
    }

    QByteArray manifest(int index, int commandCount, int scriptCount)
    {
        QJsonArray commands;
        QJsonArray items;
        for (int i = 0; i < commandCount; ++i) {
            commands.append(command(i, scriptCount));
            items.append(QStringLiteral("command-%1").arg(i));
        }
        QJsonObject object{
            {QStringLiteral("name"), QStringLiteral("Plug-in %1").arg(index)},
            {QStringLiteral("identifier"), QStringLiteral("com.example.plugin-%1").arg(index)},
            {QStringLiteral("version"), QStringLiteral("1.%1.%2").arg(index % 10).arg(index % 7)},
            {QStringLiteral("author"), QStringLiteral("Ada Example")},
            {QStringLiteral("authorEmail"), QStringLiteral("ada@example.com")},
            {QStringLiteral("homepage"), QStringLiteral("https://example.com/plugin-%1").arg(index)},
            {QStringLiteral("appcast"), QStringLiteral("https://example.com/plugin-%1.json").arg(index)},
            {QStringLiteral("compatibleVersion"), QStringLiteral("90")},
            {QStringLiteral("maxCompatibleVersion"), QStringLiteral("99")},
            {QStringLiteral("description"), text(100 + int(m_random.bounded(900)))},
            {QStringLiteral("commands"), commands},
            {QStringLiteral("menu"),
                QJsonObject{{QStringLiteral("title"), QStringLiteral("Plug-in %1").arg(index)},
                    {QStringLiteral("items"), items}}},
        };
        if (index % 3 == 0)
            object.insert(QStringLiteral("icon"), QStringLiteral("icon.png"));
        return QJsonDocument(object).toJson();
    }

    void generateBundle(int index)
    {
        const auto folder = nestedFolder(index);
        const auto bundle = QStringLiteral("%1/Plug-in %2.korvanplugin").arg(folder).arg(index);
        QDir().mkpath(bundle + QStringLiteral("/Contents/Korvan"));
        QDir().mkpath(bundle + QStringLiteral("/Contents/Resources"));
        if (index % 50 == 49) {
            write(bundle + QStringLiteral("/Contents/Korvan/manifest.json"), "{\"name\": \"Broken\",,}");
            return;
        }
        if (index % 25 == 24)
            QFile::link(folder, m_folder + QStringLiteral("/Link %1").arg(index));
        writeBundle(bundle, index);
    }

    void writeBundle(const QString &bundle, int index)
    {
        const int commandCount = 1 + int(m_random.bounded(8));
        const int scriptCount = 1 + int(m_random.bounded(std::min(3, commandCount)));
        const auto json = manifest(index, commandCount, scriptCount);
        write(bundle + QStringLiteral("/Contents/Korvan/manifest.json"), json);
        m_result.textBytes += json.size();
        for (int i = 0; i < scriptCount; ++i) {
            const auto source = script(2000 + int(m_random.bounded(38000)));
            write(bundle + QStringLiteral("/Contents/Korvan/script-%1.js").arg(i), source);
            m_result.textBytes += source.size();
        }
        if (index % 3 == 0) {
            const QByteArray icon(1000 + int(m_random.bounded(4000)), char(index));
            write(bundle + QStringLiteral("/Contents/Resources/icon.png"), icon);
            m_result.iconBytes += icon.size();
        }
        m_result.bundles += 1;
        m_result.commands += commandCount;
    }

    QString m_folder;
    QRandomGenerator m_random;
    GeneratedBundles m_result;
};

} // namespace

GeneratedBundles generateBundles(const QString &folder, int count)
{
    return Generator(folder).generate(count);
}
