#include "support/GeneratedPlugin.h"

#include "platform/JSONText.h"
#include "support/BundleBuilder.h"

#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <random>

namespace {

class Generator
{
public:
    explicit Generator(unsigned seed)
        : m_random(seed)
    { }

    QUrl write(const QString &folder)
    {
        BundleBuilder builder(folder, QStringLiteral("Plug-in ") + text());
        QVariantMap manifest;
        for (const auto *key : {"author", "authorEmail", "name", "identifier", "description", "version",
                 "compatibleVersion", "maxCompatibleVersion", "homepage", "appcast", "unknown"}) {
            if (chance(2))
                manifest.insert(QString::fromLatin1(key), text());
        }
        if (chance(4))
            manifest.insert(QStringLiteral("version"), chance(2) ? QVariant(below(9)) : QVariant(below(99) / 8.0));
        if (chance(2))
            manifest.insert(QStringLiteral("homepage"), QStringLiteral("https://example.com/%1?q=%1#x").arg(text()));
        for (const auto *key : {"suppliesData", "disableCocoaScriptPreprocessor"}) {
            if (chance(3))
                manifest.insert(QString::fromLatin1(key), chance(2));
        }
        if (chance(2))
            manifest.insert(QStringLiteral("menu"), menu(0));
        if (chance(3))
            manifest.insert(QStringLiteral("icon"), writeIcon(builder));
        manifest.insert(QStringLiteral("commands"), commands(writeScripts(builder)));
        return builder.manifest(jsonFromVariant(manifest, JSONStyle::Compact)).url();
    }

private:
    unsigned below(unsigned limit) { return unsigned(m_random() % limit); }
    bool chance(unsigned ofHowMany) { return below(ofHowMany) == 0; }

    /// No slash in it, so that it may be a file's name as well.
    QString text()
    {
        static const QStringList pieces{QStringLiteral("a"), QStringLiteral("Layer"), QStringLiteral(" "),
            QStringLiteral("."), QStringLiteral("ü"), QStringLiteral("層"), QStringLiteral("\U0001F600"),
            QStringLiteral("\""), QStringLiteral("\\"), QStringLiteral("%41"), QStringLiteral("e\u0301"),
            QStringLiteral("\n"), QStringLiteral("\u2028"), QStringLiteral("-")};
        QString result;
        for (auto count = 1 + below(6); count > 0; --count)
            result += pieces[below(unsigned(pieces.size()))];
        return result;
    }

    QByteArray bytes()
    {
        QByteArray result;
        for (auto count = below(300); count > 0; --count)
            result += char(below(256));
        return result;
    }

    QString writeIcon(BundleBuilder &builder)
    {
        const auto path = (chance(2) ? QStringLiteral("art/x/") : QString()) + QStringLiteral("i") + text();
        if (!chance(5)) // else one that cannot be read
            builder.resource(path, 'x' + bytes());
        return path;
    }

    QStringList writeScripts(BundleBuilder &builder)
    {
        QStringList paths;
        for (auto count = below(4); count > 0; --count) {
            paths.append((chance(3) ? QStringLiteral("Scripts/") : QString())
                + QStringLiteral("s%1").arg(chance(3) ? QString() : text()));
            builder.script(paths.last(), chance(5) ? QByteArray("\xEF\xBB\xBF") : text().toUtf8());
        }
        return paths;
    }

    QVariantList commands(const QStringList &scripts)
    {
        QVariantList commands;
        for (auto count = below(6); count > 0; --count) {
            QVariantMap command{{QStringLiteral("script"),
                scripts.isEmpty() || chance(8) ? QStringLiteral("none.js") : scripts[below(unsigned(scripts.size()))]}};
            for (const auto *key : {"name", "identifier", "handler", "shortcut", "scope", "unknown"}) {
                if (chance(2))
                    command.insert(QString::fromLatin1(key), text());
            }
            if (chance(4))
                command.insert(QStringLiteral("scope"), QStringLiteral("application"));
            if (chance(2))
                command.insert(QStringLiteral("handlers"), handlers());
            commands.append(command);
        }
        return commands;
    }

    QVariantMap handlers()
    {
        QVariantMap handlers, actions;
        for (const auto *key : {"run", "setUp", "tearDown", "Save", "Save.begin"}) {
            if (chance(2))
                handlers.insert(QString::fromLatin1(key), chance(5) ? QVariant(5) : QVariant(text()));
        }
        for (const auto *key : {"Save", "Save.begin", "Open", "Open.finish"}) {
            if (chance(2))
                actions.insert(QString::fromLatin1(key), text());
        }
        if (chance(2))
            handlers.insert(QStringLiteral("actions"), actions);
        return handlers;
    }

    QVariantMap menu(int depth)
    {
        QVariantList items;
        for (auto count = below(4); count > 0; --count) {
            switch (below(4)) {
            case 0:
                items.append(QStringLiteral("-"));
                break;
            case 1:
                items.append(depth > 3 ? QVariant(0.1) : QVariant(menu(depth + 1)));
                break;
            case 2:
                items.append(QVariant::fromValue(nullptr));
                break;
            default:
                items.append(text());
            }
        }
        QVariantMap menu{{QStringLiteral("items"), items}};
        if (chance(2))
            menu.insert(QStringLiteral("title"), text());
        if (chance(3))
            menu.insert(QStringLiteral("isRoot"), chance(2));
        return menu;
    }

    std::mt19937 m_random;
};

} // namespace

QUrl writeGeneratedPlugin(const QString &folder, unsigned number)
{
    return Generator(number).write(folder);
}
