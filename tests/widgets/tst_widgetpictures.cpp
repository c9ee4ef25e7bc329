// Pictures of the windows with the example plug-ins, light and dark. With KORVAN_PICTURES_FOLDER in the environment
// they are left in that folder, for people to look at.

#include "PluginsFixture.h"
#include "widgets/console/ConsoleLog.h"
#include "widgets/console/ConsoleWindow.h"
#include "widgets/plugins/PluginUpdatesController.h"
#include "widgets/plugins/PluginsWindow.h"

#include <QApplication>
#include <QDirIterator>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPalette>
#include <QTableView>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

QPalette darkPalette()
{
    QPalette palette(QColor(0x2a, 0x2b, 0x2e), QColor(0x2a, 0x2b, 0x2e));
    palette.setColor(QPalette::Base, QColor(0x1f, 0x20, 0x23));
    palette.setColor(QPalette::AlternateBase, QColor(0x25, 0x26, 0x29));
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(role, QColor(0xe8, 0xe8, 0xea));
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x80, 0x84));
    palette.setColor(QPalette::PlaceholderText, QColor(0x90, 0x90, 0x94));
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x7d, 0xd8));
    return palette;
}

QPalette lightPalette()
{
    QPalette palette(QColor(0xf4, 0xf4, 0xf5), QColor(0xf4, 0xf4, 0xf5));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x7d, 0xd8));
    return palette;
}

void copyFolder(const QString &from, const QString &to)
{
    QDirIterator files(from, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        writeFile(to + file.fileName().mid(from.size()), file.readAll());
    }
}

} // namespace

class tst_WidgetPictures : public QObject, private PluginsFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void pluginsWindow_data() { themes(); }
    void pluginsWindow();
    void consoleWindow_data() { themes(); }
    void consoleWindow();

private:
    static void themes();
    void addFeed(const QString &plugin, const QString &feed);
    void run(const QString &plugin, const QString &command, const QVariantMap &context = {});
    static QImage pictureOf(QWidget &window);
    static void keep(const QImage &picture, const QString &name);
    /// The usual colour of the middle, as a share of white.
    static double brightness(const QImage &picture);
};

void tst_WidgetPictures::themes()
{
    QTest::addColumn<QPalette>("palette");
    QTest::addColumn<bool>("isDark");
    QTest::newRow("light") << lightPalette() << false;
    QTest::newRow("dark") << darkPalette() << true;
}

void tst_WidgetPictures::init()
{
    setUp();
    QFETCH(QPalette, palette);
    QApplication::setStyle(u"Fusion"_s);
    QApplication::setPalette(palette);
    const auto examples = u"" KORVAN_SOURCE_DIR "/examples/plugins/"_s;
    for (const auto &name : {u"Tidy Layers"_s, u"Card Deck"_s, u"Bracket Notes"_s, u"Broken Script"_s,
             u"Colour Palette"_s, u"Grid Generator"_s, u"Lorem Text"_s}) {
        const auto folder = name + u".korvanplugin"_s;
        copyFolder(examples + folder, pluginsFolder() + u'/' + folder);
    }
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"com.example.bracket-notes"_s, u"99"_s}});
    addFeed(u"Tidy Layers"_s, u"/tidy.json"_s);
    addFeed(u"Card Deck"_s, u"/cards.json"_s);
    addFeed(u"Lorem Text"_s, u"/nothing.json"_s);
    m_manager->reloadPlugins();
    m_manager->registerIncompatiblePlugins();
}

void tst_WidgetPictures::cleanup()
{
    tearDown();
}

void tst_WidgetPictures::addFeed(const QString &plugin, const QString &feed)
{
    const auto path = pluginsFolder() + u"/%1.korvanplugin/Contents/Korvan/manifest.json"_s.arg(plugin);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    auto manifest = QJsonDocument::fromJson(file.readAll()).object();
    file.close();
    manifest.insert(u"appcast"_s, m_server->url(feed).toString());
    manifest.insert(u"homepage"_s, u"https://example.com/"_s);
    writeFile(path, QJsonDocument(manifest).toJson());
}

void tst_WidgetPictures::run(const QString &plugin, const QString &command, const QVariantMap &context)
{
    m_manager->runHandlerWithKey(u"run"_s, command, plugin, context);
    m_environment->queue.advance(std::chrono::milliseconds(1700));
}

QImage tst_WidgetPictures::pictureOf(QWidget &window)
{
    QCoreApplication::processEvents();
    return window.grab().toImage();
}

void tst_WidgetPictures::keep(const QImage &picture, const QString &name)
{
    const auto folder = qEnvironmentVariable("KORVAN_PICTURES_FOLDER");
    if (!folder.isEmpty())
        QVERIFY(picture.save(u"%1/%2-%3.png"_s.arg(folder, name, QLatin1StringView(QTest::currentDataTag()))));
}

double tst_WidgetPictures::brightness(const QImage &picture)
{
    return picture.scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).pixelColor(0, 0).lightnessF();
}

void tst_WidgetPictures::pluginsWindow()
{
    QFETCH(bool, isDark);
    for (const auto &path : {"/tidy.json", "/cards.json"})
        m_server->setAnswer(path,
            Answer::response(
                200, R"({"version": "2.1", "downloadURL": ")" + m_server->url(u"/archive.zip"_s).toEncoded() + "\"}"));
    m_server->setAnswer("/archive.zip",
        Answer::bytes("HTTP/1.1 200 OK\r\nContent-Length: 3400000\r\n\r\n")
            .thenBytes(QByteArray(700'000, 'x'))
            .thenWaitForRelease()
            .thenBytes(QByteArray(1'400'000, 'x'))
            .thenStall());
    const auto log = std::make_shared<ConsoleLog>();
    m_manager->setLogAction(log);
    BundleBuilder(pluginsFolder(), u"Palette Sync"_s)
        .manifest(
            R"({"identifier": "com.example.sync", "name": "Palette Sync", "version": "0.9", "author": "Grace Example",
            "commands": [{"identifier": "run", "name": "Keep in Step", "script": "sync.js"}]})")
        .script(u"sync.js"_s, "function onRun() { setInterval(() => {}, 60000) }");
    m_manager->reloadPlugins();
    PluginsWindow window(*m_manager);
    window.resize(920, 640);
    window.show();
    window.checkForUpdates();
    auto &updates = window.updates();
    waitUntil([&] { return !updates.isChecking(); });
    run(u"com.example.sync"_s, u"run"_s);
    updates.update(u"com.example.tidy-layers"_s);
    waitUntil([&] { return updates.state(u"com.example.tidy-layers"_s).bytesReceived == 700'000; });
    m_environment->queue.advance(std::chrono::milliseconds(900));
    m_server->release();
    waitUntil([&] { return updates.state(u"com.example.tidy-layers"_s).bytesReceived == 2'100'000; });
    window.selectPlugin(u"com.example.tidy-layers"_s);
    const auto picture = pictureOf(window);
    keep(picture, u"plugins"_s);
    QCOMPARE(brightness(picture) < 0.5, isDark);
    updates.cancel(u"com.example.tidy-layers"_s);
    waitUntil([&] { return !updates.state(u"com.example.tidy-layers"_s).isUnderWay(); });
}

void tst_WidgetPictures::consoleWindow()
{
    QFETCH(bool, isDark);
    const auto log = std::make_shared<ConsoleLog>();
    m_manager->setLogAction(log);
    ConsoleWindow window(log, m_manager.get());
    window.show();
    BundleBuilder(pluginsFolder(), u"Palette Sync"_s)
        .manifest(R"({"identifier": "com.example.sync", "name": "Palette Sync", "version": "0.9",
            "commands": [{"identifier": "run", "name": "Keep in Step", "script": "sync.js"}]})")
        .script(u"sync.js"_s,
            "function onRun() { let n = 0; console.log('Connected to the palette server'); setInterval(() => "
            "{ console.log(`Looked for new colours, ${++n} found`); }, 500) }");
    m_manager->reloadPlugins();
    run(u"com.example.sync"_s, u"run"_s);
    run(u"com.example.broken-script"_s, u"syntax"_s);
    run(u"com.example.broken-script"_s, u"loading"_s);
    run(u"com.example.broken-script"_s, u"timer"_s);
    run(u"com.example.broken-script"_s, u"promise"_s);
    run(u"com.example.broken-script"_s, u"module"_s);
    run(u"com.example.broken-script"_s, u"missing"_s);
    auto *const table = window.findChild<QTableView *>(u"ConsoleTable"_s);
    for (int row = 0; row < table->model()->rowCount(); ++row) {
        if (table->model()->index(row, LogModel::MessageColumn).data().toString().contains(u"promise"_s))
            table->selectRow(row);
    }
    const auto picture = pictureOf(window);
    keep(picture, u"console"_s);
    QCOMPARE(brightness(picture) < 0.5, isDark);
    QVERIFY(table->model()->rowCount() > 8);
}

int main(int argc, char **argv)
{
    qputenv("QT_SCALE_FACTOR", "2"); // as on a dense screen
    QApplication application(argc, argv);
    tst_WidgetPictures test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_widgetpictures.moc"
