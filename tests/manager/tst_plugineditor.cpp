#include "manager/KRPluginManager.h"
#include "manager/PluginEditor.h"
#include "platform/FileURL.h"
#include "support/BundleBuilder.h"
#include "support/PathFiles.h"
#include "support/TestEnvironment.h"

#include <QFile>
#include <QFileInfo>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_PluginEditor : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void editorGetsTheBundlesPath();
    void firstFolderWithoutABundle();
    void lines_data();
    void lines();
    void nothingToOpen();
    void nothingWithoutAnEditor_data();
    void nothingWithoutAnEditor();
    void editorsThatCannotStart_data();
    void editorsThatCannotStart();
    void nobodyWaitsForTheEditor();

private:
    QString path(const QString &name) const { return m_environment->path(name); }
    void setEditor(const QVariant &path) { m_environment->userDefaults().setValue(u"Plugin Editor"_s, path); }
    /// Makes a program of the shell's lines the editor. What it writes to channel 3 can be read from the pipe "told".
    void setEditorScript(const QByteArray &lines);
    /// All that the editor tells until it ends.
    QString told() const;

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<KRPluginManager> m_manager;
    std::shared_ptr<KRPluginBundle> m_bundle;
};

namespace {

void writeProgram(const QString &path, const QByteArray &content)
{
    writeFile(path, content);
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

} // namespace

void tst_PluginEditor::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    const auto folder = path(u"My Plugins"_s);
    m_manager = std::make_unique<KRPluginManager>(
        QList<QUrl>{fileURLFromPath(folder, FileKind::Folder), QUrl(u"file:///elsewhere/"_s)}, nullptr, nullptr);
    BundleBuilder builder(folder, u"Tidy & Clean"_s);
    builder.manifest("{}");
    m_bundle = KRPluginBundle::pluginBundleWithURL(builder.url());
    QVERIFY(m_bundle);
}

void tst_PluginEditor::cleanup()
{
    m_bundle.reset();
    m_manager.reset();
    m_environment.reset();
}

void tst_PluginEditor::setEditorScript(const QByteArray &lines)
{
    const auto pipe = path(u"told"_s).toUtf8();
    makePipeAt(pipe);
    writeProgram(path(u"My editor"_s), "#!/bin/sh\nexec 3>'" + pipe + "'\n" + lines);
    setEditor(path(u"My editor"_s));
}

QString tst_PluginEditor::told() const
{
    QFile pipe(path(u"told"_s));
    return pipe.open(QIODevice::ReadOnly) ? QString::fromUtf8(pipe.readAll()) : QString();
}

void tst_PluginEditor::editorGetsTheBundlesPath()
{
    setEditorScript("echo \"$#: $1\" >&3\necho \"$(readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2)\" >&3\n");
    QVERIFY(m_manager->editBundle(m_bundle));
    QCOMPARE(
        told(), u"1: %1\n/dev/null\n/dev/null\n/dev/null\n"_s.arg(path(u"My Plugins/Tidy & Clean.korvanplugin"_s)));
    QCOMPARE(m_environment->systemLogLines, QStringList());
}

void tst_PluginEditor::firstFolderWithoutABundle()
{
    setEditorScript("echo \"$#: $1\" >&3\n");
    QVERIFY(m_manager->editBundle(nullptr));
    QCOMPARE(told(), u"1: %1\n"_s.arg(path(u"My Plugins"_s)));
}

void tst_PluginEditor::lines_data()
{
    QTest::addColumn<std::optional<int>>("line");
    QTest::addColumn<QString>("variable");

    QTest::newRow("a line") << std::optional(7) << u"7"_s;
    QTest::newRow("none, in a program that was started for one") << std::optional<int>() << u"unset"_s;
}

void tst_PluginEditor::lines()
{
    QFETCH(std::optional<int>, line);
    QFETCH(QString, variable);
    qputenv("KORVAN_EDITOR_LINE", "99");
    setEditorScript("echo \"$#: ${KORVAN_EDITOR_LINE-unset}\" >&3\n");
    QCOMPARE(openInPluginEditor(QUrl::fromLocalFile(path(u"script.js"_s)), line), EditorStart::Started);
    QCOMPARE(told(), u"1: %1\n"_s.arg(variable));
    qunsetenv("KORVAN_EDITOR_LINE");
}

void tst_PluginEditor::nothingToOpen()
{
    setEditor(u"/does/not/exist"_s);
    KRPluginManager withoutFolders;
    QVERIFY(!withoutFolders.editBundle(nullptr));
    QCOMPARE(m_environment->systemLogLines, QStringList());
    QVERIFY(!withoutFolders.editBundle(m_bundle)); // which has a place of its own
    QCOMPARE(m_environment->systemLogLines.size(), 1);
}

void tst_PluginEditor::nothingWithoutAnEditor_data()
{
    QTest::addColumn<QVariant>("setting");
    QTest::newRow("absent") << QVariant();
    QTest::newRow("a list") << QVariant(QVariantList{u"/bin/true"_s, u"/bin/false"_s});
}

void tst_PluginEditor::nothingWithoutAnEditor()
{
    QFETCH(QVariant, setting);
    setEditor(setting);
    QVERIFY(!m_manager->editBundle(m_bundle));
    QCOMPARE(m_environment->systemLogLines, QStringList());
}

void tst_PluginEditor::editorsThatCannotStart_data()
{
    QTest::addColumn<QString>("editor"); // %1: the test's folder
    QTest::addColumn<QString>("reason");

    QTest::newRow("missing") << u"%1/missing"_s << u"No such file or directory"_s;
    QTest::newRow("not executable") << u"%1/text"_s << u"Permission denied"_s;
    QTest::newRow("a folder") << u"%1/My Plugins"_s << u"Permission denied"_s;
    QTest::newRow("below a file") << u"%1/text/editor"_s << u"Not a directory"_s;
    QTest::newRow("no program at all") << u"%1/garbage"_s << u"Exec format error"_s;
    QTest::newRow("an interpreter that is missing") << u"%1/script"_s << u"No such file or directory"_s;
    QTest::newRow("the name of a program is no path") << u"sh"_s << u"No such file or directory"_s;
    QTest::newRow("empty") << QString() << u"No program defined"_s;
}

void tst_PluginEditor::editorsThatCannotStart()
{
    QFETCH(QString, editor);
    QFETCH(QString, reason);

    writeFile(path(u"text"_s), "#!/bin/sh\n");
    writeProgram(path(u"garbage"_s), QByteArray("\0\1\2", 3));
    writeProgram(path(u"script"_s), "#!/does/not/exist\n");
    const auto setting = editor.contains(u'%') ? editor.arg(QFileInfo(path(u"text"_s)).path()) : editor;
    setEditor(setting);
    QVERIFY(!m_manager->editBundle(m_bundle));
    QCOMPARE(m_environment->systemLogLines.size(), 1);
    const auto line = m_environment->systemLogLines.first();
    QVERIFY2(line.startsWith(u"Couldn't open editor %1: "_s.arg(setting)), qPrintable(line));
    QVERIFY2(line.endsWith(reason), qPrintable(line));
}

void tst_PluginEditor::nobodyWaitsForTheEditor()
{
    const auto go = path(u"go"_s).toUtf8();
    makePipeAt(go);
    setEditorScript("read line <'" + go + "'\necho \"$line\" >&3\n");
    QVERIFY(m_manager->editBundle(m_bundle));
    m_manager.reset();
    QFile pipe(path(u"go"_s));
    QFile answers(path(u"told"_s));
    QVERIFY(answers.open(QIODevice::ReadOnly)); // the editor runs
    QVERIFY(pipe.open(QIODevice::WriteOnly) && pipe.write("end\n") == 4);
    pipe.close();
    QCOMPARE(answers.readAll(), QByteArray("end\n"));
}

QTEST_GUILESS_MAIN(tst_PluginEditor)
#include "tst_plugineditor.moc"
