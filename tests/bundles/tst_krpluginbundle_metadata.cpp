// Plug-ins that are made instead of read, and what a manifest would say of any plug-in.

#include "bundles/KRPluginBundle.h"
#include "platform/JSONText.h"
#include "support/BundleBuilder.h"
#include "support/NilableText.h"
#include "support/TestEnvironment.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_KRPluginBundle_Metadata : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_environment = std::make_unique<TestEnvironment>(); }
    void cleanup() { m_environment.reset(); }

    void madeFromParts();
    void madeOfNil();
    void laterCommandOfAnIdentifierCounts();
    void metadataHasTheManifestsOrder();
    void metadataLeavesOutWhatIsNil();
    void metadataLosesSwitches();
    void metadataFollowsChanges();

private:
    BundleBuilder builder() const { return BundleBuilder(m_environment->path(u"Plugins"_s), u"Read"_s); }

    std::unique_ptr<TestEnvironment> m_environment;
};

namespace {

std::shared_ptr<KRPluginCommand> command(const QString &identifier, const QString &file = u"a.js"_s)
{
    return std::make_shared<KRPluginCommand>(std::make_shared<KRPluginScript>(u"var a;"_s, file), identifier,
        identifier.toUpper(), u"onRun"_s, KRPluginCommand::Scope::Document);
}

std::shared_ptr<KRPluginBundle> made(
    const std::vector<std::shared_ptr<KRPluginCommand>> &commands, const QImage &icon = {})
{
    return KRPluginBundle::initWithName(u"Tidy"_s, u"com.example.tidy"_s, commands, icon);
}

QImage picture()
{
    QImage image(3, 2, QImage::Format_ARGB32);
    image.fill(QColor(1, 2, 3, 128));
    return image;
}

QStringList keysOf(const OrderedVariantDictionary &dictionary)
{
    QStringList keys;
    for (const auto &entry : dictionary)
        keys.append(entry.first);
    return keys;
}

} // namespace

void tst_KRPluginBundle_Metadata::madeFromParts()
{
    const auto first = command(u"a"_s);
    const auto bundle = made({first, command(u"b"_s)}, picture());
    QCOMPARE(bundle->name(), Text(u"Tidy"_s));
    QCOMPARE(bundle->identifier(), Text(u"com.example.tidy"_s));
    QCOMPARE(bundle->author(), Text(u""_s));
    QCOMPARE(bundle->authorEmail(), Text(u""_s));
    QCOMPARE(bundle->pluginDescription(), Text(u""_s));
    QCOMPARE(bundle->version(), Text(u"1.0"_s));
    QCOMPARE(bundle->versionedIdentifier(), u"com.example.tidy(1.0)"_s);
    QVERIFY(bundle->url().isEmpty());
    QVERIFY(bundle->urlForResourceNamed(u"etc"_s).isEmpty());
    QVERIFY(bundle->homepageURL().isEmpty());
    QVERIFY(bundle->updatingInfoURL().isEmpty());
    QCOMPARE(bundle->compatibleVersion(), nil);
    QCOMPARE(bundle->maximumCompatibleVersion(), nil);
    QVERIFY(!bundle->suppliesData());
    QVERIFY(!bundle->isEnabled());
    QVERIFY(!bundle->disableCocoaScriptPreprocessor());
    QCOMPARE(bundle->iconInfo()->path(), u"icon.png"_s);
    QCOMPARE(bundle->iconInfo()->image(), picture());
    QCOMPARE(bundle->commands().size(), std::size_t(2));
    QCOMPARE(bundle->commands().begin()->first, u"a"_s);
    QCOMPARE(first->pluginBundle().get(), bundle.get());
    QCOMPARE(first->commandSpecifier().stringValue(), Text(u"com.example.tidy/a"_s));
}

void tst_KRPluginBundle_Metadata::madeOfNil()
{
    const auto bundle = KRPluginBundle::initWithName(nil, nil, {}, {});
    QCOMPARE(bundle->name(), nil);
    QCOMPARE(bundle->versionedIdentifier(), u"unknown.plugin(1.0)"_s);
    QVERIFY(!bundle->iconInfo());
    QCOMPARE(keysOf(bundle->metadata()),
        (QStringList{u"author"_s, u"authorEmail"_s, u"description"_s, u"menu"_s, u"version"_s, u"commands"_s}));
    QCOMPARE(bundle->metadata()[u"menu"_s].toMap().value(u"title"_s).toString(), KRPluginBundle::scriptDefaultTitle());
}

void tst_KRPluginBundle_Metadata::laterCommandOfAnIdentifierCounts()
{
    const auto later = command(u"a"_s, u"later.js"_s);
    const auto bundle = made({command(u"a"_s), later});
    QCOMPARE(bundle->commands().size(), std::size_t(1));
    QCOMPARE(bundle->commands().at(u"a"_s), later);
}

void tst_KRPluginBundle_Metadata::metadataHasTheManifestsOrder()
{
    const auto bundle = KRPluginBundle::pluginBundleWithURL(
        builder()
            .manifest(R"({"commands": [{"script": "s.js", "name": "B", "shortcut": "cmd b", "scope": "application"},
                {"script": "s.js", "identifier": "a"}], "icon": "i.png", "maxCompatibleVersion": "99",
                "compatibleVersion": "97", "version": 1.5, "menu": {"title": "T", "other": [1]},
                "appcast": "https://example.com/f", "homepage": "https://example.com/ü",
                "description": "D", "identifier": "i", "name": "N", "authorEmail": "e", "author": "A"})")
            .script(u"s.js"_s, "")
            .url());
    const auto metadata = bundle->metadata();
    QCOMPARE(keysOf(metadata),
        (QStringList{u"author"_s, u"authorEmail"_s, u"name"_s, u"identifier"_s, u"description"_s, u"homepage"_s,
            u"appcast"_s, u"menu"_s, u"version"_s, u"compatibleVersion"_s, u"maxCompatibleVersion"_s, u"icon"_s,
            u"commands"_s}));
    QCOMPARE(jsonFromVariant(QVariant::fromValue(metadata), JSONStyle::Compact),
        R"({"author":"A","authorEmail":"e","name":"N","identifier":"i","description":"D",)"
        R"("homepage":"https://example.com/%C3%BC","appcast":"https://example.com/f",)"
        R"("menu":{"other":[1],"title":"T"},"version":"1.5","compatibleVersion":"97","maxCompatibleVersion":"99",)"
        R"("icon":"i.png","commands":[{"identifier":"b","name":"B",)"
        R"("handlers":{"run":"onRun","setUp":"onSetUp","tearDown":"onTearDown"},"shortcut":"cmd b",)"
        R"("script":"s.js","scope":"application"},{"identifier":"a","name":"s",)"
        R"("handlers":{"run":"onRun","setUp":"onSetUp","tearDown":"onTearDown"},"script":"s.js"}]})"_ba);
}

void tst_KRPluginBundle_Metadata::metadataLeavesOutWhatIsNil()
{
    const auto bundle = KRPluginBundle::pluginBundleWithURL(builder().manifest("{}").url());
    QCOMPARE(
        keysOf(bundle->metadata()), (QStringList{u"name"_s, u"identifier"_s, u"menu"_s, u"version"_s, u"commands"_s}));
    QCOMPARE(
        bundle->metadata()[u"menu"_s], QVariant(QVariantMap{{u"title"_s, u"Read"_s}, {u"items"_s, QVariantList()}}));
    QCOMPARE(bundle->metadata()[u"commands"_s], QVariant(QVariantList()));
}

void tst_KRPluginBundle_Metadata::metadataLosesSwitches()
{
    const auto bundle = KRPluginBundle::pluginBundleWithURL(
        builder().manifest(R"({"suppliesData": true, "disableCocoaScriptPreprocessor": true})").url());
    QVERIFY(bundle->suppliesData() && bundle->disableCocoaScriptPreprocessor());
    QVERIFY(!bundle->metadata().contains(u"suppliesData"_s));
    QVERIFY(!bundle->metadata().contains(u"disableCocoaScriptPreprocessor"_s));
}

void tst_KRPluginBundle_Metadata::metadataFollowsChanges()
{
    const auto bundle = made({command(u"a"_s)});
    bundle->setUpdatingInfoURL(QUrl(u"https://example.com/new"_s));
    bundle->setMenuDescription(QVariantMap{{u"isRoot"_s, true}});
    bundle->setIconInfo(std::make_shared<KRPluginBundleIconInfo>(u"art/logo.png"_s, std::nullopt));
    auto metadata = bundle->metadata();
    QCOMPARE(metadata[u"appcast"_s].toString(), u"https://example.com/new"_s);
    QCOMPARE(metadata[u"menu"_s].toMap(), (QVariantMap{{u"isRoot"_s, true}}));
    QCOMPARE(metadata[u"icon"_s].toString(), u"art/logo.png"_s);
}

QTEST_GUILESS_MAIN(tst_KRPluginBundle_Metadata)
#include "tst_krpluginbundle_metadata.moc"
