#include "manager/KRPluginManager.h"
#include "platform/AlertPresenter.h"
#include "support/BundleBuilder.h"
#include "support/TestEnvironment.h"

#include <QTranslator>
#include <QtTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

class RecordingPresenter final : public AlertPresenter
{
public:
    void runModal(const Alert &alert) override { alerts.append(alert); }

    QList<Alert> alerts;
};

/// Marks every text of the table.
class MarkingTranslator final : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return QByteArrayView(context) == "Localizable" ? u"<"_s + QString::fromUtf8(text) + u">"_s : QString();
    }
};

} // namespace

class tst_KRPluginManager_Alerts : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void unsupportedPlugin();
    void nameIsTakenAsItIs_data();
    void nameIsTakenAsItIs();
    void textsAreLocalized();
    void nothingIsSaidOfOthers();
    void loggedWithoutAPresenter();

private:
    std::shared_ptr<KRPluginBundle> bundleNamed(const QString &name) const;

    std::unique_ptr<TestEnvironment> m_environment;
    RecordingPresenter m_presenter;
    std::unique_ptr<KRPluginManager> m_manager;
};

void tst_KRPluginManager_Alerts::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_environment->architecture = 0; // on which no plug-in runs
    m_environment->presenter = &m_presenter;
    m_presenter.alerts.clear();
    m_manager = std::make_unique<KRPluginManager>();
}

void tst_KRPluginManager_Alerts::cleanup()
{
    m_manager.reset();
    m_environment.reset();
}

std::shared_ptr<KRPluginBundle> tst_KRPluginManager_Alerts::bundleNamed(const QString &name) const
{
    const auto manifest = QJsonDocument(QJsonObject{{u"name"_s, name}}).toJson();
    return KRPluginBundle::pluginBundleWithURL(
        BundleBuilder(m_environment->path(u"Plugins"_s), u"P"_s).manifest(manifest).url());
}

void tst_KRPluginManager_Alerts::unsupportedPlugin()
{
    m_manager->alertAboutUnsupportedPluginBundle(bundleNamed(u"Tidy"_s));
    QCOMPARE(m_presenter.alerts.size(), 1);
    const auto alert = m_presenter.alerts.first();
    QCOMPARE(alert.style, AlertStyle::Critical);
    QCOMPARE(alert.messageText, u"Unsupported plug-in"_s);
    QCOMPARE(alert.informativeText,
        u"The extension \u201CTidy\u201D is not compatible with your computer\u2019s CPU architecture. "
        u"Please contact this extension\u2019s developer directly for assistance."_s);
    QCOMPARE(m_environment->systemLogLines, QStringList());
}

void tst_KRPluginManager_Alerts::nameIsTakenAsItIs_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("empty") << QString(u""_s);
    QTest::newRow("place holders") << u"%@ %1 %s %%"_s;
    QTest::newRow("markup") << u"<b>&amp;"_s;
    QTest::newRow("quotation marks") << u"\u201Ca\u201D"_s;
}

void tst_KRPluginManager_Alerts::nameIsTakenAsItIs()
{
    QFETCH(QString, name);
    m_manager->alertAboutUnsupportedPluginBundle(bundleNamed(name));
    QCOMPARE(m_presenter.alerts.size(), 1);
    QVERIFY(m_presenter.alerts.first().informativeText.startsWith(
        u"The extension \u201C"_s + name + u"\u201D is not compatible"_s));
}

void tst_KRPluginManager_Alerts::textsAreLocalized()
{
    MarkingTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    m_manager->alertAboutUnsupportedPluginBundle(bundleNamed(u"Tidy"_s));
    QCOMPARE(m_presenter.alerts.size(), 1);
    QCOMPARE(m_presenter.alerts.first().messageText, u"<Unsupported plug-in>"_s);
    const auto text = m_presenter.alerts.first().informativeText;
    QVERIFY(text.startsWith(u"<The extension \u201CTidy\u201D is"_s) && text.endsWith(u'>'));
}

void tst_KRPluginManager_Alerts::nothingIsSaidOfOthers()
{
    m_manager->alertAboutUnsupportedPluginBundle(nullptr);
    m_environment->architecture = 0x0100000C;
    m_manager->alertAboutUnsupportedPluginBundle(bundleNamed(u"Tidy"_s));
    QCOMPARE(m_presenter.alerts.size(), 0);
    QCOMPARE(m_environment->systemLogLines, QStringList());
}

void tst_KRPluginManager_Alerts::loggedWithoutAPresenter()
{
    m_environment->presenter = nullptr;
    m_manager->alertAboutUnsupportedPluginBundle(bundleNamed(u"Tidy"_s));
    QCOMPARE(m_environment->systemLogLines,
        QStringList{
            u"Unsupported plug-in: The extension \u201CTidy\u201D is not compatible with your computer\u2019s CPU "
            u"architecture. Please contact this extension\u2019s developer directly for assistance."_s});
}

QTEST_GUILESS_MAIN(tst_KRPluginManager_Alerts)
#include "tst_krpluginmanager_alerts.moc"
