// What is remembered of each plug-in, and what becomes of it.

#include "platform/PropertyList.h"
#include "state/KRPluginManagingState.h"
#include "support/BundleBuilder.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_KRPluginManagingState : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void nothingIsListedBeforeAListIsSet();
    void listedVersions_data();
    void listedVersions();
    void choicesThatAreKept_data();
    void choicesThatAreKept();
    void disablingThenEnablingLeavesNoEntry();
    void whatStartsEnabled_data();
    void whatStartsEnabled();
    void insistenceEndsWithTheListing();
    void registrationCountsOnce();
    void registrationOfADisabledPluginCountsNothing();
    void registrationOfANewerVersionCountsAgain();
    void registrationEndsWithTheListing();
    void registrationsAreSummedUp();
    void versionThatIsMissingCountsOnce();
    void forgetsPluginsThatAreGone();
    void forgettingNothingWritesNothing();
    void overridesAreRemovedEverywhere();
    void registrationsAreRemovedEverywhere();
    void bothAreReset();
    void cleaningUpNothingWritesAnEmptyFile();

private:
    QString path() const { return m_folder->filePath(u"PluginMetadata.plist"_s); }
    QVariant fileContent() const
    {
        QFile file(path());
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return variantFromPropertyList(file.readAll()).value();
    }
    /// What the file keeps of a plug-in, as keys and texts.
    QString kept(const QString &identifier) const
    {
        QStringList texts;
        const auto dictionary = fileContent().toMap().value(identifier).toMap();
        for (auto entry = dictionary.begin(); entry != dictionary.end(); ++entry)
            texts.append(entry.key() + u'=' + entry->toString());
        return texts.join(u' ');
    }
    void fill(const QVariantMap &metadata) const { writeFile(path(), propertyListFromVariant(metadata).value()); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<KRPluginManagingState> m_state;
};

namespace {

const auto disabled = QVariantMap{{u"disabled"_s, true}};
const auto overridden = QVariantMap{{u"IncompatibleDisableOverridden"_s, true}};

QVariantMap registered(const QString &version)
{
    return {{u"PluginIncompatibleRegistered"_s, version}};
}

QVariantMap both(const QVariantMap &first, QVariantMap second)
{
    second.insert(first);
    return second;
}

} // namespace

void tst_KRPluginManagingState::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_state = std::make_unique<KRPluginManagingState>(QUrl::fromLocalFile(path()));
}

void tst_KRPluginManagingState::nothingIsListedBeforeAListIsSet()
{
    QVERIFY(!m_state->incompatiblePluginVersions());
    QVERIFY(!m_state->isPluginWithIdentifier(u"a"_s, u"1.0"_s));
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"2.0"_s}});
    QVERIFY(m_state->isPluginWithIdentifier(u"a"_s, u"1.0"_s));
    QVERIFY(!m_state->isPluginWithIdentifier(u"b"_s, u"1.0"_s));
    m_state->setIncompatiblePluginVersions(std::nullopt);
    QVERIFY(!m_state->isPluginWithIdentifier(u"a"_s, u"1.0"_s));
    QVERIFY(!QFile::exists(path()));
}

void tst_KRPluginManagingState::listedVersions_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<bool>("incompatible");

    QTest::newRow("the listed one") << u"2.0"_s << true;
    QTest::newRow("older") << u"1.9"_s << true;
    QTest::newRow("newer") << u"2.0.1"_s << false;
    QTest::newRow("the same in other words") << u"2"_s << true;
    QTest::newRow("not compared as texts") << u"10.0"_s << false;
}

void tst_KRPluginManagingState::listedVersions()
{
    QFETCH(QString, version);
    QTEST(KRPluginManagingState::isPluginVersion(version, u"2.0"_s), "incompatible");
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"2.0"_s}});
    QTEST(m_state->isPluginWithIdentifier(u"a"_s, version), "incompatible");
}

void tst_KRPluginManagingState::choicesThatAreKept_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QString>("version");
    QTest::addColumn<QVariantMap>("entry");

    QTest::newRow("off, compatible") << false << u"3.0"_s << disabled;
    QTest::newRow("off, incompatible") << false << u"1.0"_s << registered(u"1.0"_s);
    QTest::newRow("on, incompatible") << true << u"1.0"_s << both(overridden, registered(u"1.0"_s));
    QTest::newRow("on, compatible") << true << u"3.0"_s << QVariantMap();
}

void tst_KRPluginManagingState::choicesThatAreKept()
{
    QFETCH(bool, enabled);
    QFETCH(QString, version);
    QFETCH(QVariantMap, entry);
    fill({{u"a"_s, QVariantMap{{u"left over"_s, 1LL}}}, {u"other"_s, disabled}});
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"2.0"_s}});

    m_state->setEnabled(enabled, u"a"_s, version);

    auto expected = QVariantMap{{u"other"_s, disabled}};
    if (!entry.isEmpty())
        expected.insert(u"a"_s, entry);
    QCOMPARE(fileContent(), QVariant(expected));
}

void tst_KRPluginManagingState::disablingThenEnablingLeavesNoEntry()
{
    m_state->setEnabled(false, u"a"_s, u"1.0"_s);
    QCOMPARE(fileContent(), QVariant(QVariantMap{{u"a"_s, disabled}}));
    m_state->setEnabled(true, u"a"_s, u"1.0"_s);
    QCOMPARE(fileContent(), QVariant(QVariantMap()));
}

void tst_KRPluginManagingState::whatStartsEnabled_data()
{
    QTest::addColumn<QVariant>("entry");
    QTest::addColumn<QString>("version");
    QTest::addColumn<bool>("starts");

    const QVariant notATruth = QVariantMap{{u"disabled"_s, 1LL}};
    QTest::newRow("unknown") << QVariant() << u"3.0"_s << true;
    QTest::newRow("unknown, incompatible") << QVariant() << u"1.0"_s << false;
    QTest::newRow("disabled") << QVariant(disabled) << u"3.0"_s << false;
    QTest::newRow("disabled, incompatible") << QVariant(disabled) << u"1.0"_s << false;
    QTest::newRow("overridden, incompatible") << QVariant(overridden) << u"1.0"_s << true;
    QTest::newRow("overridden and disabled") << QVariant(both(overridden, disabled)) << u"1.0"_s << false;
    QTest::newRow("registered, incompatible") << QVariant(registered(u"1.0"_s)) << u"1.0"_s << false;
    QTest::newRow("registered, compatible") << QVariant(registered(u"1.0"_s)) << u"3.0"_s << true;
    QTest::newRow("a number is no truth") << notATruth << u"3.0"_s << true;
    QTest::newRow("false") << QVariant(QVariantMap{{u"disabled"_s, false}}) << u"3.0"_s << true;
    QTest::newRow("a text for an entry") << QVariant(u"disabled"_s) << u"3.0"_s << true;
}

void tst_KRPluginManagingState::whatStartsEnabled()
{
    QFETCH(QVariant, entry);
    QFETCH(QString, version);
    if (entry.isValid())
        fill({{u"a"_s, entry}});
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"2.0"_s}});
    QTEST(m_state->shouldEnablePluginIdentifier(u"a"_s, version), "starts");
}

void tst_KRPluginManagingState::insistenceEndsWithTheListing()
{
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"2.0"_s}});
    m_state->setEnabled(true, u"a"_s, u"1.0"_s);
    QVERIFY(m_state->shouldEnablePluginIdentifier(u"a"_s, u"1.0"_s));
    QCOMPARE(kept(u"a"_s), u"IncompatibleDisableOverridden=true PluginIncompatibleRegistered=1.0"_s);

    QVERIFY(m_state->shouldEnablePluginIdentifier(u"a"_s, u"2.1"_s)); // it was updated
    QCOMPARE(kept(u"a"_s), u"PluginIncompatibleRegistered=1.0"_s);

    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"2.1"_s}});
    QVERIFY(!m_state->shouldEnablePluginIdentifier(u"a"_s, u"2.1"_s));
}

void tst_KRPluginManagingState::registrationCountsOnce()
{
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"2.0"_s}});
    QVERIFY(m_state->registerIncompatibilityForPluginIdentifier(u"a"_s, u"1.0"_s));
    QCOMPARE(kept(u"a"_s), u"PluginIncompatibleRegistered=1.0"_s);
    QVERIFY(!m_state->registerIncompatibilityForPluginIdentifier(u"a"_s, u"1.0"_s));
}

void tst_KRPluginManagingState::registrationOfADisabledPluginCountsNothing()
{
    fill({{u"a"_s, disabled}});
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"2.0"_s}});
    QVERIFY(!m_state->registerIncompatibilityForPluginIdentifier(u"a"_s, u"1.0"_s));
    QCOMPARE(kept(u"a"_s), u"PluginIncompatibleRegistered=1.0 disabled=true"_s);
}

void tst_KRPluginManagingState::registrationOfANewerVersionCountsAgain()
{
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"2.0"_s}});
    QVERIFY(m_state->registerIncompatibilityForPluginIdentifier(u"a"_s, u"1.0"_s));
    QVERIFY(m_state->registerIncompatibilityForPluginIdentifier(u"a"_s, u"1.1"_s));
    QCOMPARE(kept(u"a"_s), u"PluginIncompatibleRegistered=1.1"_s);
}

void tst_KRPluginManagingState::registrationEndsWithTheListing()
{
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"2.0"_s}});
    QVERIFY(m_state->registerIncompatibilityForPluginIdentifier(u"a"_s, u"1.0"_s));
    m_state->setIncompatiblePluginVersions(IncompatibleVersions());
    QVERIFY(!m_state->registerIncompatibilityForPluginIdentifier(u"a"_s, u"1.0"_s));
    QCOMPARE(fileContent(), QVariant(QVariantMap()));
}

void tst_KRPluginManagingState::registrationsAreSummedUp()
{
    fill({{u"c"_s, disabled}});
    m_state->setIncompatiblePluginVersions(
        IncompatibleVersions{{u"a"_s, u"2.0"_s}, {u"b"_s, u"2.0"_s}, {u"c"_s, u"2.0"_s}, {u"d"_s, u"2.0"_s}});
    const QMap<QString, std::optional<QString>> versions{
        {u"a"_s, u"1.0"_s}, {u"b"_s, u"2.0"_s}, {u"c"_s, u"1.0"_s}, {u"d"_s, u"3.0"_s}, {u"e"_s, u"1.0"_s}};
    QCOMPARE(m_state->registerPluginIncompatibilityForVersions(versions), 2U);
    QCOMPARE(m_state->registerPluginIncompatibilityForVersions(versions), 0U);
}

void tst_KRPluginManagingState::versionThatIsMissingCountsOnce()
{
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"2.0"_s}});
    QVERIFY(m_state->registerIncompatibilityForPluginIdentifier(u"a"_s, std::nullopt));
    QVERIFY(!m_state->registerIncompatibilityForPluginIdentifier(u"a"_s, std::nullopt));
}

void tst_KRPluginManagingState::forgetsPluginsThatAreGone()
{
    fill({{u"a"_s, disabled}, {u"b"_s, disabled}, {u"c"_s, u"malformed"_s}});
    m_state->updateMetadataWithPluginIndentifiers({u"a"_s, u"new"_s});
    QCOMPARE(fileContent(), QVariant(QVariantMap{{u"a"_s, disabled}}));
    QCOMPARE(m_state->metadata(), std::optional(QVariantMap{{u"a"_s, disabled}}));
}

void tst_KRPluginManagingState::forgettingNothingWritesNothing()
{
    m_state->updateMetadataWithPluginIndentifiers({u"a"_s});
    QVERIFY(!QFile::exists(path()));
    writeFile(
        path(), "<plist version=\"1.0\"><dict><key>a</key><dict><key>disabled</key><true/></dict></dict></plist>");
    m_state->updateMetadataWithPluginIndentifiers({u"a"_s, u"b"_s});
    QFile file(path());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().startsWith("<plist")); // still as it was, without a head
}

void tst_KRPluginManagingState::overridesAreRemovedEverywhere()
{
    fill({{u"a"_s, overridden}, {u"b"_s, both(overridden, registered(u"1"_s))}, {u"c"_s, disabled}});
    m_state->removeDisableOverrides();
    QCOMPARE(fileContent(), QVariant(QVariantMap{{u"b"_s, registered(u"1"_s)}, {u"c"_s, disabled}}));
}

void tst_KRPluginManagingState::registrationsAreRemovedEverywhere()
{
    fill({{u"a"_s, overridden}, {u"b"_s, both(overridden, registered(u"1"_s))}, {u"c"_s, registered(u"1"_s)}});
    m_state->removeIncompatibilityRegistrations();
    QCOMPARE(fileContent(), QVariant(QVariantMap{{u"a"_s, overridden}, {u"b"_s, overridden}}));
}

void tst_KRPluginManagingState::bothAreReset()
{
    fill({{u"a"_s, overridden}, {u"b"_s, both(disabled, registered(u"1"_s))}});
    m_state->resetIncompatiblePluginMetadata();
    QCOMPARE(fileContent(), QVariant(QVariantMap{{u"b"_s, disabled}}));
}

void tst_KRPluginManagingState::cleaningUpNothingWritesAnEmptyFile()
{
    m_state->removeDisableOverrides();
    QCOMPARE(fileContent(), QVariant(QVariantMap()));
}

QTEST_APPLESS_MAIN(tst_KRPluginManagingState)
#include "tst_krpluginmanagingstate.moc"
