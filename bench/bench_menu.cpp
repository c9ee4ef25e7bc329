// How much longer it takes to fill and sort a menu of 10,000 commands than to sort their titles alone, by collation
// keys that are made once for each.

#include "manager/KRPluginManager.h"
#include "platform/Menu.h"
#include "support/Interleaved.h"

#include <QCollator>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <algorithm>

namespace {

constexpr int commandsPerPlugin = 100;

/// Two words in any case, as commands are called; the same ones for the same generator.
QByteArray randomTitle(QRandomGenerator &random)
{
    QByteArray title;
    for (const int length : {random.bounded(3, 10), random.bounded(3, 14)}) {
        if (!title.isEmpty())
            title += ' ';
        for (int i = 0; i < length; ++i)
            title += char((random.bounded(8) == 0 ? 'A' : 'a') + random.bounded(26));
    }
    return title;
}

QByteArray command(int number, const QByteArray &title)
{
    const QByteArray shortcut = number % 10 == 0 ? R"(, "shortcut": "cmd shift k")" : "";
    return R"({"script": "script.js", "identifier": "command-)" + QByteArray::number(number) + R"(", "name": ")" + title
        + '"' + shortcut + '}';
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

/// A plug-in whose commands all lie in the menu itself, so that all of them are sorted.
QStringList generatePlugin(const QString &folder, int number, QRandomGenerator &random)
{
    QStringList titles;
    QByteArrayList commands;
    QByteArrayList items;
    for (int i = 0; i < commandsPerPlugin; ++i) {
        const auto title = randomTitle(random);
        titles.append(QString::fromUtf8(title));
        commands.append(command(i, title));
        items.append("\"command-" + QByteArray::number(i) + '"');
    }
    const auto scripts = folder + QStringLiteral("/%1.korvanplugin/Contents/Korvan").arg(number);
    QDir().mkpath(scripts);
    write(scripts + QStringLiteral("/script.js"), "function onRun() {}\n");
    write(scripts + QStringLiteral("/manifest.json"),
        R"({"identifier": "com.example.bench-)" + QByteArray::number(number) + R"(", "commands": [)"
            + commands.join(", ") + R"(], "menu": {"isRoot": true, "items": [)" + items.join(", ") + "]}}");
    return titles;
}

QStringList sortedTitles(const QStringList &titles)
{
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::vector<std::pair<QCollatorSortKey, const QString *>> keyed;
    keyed.reserve(std::size_t(titles.size()));
    for (const auto &title : titles)
        keyed.emplace_back(collator.sortKey(title), &title);
    std::sort(keyed.begin(), keyed.end(),
        [](const auto &first, const auto &second) { return first.first.compare(second.first) < 0; });
    QStringList sorted;
    sorted.reserve(titles.size());
    for (const auto &entry : keyed)
        sorted.append(*entry.second);
    return sorted;
}

/// A registry of plug-ins, and the titles of all their commands.
struct Registry
{
    explicit Registry(int commands)
    {
        QRandomGenerator random(1);
        for (int i = 0; i < commands / commandsPerPlugin; ++i)
            titles += generatePlugin(folder.path(), i, random);
        manager =
            std::make_unique<KRPluginManager>(QList<QUrl>{QUrl::fromLocalFile(folder.path() + u'/')}, nullptr, nullptr);
        manager->reloadPlugins();
    }

    QTemporaryDir folder;
    QStringList titles;
    std::unique_ptr<KRPluginManager> manager;
};

void measureFilling(benchmark::State &state, Registry &registry, const std::function<void()> &prepare)
{
    Menu menu;
    measureInterleaved(
        state, [&] { benchmark::DoNotOptimize(sortedTitles(registry.titles)); },
        [&] { registry.manager->addPluginsToMenu(menu, [](const MenuItem &) {}); },
        [&] {
            menu = {};
            prepare();
        });
    if (qsizetype(menu.items().size()) != registry.titles.size())
        qFatal("%zu items are not %lld", menu.items().size(), qlonglong(registry.titles.size()));
}

/// As a host fills its menu: of plug-ins that nobody has asked for their menus yet.
void fillAfterAReload(benchmark::State &state)
{
    Registry registry(int(state.range(0)));
    measureFilling(state, registry, [&registry] { registry.manager->reloadPlugins(); });
}

void fillAgain(benchmark::State &state)
{
    Registry registry(int(state.range(0)));
    measureFilling(state, registry, [] {});
}

} // namespace

BENCHMARK(fillAfterAReload)->Arg(10000)->Iterations(101)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(fillAgain)->Arg(10000)->Iterations(101)->UseManualTime()->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QLocale::setDefault(QLocale(QLocale::English)); // whatever language this machine speaks
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
