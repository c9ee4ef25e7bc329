// The guide to the first plug-in, done word for word; and the manifests of all guides, as `validate` sees them.

#include "CommandLineFixture.h"
#include "support/Guides.h"

#include <QJsonArray>
#include <QProcess>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// Of what a command prints; "…" in it is anything on one line.
QRegularExpression expression(const QString &output)
{
    auto pattern = QRegularExpression::escape(output);
    pattern.replace(QRegularExpression::escape(u"…"_s), u".*"_s);
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern));
}

} // namespace

class tst_FirstPlugin : public QObject, private CommandLineFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }
    void guideIsTrue();
    void mistakeIsReportedAsTheGuideSays();
    void manifestsOfGuidesAreWithoutMistakes_data();
    void manifestsOfGuidesAreWithoutMistakes();

private:
    QString home() const { return QFileInfo(m_folder->path()).canonicalFilePath(); }
    /// What a shell in the user's home prints.
    QString outputOf(const QString &line) const
    {
        QProcess shell;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, home());
        environment.insert(u"XDG_DATA_HOME"_s, home() + u"/data"_s);
        environment.insert(u"XDG_CONFIG_HOME"_s, home() + u"/config"_s);
        environment.insert(
            u"PATH"_s, QFileInfo(QStringLiteral(KORVAN_PLUGINS_PROGRAM)).path() + u':' + environment.value(u"PATH"_s));
        shell.setProcessEnvironment(environment);
        shell.setWorkingDirectory(home());
        shell.setProcessChannelMode(QProcess::MergedChannels);
        shell.start(u"/bin/sh"_s, {u"-c"_s, line});
        return shell.waitForFinished(-1) ? QString::fromUtf8(shell.readAll()) : shell.errorString();
    }
    void follow(const GuideBlock &block) const;
};

void tst_FirstPlugin::follow(const GuideBlock &block) const
{
    if (const auto file = block.remark(u"file"_s))
        return writeFile(home() + u'/' + *file, block.text.toUtf8());
    if (block.language != u"console")
        return;
    static const QRegularExpression command(u"^\\$ ([^\n]*)\n(.*?)(?=^\\$|\\z)"_s,
        QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
    for (auto match = command.globalMatch(block.text); match.hasNext();) {
        const auto found = match.next();
        const auto output = outputOf(found.captured(1)).replace(home(), u"/home/ada"_s);
        QVERIFY2(expression(found.captured(2)).match(output).hasMatch(),
            qPrintable(found.captured(1) + u"\nprints\n"_s + output + u"instead of\n"_s + found.captured(2)));
    }
}

void tst_FirstPlugin::guideIsTrue()
{
    const auto blocks = blocksOfGuide(u"first-plugin.md"_s);
    QVERIFY(blocks.size() > 8);
    for (const auto &block : blocks) {
        follow(block);
        if (QTest::currentTestFailed())
            return;
    }
}

void tst_FirstPlugin::mistakeIsReportedAsTheGuideSays()
{
    for (auto block : blocksOfGuide(u"first-plugin.md"_s)) {
        block.text.replace(u"findAll('text')"_s, u"findEvery('text')"_s);
        if (block.language != u"console" || block.text.contains(u" create "))
            follow(block);
        if (block.language == u"js")
            break;
    }
    const auto output =
        outputOf(u"korvan-plugins --folder plugins run com.example.word-count/run --document menu-card.json"_s);
    for (const auto &block : blocksOfGuide(u"first-plugin.md"_s)) {
        if (block.language == u"text")
            QVERIFY2(expression(block.text).match(output).hasMatch(), qPrintable(output));
    }
}

void tst_FirstPlugin::manifestsOfGuidesAreWithoutMistakes_data()
{
    QTest::addColumn<QJsonObject>("manifest");
    for (const auto &name : {u"manifest.md"_s, u"first-plugin.md"_s, u"plugin-api.md"_s, u"plugin-authors.md"_s}) {
        int number = 0;
        for (const auto &block : blocksOfGuide(name)) {
            if (block.language != u"json")
                continue;
            QJsonParseError error;
            const auto value = QJsonDocument::fromJson(block.text.toUtf8(), &error).object();
            QVERIFY2(error.error == QJsonParseError::NoError, qPrintable(block.text));
            if (value.contains(u"commands"_s) || value.contains(u"$schema"_s))
                QTest::addRow("%s, %d", qPrintable(name), ++number) << value;
        }
        QVERIFY(number > 0);
    }
}

void tst_FirstPlugin::manifestsOfGuidesAreWithoutMistakes()
{
    QFETCH(QJsonObject, manifest);
    const auto folder = home() + u"/plugins/Guide.korvanplugin/Contents/Korvan/"_s;
    writeFile(folder + u"manifest.json"_s, QJsonDocument(manifest).toJson());
    // The scripts that it names, with all functions that it names.
    const QRegularExpression text(u"\"([A-Za-z]\\w*)\""_s);
    QByteArray functions = "function onRun() {}\n";
    for (auto match = text.globalMatch(QString::fromUtf8(QJsonDocument(manifest).toJson())); match.hasNext();)
        functions += "globalThis." + match.next().captured(1).toUtf8() + " = () => {};\n";
    const auto commands = manifest[u"commands"_s].toArray();
    for (const auto &command : commands)
        writeFile(folder + command.toObject()[u"script"_s].toString(), functions);

    const auto validated = run({u"validate"_s, home() + u"/plugins/Guide.korvanplugin"_s});
    QCOMPARE(validated.output, QByteArray("1 plug-in checked: 0 errors, 0 warnings.\n"));
}

QTEST_GUILESS_MAIN(tst_FirstPlugin)
#include "tst_firstplugin.moc"
