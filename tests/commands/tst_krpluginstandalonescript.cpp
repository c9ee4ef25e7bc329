#include "commands/KRPluginStandaloneScript.h"
#include "platform/FileURL.h"
#include "support/BundleBuilder.h"
#include "support/NilableText.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const auto ten = QString(10, u' ');
const auto twentyFive = QString(25, u' ');

/// The wrapped text of some statements, put together from the counts of blanks.
QString wrapped(const QString &statements)
{
    QString body;
    for (const auto &line : {
             u"// Standalone Script Begins."_s,
             u"var doc = context.document;"_s,
             u"if (doc && typeof(doc) !== 'undefined') context.doc = doc;"_s,
             u"var selection = context.selection;"_s,
             u"var korvan = context;"_s,
             statements,
             u"// Standalone Script Ends."_s,
         })
        body += twentyFive + line + u'\n';
    return ten + u"var onRun = function(context) {\n"_s + ten + body + u'\n' + ten + u"};\n"_s + ten;
}

/// A script that is wrapped in a way of its own.
class QuotedScript final : public KRPluginStandaloneScript
{
public:
    using KRPluginStandaloneScript::KRPluginStandaloneScript;

protected:
    QString wrap(const QString &body, const QString &handler) const override
    {
        return u"%1: <%2>"_s.arg(handler, QString::number(body.count(u'\n')));
    }
};

} // namespace

class tst_KRPluginStandaloneScript : public QObject
{
    Q_OBJECT

private slots:
    void wrapsToTheBlank_data();
    void wrapsToTheBlank();
    void wrapsAnyHandlerAndBody();
    void rawScriptIsAsGiven();
    void handlerIsOnRun();
    void nilStaysNilUntilThereIsASource();
    void fileIsWrapped();
    void unreadableFileGivesNil();
    void reloadChangesOnlyTheRawScript();
    void subclassMayWrapOtherwise();
    void offsetLeadsToTheStatements();
};

void tst_KRPluginStandaloneScript::wrapsToTheBlank_data()
{
    QTest::addColumn<QString>("statements");
    QTest::newRow("one line") << u"print(1);"_s;
    QTest::newRow("none") << QString(u""_s);
    QTest::newRow("further lines keep their own indentation") << u"if (doc)\n    print(doc);\n\tprint(2);"_s;
    QTest::newRow("line end at the end") << u"print(1);\n"_s;
    QTest::newRow("place markers in the statements") << u"print('%@ %1 %2 %3 %%');"_s;
}

void tst_KRPluginStandaloneScript::wrapsToTheBlank()
{
    QFETCH(QString, statements);
    const KRPluginStandaloneScript script(statements, u"Untitled"_s);
    QCOMPARE(script.script(), Text(wrapped(statements)));
}

void tst_KRPluginStandaloneScript::wrapsAnyHandlerAndBody()
{
    QCOMPARE(KRPluginStandaloneScript::wrappedScript(u"return 1;"_s, u"onExport"_s),
        u"          var onExport = function(context) {\n"
        "          return 1;\n"
        "          };\n"
        "          "_s);
    // Neither text is searched for the other's place.
    QCOMPARE(KRPluginStandaloneScript::wrappedScript(u"%1"_s, u"%2"_s),
        u"          var %2 = function(context) {\n          %1\n          };\n          "_s);
}

void tst_KRPluginStandaloneScript::rawScriptIsAsGiven()
{
    const KRPluginStandaloneScript script(u"print(1);"_s, u"Untitled"_s);
    QCOMPARE(script.rawScript(), Text(u"print(1);"_s));
    script.script();
    QCOMPARE(script.rawScript(), Text(u"print(1);"_s));
    QCOMPARE(script.filename(), u"Untitled"_s);
    QCOMPARE(script.URL(), QUrl());
}

void tst_KRPluginStandaloneScript::handlerIsOnRun()
{
    QCOMPARE(KRPluginStandaloneScript(u"0"_s, u"a"_s).handler(), u"onRun"_s);
    QCOMPARE(KRPluginStandaloneScript(nil, u"a"_s).handler(), u"onRun"_s);
}

void tst_KRPluginStandaloneScript::nilStaysNilUntilThereIsASource()
{
    QCOMPARE(KRPluginStandaloneScript(nil, u"a"_s).script(), nil);

    const QTemporaryDir folder;
    const auto path = folder.filePath(u"a.js"_s);
    writeFile(path, "old");
    const auto script = KRPluginStandaloneScript::initWithURL(fileURLFromPath(path, FileKind::File));
    QVERIFY(QFile::remove(path));
    script->reload();
    QCOMPARE(script->rawScript(), nil);
    QCOMPARE(script->script(), nil);
    writeFile(path, "new");
    script->reload();
    QCOMPARE(script->script(), Text(wrapped(u"new"_s)));
}

void tst_KRPluginStandaloneScript::fileIsWrapped()
{
    const QTemporaryDir folder;
    const auto path = folder.filePath(u"Export.js"_s);
    writeFile(path, "print(1);");
    const auto url = fileURLFromPath(path, FileKind::File);
    const auto script = KRPluginStandaloneScript::initWithURL(url);
    QCOMPARE(script->URL(), url);
    QCOMPARE(script->filename(), u"Export.js"_s);
    QCOMPARE(script->rawScript(), Text(u"print(1);"_s));
    QCOMPARE(script->script(), Text(wrapped(u"print(1);"_s)));
}

void tst_KRPluginStandaloneScript::unreadableFileGivesNil()
{
    KRError error;
    QVERIFY(!KRPluginStandaloneScript::initWithURL(QUrl(u"file:///nowhere/a.js"_s), &error));
    QCOMPARE(error.domain, u"posix"_s);
}

void tst_KRPluginStandaloneScript::reloadChangesOnlyTheRawScript()
{
    const QTemporaryDir folder;
    const auto path = folder.filePath(u"a.js"_s);
    writeFile(path, "old");
    const auto script = KRPluginStandaloneScript::initWithURL(fileURLFromPath(path, FileKind::File));
    QCOMPARE(script->script(), Text(wrapped(u"old"_s)));
    writeFile(path, "new");
    script->reload();
    QCOMPARE(script->rawScript(), Text(u"new"_s));
    QCOMPARE(script->script(), Text(wrapped(u"old"_s)));
    QVERIFY(QFile::remove(path));
    script->reload();
    QCOMPARE(script->rawScript(), nil);
    QCOMPARE(script->script(), Text(wrapped(u"old"_s)));
}

void tst_KRPluginStandaloneScript::subclassMayWrapOtherwise()
{
    const QuotedScript script(u"print(1);"_s, u"a"_s);
    QCOMPARE(script.script(), Text(u"onRun: <7>"_s));
    QCOMPARE(script.rawScript(), Text(u"print(1);"_s));
}

void tst_KRPluginStandaloneScript::offsetLeadsToTheStatements()
{
    const KRPluginStandaloneScript script(u"print(1);"_s, u"a"_s);
    const auto offset = script.sourceOffset();
    const auto lines = script.script()->split(u'\n');
    QCOMPARE(lines[offset.lines].mid(offset.columns), u"print(1);"_s);
}

QTEST_GUILESS_MAIN(tst_KRPluginStandaloneScript)
#include "tst_krpluginstandalonescript.moc"
