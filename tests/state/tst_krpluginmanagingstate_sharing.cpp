// The file behind the state of plug-ins, when others write to it too: programs, people, links.

#include "platform/PropertyList.h"
#include "state/KRPluginManagingState.h"
#include "support/BundleBuilder.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_KRPluginManagingState_Sharing : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void changesOfAnotherProgramSurviveOurs();
    void contentThatAHostHasSetIsWritten();
    void garbageThatComesLaterIsKept_data();
    void garbageThatComesLaterIsKept();
    void garbageBehindALinkIsKept();
    void linkThatLeadsNowhere();
    void foreignValuesStay_data();
    void foreignValuesStay();
    void textsThatNoReaderTakes_data();
    void textsThatNoReaderTakes();

private:
    QString path(const QString &name = u"PluginMetadata.plist"_s) const { return m_folder->filePath(name); }
    QUrl url() const { return QUrl::fromLocalFile(path()); }
    QByteArray content(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "nothing"_ba;
    }
    QStringList files() const { return QDir(m_folder->path()).entryList(QDir::Files | QDir::System, QDir::Name); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_KRPluginManagingState_Sharing::changesOfAnotherProgramSurviveOurs()
{
    KRPluginManagingState ours(url());
    ours.setEnabled(false, u"a"_s, u"1.0"_s);
    QCOMPARE(ours.metadataValueForKey(u"disabled"_s, u"a"_s), QVariant(true)); // and is kept in memory
    KRPluginManagingState(url()).setEnabled(false, u"b"_s, u"1.0"_s);
    ours.setEnabled(false, u"c"_s, u"1.0"_s);
    QCOMPARE(ours.metadata()->keys(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
    KRPluginManagingState(url()).setEnabled(false, u"d"_s, u"1.0"_s);
    ours.updateMetadataWithPluginIndentifiers({u"a"_s, u"d"_s});
    QCOMPARE(ours.metadata()->keys(), (QStringList{u"a"_s, u"d"_s}));
    KRPluginManagingState(url()).setEnabled(false, u"e"_s, u"1.0"_s);
    ours.removeDisableOverrides();
    QCOMPARE(ours.metadata()->keys(), (QStringList{u"a"_s, u"d"_s, u"e"_s}));
}

void tst_KRPluginManagingState_Sharing::contentThatAHostHasSetIsWritten()
{
    KRPluginManagingState(url()).setEnabled(false, u"old"_s, u"1.0"_s);
    KRPluginManagingState state(url());
    state.setMetadata(QVariantMap{{u"a"_s, QVariantMap{{u"disabled"_s, true}}}});
    state.setEnabled(false, u"b"_s, u"1.0"_s);
    QCOMPARE(state.metadata()->keys(), (QStringList{u"a"_s, u"b"_s}));
    QCOMPARE(files(), QStringList{u"PluginMetadata.plist"_s}); // what could be read is not kept beside
}

void tst_KRPluginManagingState_Sharing::garbageThatComesLaterIsKept_data()
{
    QTest::addColumn<bool>("isSet");
    QTest::newRow("after reading") << false;
    QTest::newRow("after a host has set the content") << true;
}

void tst_KRPluginManagingState_Sharing::garbageThatComesLaterIsKept()
{
    QFETCH(bool, isSet);
    KRPluginManagingState state(url());
    state.setEnabled(false, u"a"_s, u"1.0"_s);
    QVERIFY(state.metadata());
    if (isSet)
        state.setMetadata(state.metadata());
    writeFile(path(), "garbage");
    state.setEnabled(false, u"b"_s, u"1.0"_s);
    QCOMPARE(content(u"PluginMetadata.plist.unreadable"_s), "garbage"_ba);
    QVERIFY(state.metadata()->contains(u"b"_s));
}

void tst_KRPluginManagingState_Sharing::garbageBehindALinkIsKept()
{
    writeFile(path(u"real.plist"_s), "garbage");
    QVERIFY(QFile::link(path(u"real.plist"_s), path()));
    KRPluginManagingState state(url());
    state.setEnabled(false, u"a"_s, u"1.0"_s);
    QCOMPARE(content(u"PluginMetadata.plist.unreadable"_s), "garbage"_ba);
    QVERIFY(!QFileInfo(path(u"PluginMetadata.plist.unreadable"_s)).isSymLink());
    QCOMPARE(KRPluginManagingState(url()).metadata()->keys(), QStringList{u"a"_s});
}

void tst_KRPluginManagingState_Sharing::linkThatLeadsNowhere()
{
    QVERIFY(QFile::link(path(u"nowhere.plist"_s), path()));
    KRPluginManagingState state(url());
    state.setEnabled(false, u"a"_s, u"1.0"_s);
    QVERIFY(!QFileInfo(path(u"PluginMetadata.plist.unreadable"_s)).isSymLink());
    QCOMPARE(KRPluginManagingState(url()).metadata().value_or(QVariantMap()).keys(), QStringList{u"a"_s});
}

void tst_KRPluginManagingState_Sharing::foreignValuesStay_data()
{
    QTest::addColumn<bool>("isCleanUp");
    QTest::newRow("change of one key") << false;
    QTest::newRow("removal everywhere") << true;
}

/// Values that this program reads, but could not write from what it has read.
void tst_KRPluginManagingState_Sharing::foreignValuesStay()
{
    QFETCH(bool, isCleanUp);
    writeFile(path(), R"(<?xml version="1.0"?><plist version="1.0"><dict>
        <key>a</key><dict><key>IncompatibleDisableOverridden</key><true/><key>disabled</key><false/>
            <key>foreign</key><date>2100-01-01T00:00:00Z</date></dict>
        <key>b</key><string>no dictionary</string></dict></plist>)");
    KRPluginManagingState state(url());
    if (isCleanUp)
        state.removeDisableOverrides();
    else
        QVERIFY(state.shouldEnablePluginIdentifier(u"a"_s, u"1.0"_s)); // which forgets the insistence
    const auto metadata = KRPluginManagingState(url()).metadata().value();
    QCOMPARE(metadata[u"a"_s].toMap().keys(), (QStringList{u"disabled"_s, u"foreign"_s}));
    QCOMPARE(metadata[u"b"_s].toString(), u"no dictionary"_s);
    QVERIFY(content(u"PluginMetadata.plist"_s).contains("2100-01-01T00:00:00Z"));
}

void tst_KRPluginManagingState_Sharing::textsThatNoReaderTakes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isKept");
    QTest::newRow("zero") << u"a\0b"_s << false;
    QTest::newRow("control character") << u"a\u0001b"_s << false;
    QTest::newRow("escape") << u"a\u001b[31mb"_s << false;
    QTest::newRow("no character") << u"a\uffffb"_s << false;
    QTest::newRow("half of a surrogate pair") << QString(QChar(0xd800)) << false;
    QTest::newRow("white space") << u"a\tb\nc"_s << true;
    QTest::newRow("beyond the basic plane") << u"a😀b"_s << true;
}

void tst_KRPluginManagingState_Sharing::textsThatNoReaderTakes()
{
    QFETCH(QString, text);
    QFETCH(bool, isKept);
    KRPluginManagingState state(url());
    QCOMPARE(state.setMetadataValue(true, u"disabled"_s, text), isKept);
    QCOMPARE(state.setMetadataValue(text, u"key"_s, u"a"_s), isKept);
    QCOMPARE(KRPluginManagingState(url()).metadata().value_or(QVariantMap()).contains(text), isKept);
}

QTEST_GUILESS_MAIN(tst_KRPluginManagingState_Sharing)
#include "tst_krpluginmanagingstate_sharing.moc"
