#include "platform/UserDefaults.h"
#include "support/BundleBuilder.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <limits>

using namespace Qt::StringLiterals;

class tst_UserDefaults : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void valuesOfTheFile_data();
    void valuesOfTheFile();
    void storedValuesComeBack_data();
    void storedValuesComeBack();
    void longIntegers_data();
    void longIntegers();
    void arraysKeepTheirTexts();
    void nilRemoves();
    void overridesStandAbove();
    void storingDropsTheOverride();
    void fileOfGarbage();
    void fileThatCannotBeWritten();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_file;
};

void tst_UserDefaults::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_file = m_folder->filePath(u"settings.ini"_s);
}

void tst_UserDefaults::valuesOfTheFile_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("string");
    QTest::addColumn<bool>("boolean");
    QTest::addColumn<double>("number");
    QTest::newRow("text") << "a"_ba << u"a"_s << false << 0.0;
    QTest::newRow("true") << "true"_ba << u"true"_s << true << 0.0;
    QTest::newRow("false") << "false"_ba << u"false"_s << false << 0.0;
    QTest::newRow("one") << "1"_ba << u"1"_s << true << 1.0;
    QTest::newRow("fraction") << "1.5"_ba << u"1.5"_s << true << 1.5;
    QTest::newRow("infinity is no number") << "inf"_ba << u"inf"_s << false << 0.0;
}

void tst_UserDefaults::valuesOfTheFile()
{
    QFETCH(QByteArray, text);
    writeFile(m_file, "[General]\nkey=" + text + "\n");
    const UserDefaults defaults(m_file);
    QTEST(defaults.stringForKey(u"key"_s).value_or(u"nil"_s), "string");
    QTEST(defaults.numberForKey(u"key"_s).value_or(0), "number");
    QTEST(defaults.boolForKey(u"key"_s), "boolean");
    QVERIFY(!defaults.value(u"other"_s).isValid());
    QVERIFY(!defaults.stringForKey(u"other"_s));
    QVERIFY(!defaults.numberForKey(u"other"_s));
    QVERIFY(!defaults.stringArrayForKey(u"other"_s));
    QVERIFY(!defaults.boolForKey(u"other"_s));
    QCOMPARE(defaults.integerForKey(u"other"_s), 0);
}

void tst_UserDefaults::storedValuesComeBack_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("text") << QVariant(u"ü = \"a\", b; c"_s);
    QTest::newRow("empty text") << QVariant(u""_s);
    QTest::newRow("list") << QVariant(QStringList{u"a"_s, u"b, c"_s, u""_s});
    QTest::newRow("list of one") << QVariant(QStringList{u"a"_s});
}

void tst_UserDefaults::storedValuesComeBack()
{
    QFETCH(QVariant, value);
    UserDefaults(m_file).setValue(u"a key/with ü"_s, value);
    const UserDefaults defaults(m_file);
    if (value.typeId() == QMetaType::QStringList)
        QCOMPARE(defaults.stringArrayForKey(u"a key/with ü"_s).value_or(QStringList()), value.toStringList());
    else
        QCOMPARE(defaults.stringForKey(u"a key/with ü"_s), std::optional(value.toString()));
}

void tst_UserDefaults::longIntegers_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<qint64>("integer");
    QTest::newRow("largest") << QVariant(std::numeric_limits<qlonglong>::max()) << std::numeric_limits<qint64>::max();
    QTest::newRow("beyond") << QVariant(1e30) << std::numeric_limits<qint64>::max();
    QTest::newRow("far below") << QVariant(-1e30) << std::numeric_limits<qint64>::min();
    QTest::newRow("fraction") << QVariant(2.9) << qint64(2);
    QTest::newRow("text of digits") << QVariant(u"12"_s) << qint64(12);
    QTest::newRow("text") << QVariant(u"twelve"_s) << qint64(0);
}

void tst_UserDefaults::longIntegers()
{
    QFETCH(QVariant, value);
    QFETCH(qint64, integer);
    UserDefaults(m_file).setValue(u"key"_s, value);
    QCOMPARE(UserDefaults(m_file).integerForKey(u"key"_s), integer);
    UserDefaults overridden(m_folder->filePath(u"other.ini"_s));
    overridden.setOverrides({{u"key"_s, value}});
    QCOMPARE(overridden.integerForKey(u"key"_s), integer);
}

void tst_UserDefaults::arraysKeepTheirTexts()
{
    UserDefaults defaults(m_file);
    defaults.setOverrides({{u"mixed"_s, QVariantList{u"a"_s, 5, QVariantMap(), u"b"_s}}, {u"text"_s, u"a"_s},
        {u"map"_s, QVariantMap{{u"a"_s, 1}}}});
    QCOMPARE(defaults.stringArrayForKey(u"mixed"_s).value_or(QStringList()), (QStringList{u"a"_s, u"b"_s}));
    QVERIFY(!defaults.stringArrayForKey(u"map"_s));
    QVERIFY(!defaults.stringForKey(u"map"_s));
}

void tst_UserDefaults::nilRemoves()
{
    UserDefaults defaults(m_file);
    defaults.setValue(u"key"_s, u"a"_s);
    defaults.setValue(u"key"_s, {});
    QVERIFY(!defaults.value(u"key"_s).isValid());
    QVERIFY(!UserDefaults(m_file).value(u"key"_s).isValid());
}

void tst_UserDefaults::overridesStandAbove()
{
    UserDefaults defaults(m_file);
    defaults.setValue(u"key"_s, u"file"_s);
    defaults.setOverrides({{u"key"_s, u"process"_s}});
    QCOMPARE(defaults.stringForKey(u"key"_s), std::optional(u"process"_s));
    QCOMPARE(UserDefaults(m_file).stringForKey(u"key"_s), std::optional(u"file"_s)); // never written
}

void tst_UserDefaults::storingDropsTheOverride()
{
    UserDefaults defaults(m_file);
    defaults.setOverrides({{u"key"_s, u"process"_s}});
    defaults.setValue(u"key"_s, u"stored"_s);
    QCOMPARE(defaults.stringForKey(u"key"_s), std::optional(u"stored"_s));
}

void tst_UserDefaults::fileOfGarbage()
{
    writeFile(m_file, QByteArray("\0\xFF[[]=\n=\n", 9) + QByteArray(1000, '\xFE'));
    UserDefaults defaults(m_file);
    QVERIFY(!defaults.value(u"key"_s).isValid());
    defaults.setValue(u"key"_s, u"a"_s);
    QCOMPARE(defaults.stringForKey(u"key"_s), std::optional(u"a"_s));
}

void tst_UserDefaults::fileThatCannotBeWritten()
{
    UserDefaults defaults(u"/proc/no/such/settings.ini"_s);
    defaults.setValue(u"key"_s, u"a"_s);
    QCOMPARE(defaults.stringForKey(u"key"_s), std::optional(u"a"_s)); // for as long as this process lives
}

QTEST_GUILESS_MAIN(tst_UserDefaults)
#include "tst_userdefaults.moc"
