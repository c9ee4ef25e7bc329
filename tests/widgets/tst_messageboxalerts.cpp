#include "widgets/MessageBoxAlerts.h"

#include "localization/KorvanPluginManagerTranslator.h"
#include "manager/KRPluginManager.h"
#include "platform/LTAppEnvironment.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// A host that shows alerts in message boxes, on a processor that no plug-in supports.
class Environment final : public LTAppEnvironment
{
public:
    quint32 executableArchitecture() const override { return 0; }
    AlertPresenter *alertPresenter() override { return &m_alerts; }

private:
    MessageBoxAlerts m_alerts;
    Installation m_installation{*this};
};

/// Calls `visit` with the message box as soon as one is shown.
void whenShown(const std::function<void(QMessageBox &)> &visit)
{
    QTimer::singleShot(0, qApp, [visit] {
        if (auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget()))
            visit(*box);
    });
}

QStringList shownTexts(const QMessageBox &box)
{
    QStringList texts;
    for (auto *const label : box.findChildren<QLabel *>()) {
        if (!label->text().isEmpty())
            texts.append(label->text());
    }
    return texts;
}

std::shared_ptr<KRPluginBundle> bundleNamed(const QString &name, const QTemporaryDir &folder)
{
    const auto plugin = folder.filePath(u"Tidy.korvanplugin"_s);
    QFile manifest(plugin + u"/Contents/Korvan/manifest.json"_s);
    const bool isWritten = QDir().mkpath(plugin + u"/Contents/Korvan"_s) && manifest.open(QIODevice::WriteOnly)
        && manifest.write(u"{\"name\": \"%1\"}"_s.arg(name).toUtf8()) > 0;
    manifest.close();
    return isWritten ? KRPluginBundle::pluginBundleWithURL(QUrl::fromLocalFile(plugin + u'/')) : nullptr;
}

} // namespace

class tst_MessageBoxAlerts : public QObject
{
    Q_OBJECT

private slots:
    void unsupportedPlugin();
    void unsupportedPluginInUsersLanguage_data();
    void unsupportedPluginInUsersLanguage();
    void styles_data();
    void styles();
    void markupIsShownAsText();
    void windowGoesWhileTheBoxIsShown();
    void windowGoesBefore();
};

void tst_MessageBoxAlerts::unsupportedPlugin()
{
    const Environment environment;
    const QTemporaryDir folder;
    const auto bundle = bundleNamed(u"Tidy & Clean"_s, folder);
    QVERIFY(bundle);

    int shown = 0;
    whenShown([&shown](QMessageBox &box) {
        ++shown;
        QCOMPARE(box.icon(), QMessageBox::Critical);
        QCOMPARE(box.text(), u"Unsupported plug-in"_s);
        QCOMPARE(box.informativeText(),
            u"The extension \u201CTidy & Clean\u201D is not compatible with your computer\u2019s CPU architecture. "
            u"Please contact this extension\u2019s developer directly for assistance."_s);
        QVERIFY(shownTexts(box).contains(box.informativeText()));
        QCOMPARE(box.windowModality(), Qt::ApplicationModal);
        QCOMPARE(box.buttons().size(), 1);
        auto *const button = qobject_cast<QPushButton *>(box.buttons().first());
        QVERIFY(button && button->isDefault());
        QTest::keyClick(&box, Qt::Key_Return);
    });
    const KRPluginManager manager;
    manager.alertAboutUnsupportedPluginBundle(bundle);
    QCOMPARE(shown, 1);
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_MessageBoxAlerts::unsupportedPluginInUsersLanguage_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("informativeText");

    QTest::newRow("German") << u"de_CH"_s << u"Nicht unterstütztes Plug-in"_s
                            << u"Die Erweiterung „Tidy“ ist nicht mit der CPU-Architektur Ihres Computers kompatibel. "
                               u"Bitte wenden Sie sich direkt an den Entwickler dieser Erweiterung, um Hilfe zu "
                               u"erhalten."_s;
    QTest::newRow("French") << u"fr_FR"_s << u"Plug-in non pris en charge"_s
                            << u"L’extension «\u00A0Tidy\u00A0» n’est pas compatible avec l’architecture du "
                               u"processeur de votre ordinateur. Veuillez contacter directement le développeur de "
                               u"cette extension pour obtenir de l’aide."_s;
    QTest::newRow("Japanese") << u"ja_JP"_s << u"対応していないプラグイン"_s
                              << u"拡張機能「Tidy」は、お使いのコンピューターのCPUアーキテクチャに対応していません。"
                                 u"この拡張機能の開発元に直接お問い合わせください。"_s;
    QTest::newRow("simplified Chinese")
        << u"zh_CN"_s << u"不支持的插件"_s
        << u"扩展“Tidy”与您电脑的 CPU 架构不兼容。请直接联系此扩展的开发者以获取帮助。"_s;
}

void tst_MessageBoxAlerts::unsupportedPluginInUsersLanguage()
{
    QFETCH(QString, locale);
    const auto texts = KorvanPluginManagerTranslator(QLocale(locale));
    QVERIFY(texts && QCoreApplication::installTranslator(texts.get()));
    const Environment environment;
    const QTemporaryDir folder;
    const auto bundle = bundleNamed(u"Tidy"_s, folder);
    QVERIFY(bundle);

    int shown = 0;
    whenShown([&shown](QMessageBox &box) {
        ++shown;
        QTEST(box.text(), "text");
        QTEST(box.informativeText(), "informativeText");
        QVERIFY(shownTexts(box).contains(box.informativeText()));
        box.accept();
    });
    const KRPluginManager manager;
    manager.alertAboutUnsupportedPluginBundle(bundle);
    QCOMPARE(shown, 1);
}

void tst_MessageBoxAlerts::styles_data()
{
    QTest::addColumn<AlertStyle>("style");
    QTest::addColumn<QMessageBox::Icon>("icon");

    QTest::newRow("warning") << AlertStyle::Warning << QMessageBox::Warning;
    QTest::newRow("informational") << AlertStyle::Informational << QMessageBox::Information;
    QTest::newRow("critical") << AlertStyle::Critical << QMessageBox::Critical;
}

void tst_MessageBoxAlerts::styles()
{
    QFETCH(AlertStyle, style);
    QFETCH(QMessageBox::Icon, icon);
    std::optional<QMessageBox::Icon> shown;
    whenShown([&shown](QMessageBox &box) {
        shown = box.icon();
        box.reject();
    });
    MessageBoxAlerts alerts;
    alerts.runModal({style, u"a"_s, u"b"_s});
    QVERIFY(shown);
    QCOMPARE(*shown, icon);
}

void tst_MessageBoxAlerts::markupIsShownAsText()
{
    QStringList texts;
    QList<Qt::TextFormat> formats;
    whenShown([&](QMessageBox &box) {
        for (auto *const label : box.findChildren<QLabel *>()) {
            if (!label->text().isEmpty()) {
                texts.append(label->text());
                formats.append(label->textFormat());
            }
        }
        box.accept();
    });
    MessageBoxAlerts alerts;
    alerts.runModal({AlertStyle::Critical, u"<h1>a</h1>"_s, u"<img src='file:///b'>"_s});
    texts.sort();
    QCOMPARE(texts, (QStringList{u"<h1>a</h1>"_s, u"<img src='file:///b'>"_s}));
    QCOMPARE(formats, QList<Qt::TextFormat>(2, Qt::PlainText));
}

void tst_MessageBoxAlerts::windowGoesWhileTheBoxIsShown()
{
    auto window = std::make_unique<QWidget>();
    MessageBoxAlerts alerts(window.get());
    bool isChild = false;
    whenShown([&](QMessageBox &box) {
        isChild = box.parentWidget() == window.get();
        window.reset();
    });
    alerts.runModal({AlertStyle::Critical, u"a"_s, u"b"_s});
    QVERIFY(isChild && !window);
}

void tst_MessageBoxAlerts::windowGoesBefore()
{
    auto window = std::make_unique<QWidget>();
    MessageBoxAlerts alerts;
    alerts.setWindow(window.get());
    window.reset();
    bool isShown = false;
    whenShown([&isShown](QMessageBox &box) {
        isShown = !box.parentWidget();
        box.accept();
    });
    alerts.runModal({AlertStyle::Critical, u"a"_s, u"b"_s});
    QVERIFY(isShown);
}

QTEST_MAIN(tst_MessageBoxAlerts)
#include "tst_messageboxalerts.moc"
