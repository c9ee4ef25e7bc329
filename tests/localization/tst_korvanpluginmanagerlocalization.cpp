#include "localization/KorvanPluginManagerLocalization.h"

#include <QTranslator>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

class Translator final : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        if (QByteArrayView(context) == "Localizable" && QByteArrayView(text) == "untitled script")
            return u"Skript ohne Titel"_s;
        return QByteArrayView(context) == "Other" ? u"anders"_s : QString();
    }
};

} // namespace

class tst_KorvanPluginManagerLocalization : public QObject
{
    Q_OBJECT

private slots:
    void englishWithoutTranslation();
    void translated();
    void resourcesLieBesideTheLibrary();
};

void tst_KorvanPluginManagerLocalization::englishWithoutTranslation()
{
    QCOMPARE(KorvanPluginManagerLocalizedString(u"untitled script"_s), u"untitled script"_s);
    QCOMPARE(KorvanPluginManagerLocalizedStringFromTable(u"ü %@"_s, u"Other"_s), u"ü %@"_s);
    QCOMPARE(KorvanPluginManagerLocalizedString(u""_s), u""_s);
}

void tst_KorvanPluginManagerLocalization::translated()
{
    Translator translator;
    QCoreApplication::installTranslator(&translator);
    QCOMPARE(KorvanPluginManagerLocalizedString(u"untitled script"_s), u"Skript ohne Titel"_s);
    QCOMPARE(KorvanPluginManagerLocalizedString(u"untitled"_s), u"untitled"_s);
    QCOMPARE(KorvanPluginManagerLocalizedStringFromTable(u"untitled script"_s, u"Other"_s), u"anders"_s);
    QCoreApplication::removeTranslator(&translator);
}

void tst_KorvanPluginManagerLocalization::resourcesLieBesideTheLibrary()
{
    const auto bundle = KorvanPluginManagerLocalizationHelper::bundle();
    QVERIFY(bundle.isLocalFile());
    QVERIFY(bundle.path().endsWith(u"/share/KorvanPluginManager/"_s));
}

QTEST_GUILESS_MAIN(tst_KorvanPluginManagerLocalization)
#include "tst_korvanpluginmanagerlocalization.moc"
