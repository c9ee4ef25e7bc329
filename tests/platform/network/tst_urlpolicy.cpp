#include "platform/network/URLPolicy.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_URLPolicy : public QObject
{
    Q_OBJECT

private slots:
    void fetching_data();
    void fetching();
    void following_data();
    void following();
    void targets_data();
    void targets();
};

void tst_URLPolicy::fetching_data()
{
    QTest::addColumn<QByteArray>("url");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");
    const QString plain = u"The connection to \"%1\" would not be encrypted, which is not allowed."_s;
    const QString scheme = u"The URL of \"%1\" is neither http nor https."_s;
    const QString bad = u"\"%1\" is not a valid URL."_s;

    QTest::newRow("https") << "https://example.com/feed.json"_ba << 0 << QString();
    QTest::newRow("https in capitals") << "HTTPS://EXAMPLE.COM/"_ba << 0 << QString();
    QTest::newRow("plain on localhost") << "http://localhost:8080/"_ba << 0 << QString();
    QTest::newRow("plain on localhost in capitals") << "HTTP://LocalHost/"_ba << 0 << QString();
    QTest::newRow("plain on 127.0.0.1") << "http://127.0.0.1/"_ba << 0 << QString();
    QTest::newRow("plain on all of 127") << "http://127.255.3.4/"_ba << 0 << QString();
    QTest::newRow("plain on 127.0.0.1 as one number") << "http://2130706433/"_ba << 0 << QString();
    QTest::newRow("plain on ::1") << "http://[::1]:80/"_ba << 0 << QString();

    QTest::newRow("plain") << "http://example.com/"_ba << -1022 << plain.arg(u"example.com"_s);
    QTest::newRow("plain on a neighbour") << "http://192.168.0.1/"_ba << -1022 << plain.arg(u"192.168.0.1"_s);
    QTest::newRow("plain on any address") << "http://0.0.0.0/"_ba << -1022 << plain.arg(u"0.0.0.0"_s);
    QTest::newRow("name that begins like an address")
        << "http://127.0.0.1.example.com/"_ba << -1022 << plain.arg(u"127.0.0.1.example.com"_s);
    QTest::newRow("name that ends like localhost")
        << "http://not.localhost/"_ba << -1022 << plain.arg(u"not.localhost"_s);
    QTest::newRow("name that begins like localhost")
        << "http://localhost.example.com/"_ba << -1022 << plain.arg(u"localhost.example.com"_s);
    QTest::newRow("localhost as the user")
        << "http://localhost@example.com/"_ba << -1022 << plain.arg(u"example.com"_s);
    QTest::newRow("localhost behind a backslash")
        << "http://localhost\\@example.com/"_ba << -1022 << plain.arg(u"example.com"_s);
    QTest::newRow("localhost in the fragment")
        << "http://example.com#@localhost/"_ba << -1022 << plain.arg(u"example.com"_s);

    QTest::newRow("file") << "file:///etc/passwd"_ba << -1002 << scheme.arg(u"file:///etc/passwd"_s);
    QTest::newRow("file on a host") << "file://localhost/etc/passwd"_ba << -1002 << scheme.arg(u"localhost"_s);
    QTest::newRow("ftp") << "ftp://example.com/"_ba << -1002 << scheme.arg(u"example.com"_s);
    QTest::newRow("script") << "javascript:alert(1)"_ba << -1002 << scheme.arg(u"javascript:alert(1)"_s);
    QTest::newRow("relative") << "feed.json"_ba << -1002 << scheme.arg(u"feed.json"_s);
    QTest::newRow("no scheme") << "//example.com/"_ba << -1002 << scheme.arg(u"example.com"_s);

    QTest::newRow("empty") << ""_ba << -1000 << bad.arg(QString());
    QTest::newRow("no host") << "https:///path"_ba << -1000 << bad.arg(u"https:///path"_s);
    QTest::newRow("space in the host") << "https://exam ple.com/"_ba << -1000 << bad.arg(QString());
    QTest::newRow("half an address") << "https://[::1/"_ba << -1000 << bad.arg(QString());
}

void tst_URLPolicy::fetching()
{
    QFETCH(QByteArray, url);
    const auto refusal = refusalToFetch(QUrl::fromEncoded(url));
    QTEST(refusal ? refusal->localizedDescription : QString(), "text");
    QTEST(refusal ? refusal->code : 0, "code");
    QCOMPARE(refusal ? refusal->domain : u"NSURLErrorDomain"_s, u"NSURLErrorDomain"_s);
}

void tst_URLPolicy::following_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<int>("code");
    QTest::newRow("https to https") << u"https://a.example"_s << u"https://b.example"_s << 0;
    QTest::newRow("http to https") << u"http://localhost"_s << u"https://b.example"_s << 0;
    QTest::newRow("http to http on this computer") << u"http://localhost"_s << u"http://127.0.0.1"_s << 0;
    QTest::newRow("http to http elsewhere") << u"http://localhost"_s << u"http://b.example"_s << -1022;
    QTest::newRow("https to http") << u"https://a.example"_s << u"http://a.example"_s << -1022;
    QTest::newRow("https to http on this computer") << u"https://localhost"_s << u"http://localhost"_s << -1022;
    QTest::newRow("https to a file") << u"https://a.example"_s << u"file:///etc/passwd"_s << -1002;
    QTest::newRow("https to nothing") << u"https://a.example"_s << u""_s << -1000;
}

void tst_URLPolicy::following()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    const auto refusal = refusalToFollow(QUrl(from), QUrl(to));
    QTEST(refusal ? refusal->code : 0, "code");
}

void tst_URLPolicy::targets_data()
{
    QTest::addColumn<QByteArray>("location");
    QTest::addColumn<QByteArray>("target");
    QTest::newRow("absolute") << "https://b.example/x"_ba
                              << "https://b.example/x"_ba;
    QTest::newRow("same scheme") << "//b.example/x"_ba
                                 << "https://b.example/x"_ba;
    QTest::newRow("absolute path") << "/x"_ba
                                   << "https://a.example/x"_ba;
    QTest::newRow("relative path") << "x"_ba
                                   << "https://a.example/folder/x"_ba;
    QTest::newRow("upwards, too far") << "../../../x"_ba
                                      << "https://a.example/x"_ba;
    QTest::newRow("query") << "?other"_ba
                           << "https://a.example/folder/file?other"_ba;
    QTest::newRow("empty") << ""_ba
                           << ""_ba;
    QTest::newRow("space") << "/x y"_ba
                           << "https://a.example/x%20y"_ba;
    QTest::newRow("beyond ASCII") << "/\xC3\xBC"_ba
                                  << "https://a.example/%C3%BC"_ba;
    QTest::newRow("backslashes lead to no host") << "\\\\b.example\\x"_ba
                                                 << "https://a.example/folder/%5C%5Cb.example%5Cx"_ba;
    QTest::newRow("no URL") << "http://[b"_ba
                            << ""_ba;
}

void tst_URLPolicy::targets()
{
    QFETCH(QByteArray, location);
    QTEST(redirectTarget(QUrl(u"https://a.example/folder/file?query"_s), location).toEncoded(), "target");
}

QTEST_GUILESS_MAIN(tst_URLPolicy)
#include "tst_urlpolicy.moc"
