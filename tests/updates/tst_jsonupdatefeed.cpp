// What a JSON feed says about its archives, and whether the published schema says the same.

#include "platform/JSONText.h"
#include "support/JSONSchema.h"
#include "updates/JSONUpdateFeed.h"
#include "updates/UpdatingInfoError.h"

#include <QFile>
#include <QtTest>

using namespace Qt::StringLiterals;

using Candidates = std::vector<UpdateCandidate>;
Q_DECLARE_METATYPE(Candidates)

class tst_JSONUpdateFeed : public QObject
{
    Q_OBJECT

private slots:
    void candidates_data();
    void candidates();
    void refused_data();
    void refused();
    void theSchemaAgrees_data();
    void theSchemaAgrees();
};

namespace {

const QUrl feedURL(u"https://example.com/tidy/feed.json"_s);

QVariant schema()
{
    QFile file(QStringLiteral(KORVAN_SOURCE_DIR "/docs/schemas/update-feed.schema.json"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no schema");
    const auto value = variantFromJSON(file.readAll());
    return value ? value.value() : QVariant();
}

} // namespace

void tst_JSONUpdateFeed::candidates_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<Candidates>("expected");

    const auto row = [](const char *tag, const QByteArray &json, const Candidates &expected) {
        QTest::newRow(tag) << json << expected;
    };
    const Candidates tidy{{u"1.2"_s, u"tidy.zip"_s}};
    row("one version", R"({"version": "1.2", "downloadURL": "tidy.zip"})", tidy);
    row("one version, the other order", R"({"downloadURL": "tidy.zip", "version": "1.2"})", tidy);
    row("byte-order mark", "\xEF\xBB\xBF{\"version\": \"1.2\", \"downloadURL\": \"tidy.zip\"}", tidy);
    row("unknown keys",
        R"({"a": {"version": "7"}, "version": "1.2", "b": [7], "downloadURL": "tidy.zip", "Version": "7"})", tidy);
    row("escapes", R"({"version": "1\u002e2", "downloadURL": "tidy\u002Ezip"})", tidy);
    row("escaped keys", R"({"v\u0065rsion": "1.2", "downloadURL": "tidy.zip"})", tidy);
    row("beyond ASCII", "{\"version\": \"\xC3\xBC \xF0\x9F\x98\x80\", \"downloadURL\": \"tidy.zip\"}",
        {{u"\u00FC \U0001F600"_s, u"tidy.zip"_s}});
    row("exactly as given", R"({"version": " 1.2\n", "downloadURL": " tidy.zip "})", {{u" 1.2\n"_s, u" tidy.zip "_s}});
    row("last of two values", R"({"version": "7", "downloadURL": "a", "version": "1.2", "downloadURL": "tidy.zip"})",
        tidy);
    row("items in their order",
        R"({"items": [{"version": "2", "downloadURL": "b"}, {"version": "1", "downloadURL": "a", "notes": null}]})",
        {{u"2"_s, u"b"_s}, {u"1"_s, u"a"_s}});
    row("items beside a version",
        R"({"items": [{"version": "2", "downloadURL": "b"}], "version": "1", "downloadURL": "a"})",
        {{u"1"_s, u"a"_s}, {u"2"_s, u"b"_s}});
    row("items in items", R"({"items": [{"items": [{"version": "1.2", "downloadURL": "tidy.zip"}]}]})", {});
    row("no items", R"({"items": []})", {});
    row("items of other types",
        R"({"items": [null, 1.2, "1.2", true, [], {}, {"version": "1.2", "downloadURL": "tidy.zip"}]})", tidy);
    row("item without a version", R"({"items": [{"downloadURL": "a"}, {"version": "1.2", "downloadURL": "tidy.zip"}]})",
        tidy);
    row("item without a URL", R"({"items": [{"version": "1.2", "downloadURL": "tidy.zip"}, {"version": "9"}]})", tidy);
    row("item whose version is a number",
        R"({"items": [{"version": 9, "downloadURL": "a"}, {"version": "1.2", "downloadURL": "tidy.zip"}]})", tidy);
    row("item whose URL is an object",
        R"({"items": [{"version": "9", "downloadURL": {"url": "a"}}, {"version": "1.2", "downloadURL": "tidy.zip"}]})",
        tidy);
    row("item whose keys are null",
        R"({"items": [{"version": null, "downloadURL": null}, {"version": "1.2", "downloadURL": "tidy.zip"}]})", tidy);
    row("number as a version", R"({"version": 1.2, "downloadURL": "tidy.zip"})", {});
    row("boolean as a version", R"({"version": true, "downloadURL": "tidy.zip"})", {});
    row("list as a version", R"({"version": ["1.2"], "downloadURL": "tidy.zip"})", {});
    row("version only", R"({"version": "1.2"})", {});
    row("URL only", R"({"downloadURL": "tidy.zip"})", {});
}

void tst_JSONUpdateFeed::candidates()
{
    QFETCH(QByteArray, json);
    QFETCH(Candidates, expected);

    const auto read = readJSONUpdateFeed(json, feedURL);
    QVERIFY(read);
    QCOMPARE(read.value(), expected);
}

void tst_JSONUpdateFeed::refused_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<int>("code");

    const auto row = [](const char *tag, const QByteArray &json, UpdatingInfoErrorCode code) {
        QTest::newRow(tag) << json << int(code);
    };
    const auto notJSON = UpdatingInfoErrorCode::NotJSON;
    row("nothing", "", notJSON);
    row("white space", " \n", notJSON);
    row("a server's page", "<html><body>404</body></html>", notJSON);
    row("an appcast", "<rss><channel/></rss>", notJSON);
    row("cut off", R"({"version": "1.2", "downloadURL": "tidy.z)", notJSON);
    row("cut off before the last bracket", R"({"version": "1.2", "downloadURL": "tidy.zip")", notJSON);
    row("cut off behind an item", R"({"items": [{"version": "1.2", "downloadURL": "tidy.zip"})", notJSON);
    row("two values", R"({"version": "1.2", "downloadURL": "tidy.zip"} {})", notJSON);
    row("trailing comma", R"({"version": "1.2", "downloadURL": "tidy.zip",})", notJSON);
    row("comment", R"({"version": "1.2", /* . */ "downloadURL": "tidy.zip"})", notJSON);
    row("Latin-1", "{\"version\": \"\xFC\", \"downloadURL\": \"tidy.zip\"}", notJSON);
    row("UTF-16", QByteArray("\xFF\xFE{\0}\0", 6), notJSON);
    row("zero byte in a text", QByteArray("{\"version\": \"1\0\"}", 16), notJSON);
    row("zero byte at the end", QByteArray("{\"items\": []}\0", 14), notJSON);
    row("half a surrogate pair", R"({"version": "\uD800", "downloadURL": "tidy.zip"})", notJSON);
    row("deep nesting", QByteArray("[").repeated(2000) + QByteArray("]").repeated(2000), notJSON);
    const auto notAFeed = UpdatingInfoErrorCode::NotAFeed;
    row("null", "null", notAFeed);
    row("text", R"("1.2")", notAFeed);
    row("number", "1.2", notAFeed);
    row("list", R"([{"version": "1.2", "downloadURL": "tidy.zip"}])", notAFeed);
    row("empty object", "{}", notAFeed);
    row("other keys", R"({"Version": "1.2", "download_url": "tidy.zip"})", notAFeed);
    row("items that are an object", R"({"items": {"version": "1.2", "downloadURL": "tidy.zip"}})", notAFeed);
    row("items that are null", R"({"items": null})", notAFeed);
}

void tst_JSONUpdateFeed::refused()
{
    QFETCH(QByteArray, json);
    QFETCH(int, code);

    const auto read = readJSONUpdateFeed(json, feedURL);
    QVERIFY(!read);
    QCOMPARE(read.error(), updatingInfoError(static_cast<UpdatingInfoErrorCode>(code), feedURL));
}

void tst_JSONUpdateFeed::theSchemaAgrees_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("isOffered");

    const auto version = [](const QByteArray &text) {
        return R"({"version": ")" + text + R"(", "downloadURL": "tidy.zip"})";
    };
    const auto url = [](const QByteArray &text) { return R"({"version": "1.2", "downloadURL": ")" + text + R"("})"; };
    const auto row = [](const char *tag, const QByteArray &json, bool isOffered) {
        QTest::newRow(tag) << json << isOffered;
    };
    row("one version", version("1.2"), true);
    row("list", R"({"items": [{"version": "1", "downloadURL": "a"}, {"version": "2", "downloadURL": "b"}]})", true);
    row("both", R"({"version": "1", "downloadURL": "a", "items": [{"version": "2", "downloadURL": "b"}]})", true);
    row("unknown keys", R"({"version": "1", "downloadURL": "a", "notes": {"version": 1}})", true);
    row("empty object", "{}", false);
    row("empty list", R"({"items": []})", false);
    row("no object", R"(["1.2"])", false);
    row("item that is no object", R"({"items": ["1.2"]})", false);
    row("item without a URL", R"({"items": [{"version": "1.2"}]})", false);
    row("version only", R"({"version": "1.2"})", false);
    row("number as a version", R"({"version": 1.2, "downloadURL": "tidy.zip"})", false);
    row("empty version", version(""), false);
    row("blank version", version("  "), false);
    row("version with a space", version("1 2"), true);
    row("control character", version("1\\n2"), false);
    row("control character beyond ASCII", version("1\\u0085"), false);
    row("zero character", version("1\\u0000"), false);
    row("longest version", version(QByteArray(128, '1')), true);
    row("too long a version", version(QByteArray(129, '1')), false);
    row("empty URL", url(""), false);
    row("longest URL", url(QByteArray(8192, 'a')), true);
    row("too long a URL", url(QByteArray(8193, 'a')), false);
}

void tst_JSONUpdateFeed::theSchemaAgrees()
{
    QFETCH(QByteArray, json);
    QFETCH(bool, isOffered);

    const auto candidates = readJSONUpdateFeed(json, feedURL);
    QCOMPARE(candidates && highestOffer(candidates.value(), feedURL), isOffered);
    const auto value = variantFromJSON(json);
    QVERIFY(value);
    QCOMPARE(JSONSchema(schema().toMap()).accepts(value.value()), isOffered);
}

QTEST_GUILESS_MAIN(tst_JSONUpdateFeed)
#include "tst_jsonupdatefeed.moc"
