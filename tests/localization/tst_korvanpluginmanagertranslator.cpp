#include "bundles/KRPluginBundle.h"
#include "localization/KorvanPluginManagerLocalization.h"
#include "localization/KorvanPluginManagerTranslator.h"
#include "platform/network/URLError.h"
#include "updates/UpdatingInfoError.h"

#include <QtTest>

#include <thread>

using namespace Qt::StringLiterals;

class tst_KorvanPluginManagerTranslator : public QObject
{
    Q_OBJECT

private slots:
    void languageOfALocale_data();
    void languageOfALocale();
    void textsInEachLanguage_data();
    void textsInEachLanguage();
    void textsForAllThreads();
    void englishWithoutIt();
    void hostsChoiceIsTheDefault();
};

void tst_KorvanPluginManagerTranslator::languageOfALocale_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("untitled"); // empty: there is no translator

    QTest::newRow("German") << u"de"_s << u"Ohne Titel"_s;
    QTest::newRow("German in Austria") << u"de_AT"_s << u"Ohne Titel"_s;
    QTest::newRow("French in Canada") << u"fr_CA"_s << u"sans titre"_s;
    QTest::newRow("Japanese") << u"ja_JP"_s << u"名称未設定"_s;
    QTest::newRow("Chinese in China") << u"zh_CN"_s << u"未命名"_s;
    QTest::newRow("Chinese in Singapore") << u"zh_SG"_s << u"未命名"_s;
    QTest::newRow("simplified Chinese") << u"zh_Hans"_s << u"未命名"_s;
    QTest::newRow("Chinese in Taiwan is traditional") << u"zh_TW"_s << QString();
    QTest::newRow("Chinese in Hong Kong is traditional") << u"zh_HK"_s << QString();
    QTest::newRow("English") << u"en_US"_s << u"untitled"_s;
    QTest::newRow("English in Britain") << u"en_GB"_s << u"untitled"_s;
    QTest::newRow("a language without texts") << u"pt_BR"_s << QString();
    QTest::newRow("no language") << u"C"_s << QString();
}

void tst_KorvanPluginManagerTranslator::languageOfALocale()
{
    QFETCH(QString, locale);
    QFETCH(QString, untitled);
    const auto translator = KorvanPluginManagerTranslator(QLocale(locale));
    QCOMPARE(bool(translator), !untitled.isEmpty());
    if (translator)
        QCOMPARE(translator->translate("Localizable", "untitled"), untitled);
}

void tst_KorvanPluginManagerTranslator::textsInEachLanguage_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("scriptTitle");
    QTest::addColumn<QString>("feedError");
    QTest::addColumn<QString>("transferError");
    QTest::addColumn<QString>("fileError");

    QTest::newRow("English") << QLocale(u"en"_s) << u"untitled script"_s
                             << u"The update feed “https://a.example/f” is larger than 4 MB."_s
                             << u"The server \"a.example\" cannot be reached."_s
                             << u"The download from \"a.example\" cannot be written to its file: %1 full."_s;
    QTest::newRow("German") << QLocale(u"de"_s) << u"Skript ohne Titel"_s
                            << u"Der Update-Feed „https://a.example/f“ ist größer als 4\u00A0MB."_s
                            << u"Der Server „a.example“ ist nicht erreichbar."_s
                            << u"Der Download von „a.example“ kann nicht in die Datei geschrieben werden: %1 full."_s;
    QTest::newRow("French")
        << QLocale(u"fr"_s) << u"script sans titre"_s
        << u"Le flux de mises à jour «\u00A0https://a.example/f\u00A0» dépasse 4\u00A0Mo."_s
        << u"Le serveur «\u00A0a.example\u00A0» est injoignable."_s
        << u"Impossible d’écrire le téléchargement depuis «\u00A0a.example\u00A0» dans son fichier\u00A0: %1 full."_s;
    QTest::newRow("Japanese") << QLocale(u"ja"_s) << u"名称未設定スクリプト"_s
                              << u"アップデートフィード「https://a.example/f」のサイズが4\u00A0MBを超えています。"_s
                              << u"サーバー「a.example」に接続できません。"_s
                              << u"「a.example」からのダウンロードをファイルに書き込めません：%1 full。"_s;
    QTest::newRow("simplified Chinese") << QLocale(u"zh_CN"_s) << u"未命名脚本"_s
                                        << u"更新源“https://a.example/f”大于 4\u00A0MB。"_s
                                        << u"无法连接到服务器“a.example”。"_s
                                        << u"无法将从“a.example”下载的内容写入文件：%1 full。"_s;
}

void tst_KorvanPluginManagerTranslator::textsInEachLanguage()
{
    QFETCH(QLocale, locale);
    const auto translator = KorvanPluginManagerTranslator(locale);
    QVERIFY(translator && QCoreApplication::installTranslator(translator.get()));
    const QUrl url(u"https://a.example/f"_s);
    QTEST(KRPluginBundle::scriptDefaultTitle(), "scriptTitle");
    QTEST(updatingInfoError(UpdatingInfoErrorCode::TooLarge, url).localizedDescription, "feedError");
    QTEST(urlError(URLErrorCode::CannotConnectToHost, url).localizedDescription, "transferError");
    QTEST(urlError(URLErrorCode::CannotWriteToFile, url, u"%1 full"_s).localizedDescription, "fileError");
    QCOMPARE(KorvanPluginManagerLocalizedString(u"no such key"_s), u"no such key"_s);
    QCOMPARE(KorvanPluginManagerLocalizedString(u""_s), u""_s);
    QCOMPARE(KorvanPluginManagerLocalizedStringFromTable(u"untitled"_s, u"Other"_s), u"untitled"_s);
}

void tst_KorvanPluginManagerTranslator::textsForAllThreads()
{
    const auto translator = KorvanPluginManagerTranslator(QLocale(u"de"_s));
    QVERIFY(translator && QCoreApplication::installTranslator(translator.get()));
    QString text;
    std::thread([&text] {
        text = KorvanPluginManagerLocalizedString(u"untitled"_s);
        const auto another = KorvanPluginManagerTranslator(QLocale(u"fr"_s));
        QCOMPARE(another->translate("Localizable", "untitled"), u"sans titre"_s);
    }).join();
    QCOMPARE(text, u"Ohne Titel"_s);
}

void tst_KorvanPluginManagerTranslator::englishWithoutIt()
{
    auto translator = KorvanPluginManagerTranslator(QLocale(u"de"_s));
    QVERIFY(translator && QCoreApplication::installTranslator(translator.get()));
    QCOMPARE(KRPluginBundle::scriptDefaultTitle(), u"Skript ohne Titel"_s);
    translator.reset();
    QCOMPARE(KRPluginBundle::scriptDefaultTitle(), u"untitled script"_s);
}

void tst_KorvanPluginManagerTranslator::hostsChoiceIsTheDefault()
{
    const QLocale before;
    QLocale::setDefault(QLocale(u"ja_JP"_s));
    const auto translator = KorvanPluginManagerTranslator();
    QLocale::setDefault(before);
    QVERIFY(translator);
    QCOMPARE(translator->translate("Localizable", "untitled"), u"名称未設定"_s);
}

QTEST_GUILESS_MAIN(tst_KorvanPluginManagerTranslator)
#include "tst_korvanpluginmanagertranslator.moc"
