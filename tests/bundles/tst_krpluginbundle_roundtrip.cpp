// Plug-ins that are read, written and read again.

#include "bundles/KRPluginBundle.h"
#include "platform/FileReading.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "platform/JSONText.h"
#include "support/BundleBuilder.h"
#include "support/GeneratedPlugin.h"
#include "support/TestEnvironment.h"

#include <QDir>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_KRPluginBundle_RoundTrip : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_environment = std::make_unique<TestEnvironment>(); }
    void cleanup() { m_environment.reset(); }

    void examples_data();
    void examples();
    void generated();
    void scriptsKeepEveryByte_data();
    void scriptsKeepEveryByte();

private:
    std::unique_ptr<TestEnvironment> m_environment;
};

namespace {

/// All that a bundle says of itself and would write, as one text.
QByteArray description(const KRPluginBundle &bundle)
{
    return jsonFromVariant(QVariant::fromValue(bundle.metadata()), JSONStyle::Indented);
}

QByteArray fileOf(const KRPluginBundle &bundle, const QString &relativePath)
{
    const auto bytes = readFile(pathByAppending(pathFromFileURL(bundle.url()), relativePath.toUtf8()), largestTextFile);
    return bytes ? bytes.value() : QByteArray("no such file");
}

QByteArray iconOf(const KRPluginBundle &bundle)
{
    if (!bundle.iconInfo())
        return "no icon";
    const auto wrapper = bundle.iconInfo()->imageWrapper();
    return bundle.iconInfo()->path().toUtf8() + (wrapper ? '=' + wrapper->data() : QByteArray(" without bytes"));
}

/// Of several scripts of one name the first one is written.
std::map<QString, QByteArray> scriptsOf(const KRPluginBundle &bundle)
{
    std::map<QString, QByteArray> scripts;
    for (const auto &entry : bundle.commands())
        scripts.emplace(entry.second->script()->filename(), entry.second->script()->scriptBytes());
    return scripts;
}

/// Nothing when the second is the first but for what writing deliberately loses.
QByteArray differenceBetween(const KRPluginBundle &read, const KRPluginBundle &again)
{
    if (description(read) != description(again))
        return description(read) + "\nis not\n" + description(again);
    if (iconOf(read) != iconOf(again))
        return "icon of " + description(read);
    if (again.suppliesData() || again.disableCocoaScriptPreprocessor())
        return "switch of " + description(read);
    const auto scripts = scriptsOf(read);
    if (scripts != scriptsOf(again))
        return "scripts of " + description(read);
    for (const auto &[name, bytes] : scripts) {
        if (fileOf(again, u"Contents/Korvan/"_s + name) != bytes)
            return "file " + name.toUtf8();
    }
    return {};
}

/// Reads, writes, reads and writes; the second writing has nothing left to lose.
QByteArray roundTrip(const QUrl &url, const QString &folder)
{
    const auto read = KRPluginBundle::pluginBundleWithURL(url);
    const auto first = QUrl::fromLocalFile(folder + u"/First.korvanplugin/"_s);
    const auto second = QUrl::fromLocalFile(folder + u"/Second.korvanplugin/"_s);
    if (!read || !read->writeToURL(first))
        return "not written: " + url.toEncoded();
    const auto again = KRPluginBundle::pluginBundleWithURL(first);
    if (!again || !again->writeToURL(second))
        return "not written again: " + url.toEncoded();
    if (fileOf(*again, u"Contents/Korvan/manifest.json"_s)
        != readFile(pathFromFileURL(second) + "/Contents/Korvan/manifest.json", largestTextFile).value())
        return "changes each time: " + url.toEncoded();
    return differenceBetween(*read, *again);
}

} // namespace

void tst_KRPluginBundle_RoundTrip::examples_data()
{
    QTest::addColumn<QUrl>("url");
    const QDir folder(QStringLiteral(KORVAN_SOURCE_DIR "/examples/plugins"));
    for (const auto &name : folder.entryList({u"*.korvanplugin"_s}, QDir::Dirs))
        QTest::newRow(qPrintable(name)) << QUrl::fromLocalFile(folder.filePath(name) + u'/');
}

void tst_KRPluginBundle_RoundTrip::examples()
{
    QFETCH(QUrl, url);
    QCOMPARE(roundTrip(url, m_environment->path(u""_s)), QByteArray());
    QCOMPARE(m_environment->systemLogLines, QStringList());
}

void tst_KRPluginBundle_RoundTrip::generated()
{
    const QTemporaryDir folder(QDir(u"/dev/shm"_s).exists() ? u"/dev/shm/korvan-test-XXXXXX"_s : QString());
    constexpr int count = 1000;
    for (unsigned number = 0; number < count; ++number) {
        const QDir place(folder.filePath(QString::number(number)));
        const auto url = writeGeneratedPlugin(place.path(), number);
        QCOMPARE(roundTrip(url, place.path()), QByteArray());
        QVERIFY(QDir(place).removeRecursively());
    }
}

void tst_KRPluginBundle_RoundTrip::scriptsKeepEveryByte_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::newRow("empty") << ""_ba;
    QTest::newRow("byte-order mark") << "\xEF\xBB\xBF"
                                        "var a;"_ba;
    QTest::newRow("two byte-order marks") << "\xEF\xBB\xBF\xEF\xBB\xBF"_ba;
    QTest::newRow("zero") << "a\0b"_ba;
    QTest::newRow("line ends of all kinds") << "a\r\nb\rc\n\n"_ba;
    QTest::newRow("no line end") << "a"_ba;
    QTest::newRow("all planes") << "ü \xF0\x9F\x98\x80 \xEF\xBF\xBD \xE2\x80\xA8"_ba;
    QTest::newRow("large") << QByteArray(3'000'000, 'x');
}

void tst_KRPluginBundle_RoundTrip::scriptsKeepEveryByte()
{
    QFETCH(QByteArray, source);
    const auto url = BundleBuilder(m_environment->path(u"Plugins"_s), u"P"_s)
                         .manifest(R"({"commands": [{"script": "s.js"}]})")
                         .script(u"s.js"_s, source)
                         .url();
    const auto target = QUrl::fromLocalFile(m_environment->path(u"Written.korvanplugin/"_s));
    QVERIFY(KRPluginBundle::pluginBundleWithURL(url)->writeToURL(target));
    QVERIFY(readFile(pathFromFileURL(target) + "/Contents/Korvan/s.js", largestTextFile).value() == source);
}

QTEST_GUILESS_MAIN(tst_KRPluginBundle_RoundTrip)
#include "tst_krpluginbundle_roundtrip.moc"
