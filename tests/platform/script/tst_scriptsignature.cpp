#include "platform/script/ScriptSignature.h"

#include <QVariant>
#include <QtTest>

#include <vector>

using namespace Qt::StringLiterals;

namespace {

QStringList partsOf(const QByteArray &text)
{
    const ScriptSignature signature{std::string_view(text.constData(), std::size_t(text.size()))};
    QStringList parts;
    for (std::size_t i = 0; i < signature.parameterCount(); ++i) {
        const auto parameter = signature.parameter(i);
        for (const auto part : {ScriptSignature::nameOf(parameter), ScriptSignature::typeOf(parameter)})
            parts.append(QString::fromUtf8(part.data(), qsizetype(part.size())));
    }
    return parts << QString::fromUtf8(signature.result().data(), qsizetype(signature.result().size()));
}

} // namespace

class tst_ScriptSignature : public QObject
{
    Q_OBJECT

private slots:
    void parts_data();
    void parts();
    void completeness_data();
    void completeness();
    void typesOfCpp();
};

void tst_ScriptSignature::parts_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("nothing") << "()"_ba << QStringList{u""_s};
    QTest::newRow("a result") << "(): Layer[]"_ba << QStringList{u"Layer[]"_s};
    QTest::newRow("names without types") << "(key,name )"_ba << QStringList{u"key"_s, u""_s, u"name"_s, u""_s, u""_s};
    QTest::newRow("commas inside of types")
        << "(values: Record<string, number>, pair: [a, b]): Map<A, B>"_ba
        << QStringList{u"values"_s, u"Record<string, number>"_s, u"pair"_s, u"[a, b]"_s, u"Map<A, B>"_s};
    QTest::newRow("colons and parentheses inside of types")
        << "(done: (answer: string) => void, options: { a: number }): (a: B) => C"_ba
        << QStringList{u"done"_s, u"(answer: string) => void"_s, u"options"_s, u"{ a: number }"_s, u"(a: B) => C"_s};
}

void tst_ScriptSignature::parts()
{
    QFETCH(QByteArray, text);
    QTEST(partsOf(text), "expected");
}

void tst_ScriptSignature::completeness_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("expected");
    QTest::newRow("empty parentheses") << "()"_ba << true;
    QTest::newRow("with a result") << "(a): B"_ba << true;
    QTest::newRow("nothing") << ""_ba << false;
    QTest::newRow("a name alone") << "a"_ba << false;
}

void tst_ScriptSignature::completeness()
{
    QFETCH(QByteArray, text);
    const ScriptSignature signature{std::string_view(text.constData(), std::size_t(text.size()))};
    QTEST(signature.isComplete(), "expected");
}

void tst_ScriptSignature::typesOfCpp()
{
    const auto &types = scriptbinding::exactTypes<void, bool, int, double, const QString &, std::optional<QString>,
        QUrl, QStringList, QVariant, std::shared_ptr<int>>;
    const std::vector<std::string_view> expected{
        "boolean", "number", "number", "string", "string | null", "string | null", "string[]", "", "", "void"};
    QVERIFY(std::equal(std::begin(types), std::end(types), expected.begin(), expected.end()));
}

QTEST_GUILESS_MAIN(tst_ScriptSignature)
#include "tst_scriptsignature.moc"
