// Reading the values of many layers at once.

#include "ModuleFixture.h"
#include "commands/services/LayerRows.h"
#include "platform/script/ScriptClass.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

constexpr const char *sample = R"({"layers": [
    {"id": "a", "name": "A", "type": "oval", "style": {"fill": "#000000"}},
    {"id": "g", "name": "G", "type": "group", "layers": [
        {"id": "h", "name": "H", "type": "group", "layers": [{"id": "t", "name": "A", "type": "text", "text": ""}]},
        {"id": "b", "name": "B", "type": "oval", "frame": {"x": 5}}]},
    {"id": "c", "name": "C", "type": "oval"}]})";

QString numbersIn(const QVariant &bytes)
{
    const auto data = bytes.toByteArray();
    QStringList numbers;
    for (qsizetype at = 0; at < data.size(); at += 4) {
        qint32 number = 0;
        std::memcpy(&number, data.constData() + at, sizeof number);
        numbers.append(QString::number(number));
    }
    return numbers.join(u' ');
}

/// "VALUES at PLACES"
QString textOf(const QVariant &column)
{
    const auto parts = column.toMap();
    const auto values = QJsonDocument(QJsonArray::fromVariantList(parts.value(u"values"_s).toList()));
    return QString::fromUtf8(values.toJson(QJsonDocument::Compact)) + u" at "_s + numbersIn(parts.value(u"places"_s));
}

} // namespace

class tst_LayerRows : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_document = documentFromJSON(sample).value(); }

    void columns_data();
    void columns();
    void groupsAround_data();
    void groupsAround();
    void layers();
    void aSelectorInsideAGroup_data();
    void aSelectorInsideAGroup();
    void aRemovedGroup();
    void groupsInGroups();
    void nothingIsKept();

private:
    /// The document for an empty id.
    ScriptObjectPointer root(const QString &id) const
    {
        return id.isEmpty() ? ScriptObjectPointer(m_document) : ScriptObjectPointer(m_document->layerWithID(id));
    }

    std::shared_ptr<Document> m_document;
};

void tst_LayerRows::columns_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("expected");
    QTest::newRow("texts, each once") << u"name"_s << uR"(["A","G","H","B","C"] at 0 1 2 0 3 4)"_s;
    QTest::newRow("of few layers") << u"text"_s << uR"([null,null,null,"",null,null] at 0 1 2 3 4 5)"_s;
    QTest::newRow("part of the frame") << u"frame.x"_s << uR"([0,0,0,0,5,0] at 0 1 2 3 4 5)"_s;
    QTest::newRow("key of the style") << u"style.fill"_s << uR"(["#000000",null,null,null,null,null] at 0 1 2 3 4 5)"_s;
    QTest::newRow("no such key") << u"colour"_s << uR"([null,null,null,null,null,null] at 0 1 2 3 4 5)"_s;
    QTest::newRow("no such part") << u"frame.z"_s << uR"([null,null,null,null,null,null] at 0 1 2 3 4 5)"_s;
    QTest::newRow("empty") << u""_s << uR"([null,null,null,null,null,null] at 0 1 2 3 4 5)"_s;
}

void tst_LayerRows::columns()
{
    QFETCH(QString, key);
    QTEST(textOf(LayerRows(m_document).values({key}).value(key)), "expected");
}

void tst_LayerRows::groupsAround_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("ids");
    QTest::addColumn<QString>("groups");
    QTest::addColumn<int>("first");
    QTest::newRow("a document") << u""_s << uR"(["a","g","h","t","b","c"])"_s << u"-1 -1 1 2 1 -1"_s << 0;
    QTest::newRow("a group") << u"g"_s << uR"(["g","h","t","b"])"_s << u"-1 0 1 0"_s << 1;
    QTest::newRow("a group in a group") << u"h"_s << uR"(["g","h","t"])"_s << u"-1 0 1"_s << 2;
    QTest::newRow("no group") << u"b"_s << uR"(["g","b"])"_s << u"-1 0"_s << 2;
}

void tst_LayerRows::groupsAround()
{
    QFETCH(QString, id);
    QFETCH(QString, ids);
    const auto values = LayerRows(root(id)).values({u"id"_s});
    QCOMPARE(textOf(values.value(u"id"_s)).section(u" at "_s, 0, 0), ids);
    QTEST(numbersIn(values.value(u"groups"_s)), "groups");
    QTEST(values.value(u"first"_s).toInt(), "first");
}

void tst_LayerRows::layers()
{
    const auto ids = [](const QVariantList &layers) {
        QString text;
        for (const auto &layer : layers)
            text += std::dynamic_pointer_cast<Layer>(layer.value<ScriptObjectPointer>())->id();
        return text;
    };
    QCOMPARE(ids(LayerRows(m_document).layers()), u"aghtbc"_s);
    QCOMPARE(ids(LayerRows(root(u"h"_s)).layers()), u"t"_s);
    QCOMPARE(ids(LayerRows(m_document).layersAt({3, 0})), u"ta"_s);
    QCOMPARE(ids(LayerRows(nullptr).layers()), QString());
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, LayerRows(m_document).layersAt({6}));
}

void tst_LayerRows::aSelectorInsideAGroup_data()
{
    QTest::addColumn<QString>("selector");
    QTest::addColumn<QString>("expected");
    QTest::newRow("the group itself is outside") << u"group"_s << u"h"_s;
    QTest::newRow("in the group itself") << u"#g > oval"_s << u"b"_s;
    QTest::newRow("anywhere in it") << u"#g text"_s << u"t"_s;
    QTest::newRow("nothing") << u"image"_s << u""_s;
    QTest::newRow("what is selected") << u":selected"_s << u"b"_s;
    QTest::newRow("an empty text") << u"[text='']"_s << u"t"_s;
    QTest::newRow("another text than") << u"[text!=a]"_s << u"htb"_s;
}

void tst_LayerRows::aSelectorInsideAGroup()
{
    QFETCH(QString, selector);
    ModuleFixture fixture;
    fixture.setDocument(sample);
    fixture.document->setSelection({fixture.document->layerWithID(u"b"_s), fixture.document->layerWithID(u"c"_s)});
    fixture.context.insert(u"selector"_s, selector);
    QFETCH(QString, expected);
    QCOMPARE(fixture.run("const group = require('korvan/dom').activeDocument().layerWithID('g');"
                         "print(group.findAll(context.selector).map((layer) => layer.id).join(''));"
                         "print(group.find(context.selector)?.id ?? '');"),
        (QStringList{expected, expected.left(1)}));
}

void tst_LayerRows::aRemovedGroup()
{
    ModuleFixture fixture;
    fixture.setDocument(sample);
    QCOMPARE(fixture.run("const group = require('korvan/dom').activeDocument().layerWithID('g'); group.remove();"
                         "for (const selector of ['*', 'group text', ':selected', (layer) => layer.type === 'oval'])"
                         "    print(group.findAll(selector).map((layer) => layer.id).join(''));"),
        (QStringList{u"htb"_s, u"t"_s, u""_s, u"b"_s}));
}

void tst_LayerRows::groupsInGroups()
{
    class Nested final : public ScriptObject
    {
    public:
        explicit Nested(int depth)
            : m_depth(depth)
        { }
        QVariantList layers() const
        {
            if (m_depth == 0)
                return {};
            return {QVariant::fromValue(ScriptObjectPointer(std::make_shared<Nested>(m_depth - 1)))};
        }
        const ScriptClass &scriptClass() const override
        {
            static constexpr ScriptOperation operations[] = {
                scriptOperation<&Nested::layers>("layers", "(): Nested[]")};
            static constexpr ScriptClass description{"Nested", operations};
            return description;
        }

    private:
        int m_depth;
    };
    QCOMPARE(LayerRows(std::make_shared<Nested>(200'000)).layers().size(), 200'000);
}

void tst_LayerRows::nothingIsKept()
{
    ModuleFixture fixture;
    fixture.setDocument(sample);
    const std::weak_ptr<Layer> layer = fixture.document->layerWithID(u"c"_s);
    fixture.run("const { activeDocument } = require('korvan/dom'); activeDocument().find('text');"
                "for (const layer of activeDocument()) void layer.name;");
    fixture.document = documentFromJSON("{}").value();
    fixture.context.clear();
    fixture.run("");
    QVERIFY(layer.expired());
}

QTEST_GUILESS_MAIN(tst_LayerRows)
#include "tst_layerrows.moc"
