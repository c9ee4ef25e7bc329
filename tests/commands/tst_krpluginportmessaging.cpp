// Texts for another program's port: a real server on this computer listens.

#include "commands/KRPluginPortMessaging.h"
#include "platform/RemoteMessagePort.h"

#include <QLocalServer>
#include <QLocalSocket>
#include <QtEndian>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class tst_KRPluginPortMessaging : public QObject
{
    Q_OBJECT

private slots:
    void nobodyListens_data();
    void nobodyListens();
    void textsArrive_data();
    void textsArrive();
    void listenerThatHangsUp();
    void listenerThatDoesNotRead();

private:
    static QString portName() { return u"korvan-test-%1"_s.arg(QCoreApplication::applicationPid()); }
};

void tst_KRPluginPortMessaging::nobodyListens_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("unknown") << portName() + u"-nobody"_s;
    QTest::newRow("empty") << u""_s;
    QTest::newRow("far too long") << QString(5000, u'x');
    QTest::newRow("a file") << u"/etc/passwd"_s;
}

void tst_KRPluginPortMessaging::nobodyListens()
{
    QFETCH(QString, name);
    QVERIFY(!KRPluginPortMessaging::sendMessage(u"text"_s, name));
}

void tst_KRPluginPortMessaging::textsArrive_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("text") << u"ü \U0001F600"_s;
    QTest::newRow("empty") << u""_s;
    QTest::newRow("NUL") << u"a\0b"_s;
}

void tst_KRPluginPortMessaging::textsArrive()
{
    QFETCH(QString, text);
    QLocalServer server;
    QVERIFY(server.listen(portName()));
    QVERIFY(KRPluginPortMessaging::sendMessage(text, portName()));

    QVERIFY(server.hasPendingConnections() || server.waitForNewConnection(5000));
    const std::unique_ptr<QLocalSocket> connection(server.nextPendingConnection());
    const auto data = text.toUtf8();
    QTRY_COMPARE(connection->bytesAvailable(), qint64(data.size() + 8));
    const auto message = connection->readAll();
    QCOMPARE(qFromBigEndian<quint32>(message.constData()), 0x1111u);
    QCOMPARE(qFromBigEndian<quint32>(message.constData() + 4), quint32(data.size()));
    QCOMPARE(message.mid(8), data);
}

void tst_KRPluginPortMessaging::listenerThatHangsUp()
{
    QLocalServer server;
    QVERIFY(server.listen(portName()));
    const auto port = RemoteMessagePort::create(portName());
    QVERIFY(port && port->isValid());
    QVERIFY(server.waitForNewConnection(5000));
    server.nextPendingConnection()->abort();
    server.close();
    port->sendRequest(1, QByteArray(10000000, 'x'), 2000ms); // whatever it answers, it comes back
    QVERIFY(!port->sendRequest(1, QByteArray(10000000, 'x'), 2000ms));
}

void tst_KRPluginPortMessaging::listenerThatDoesNotRead()
{
    QLocalServer server;
    QVERIFY(server.listen(portName()));
    const auto port = RemoteMessagePort::create(portName());
    QVERIFY(port);
    QVERIFY(!port->sendRequest(1, QByteArray(10000000, 'x'), 50ms));
}

QTEST_GUILESS_MAIN(tst_KRPluginPortMessaging)
#include "tst_krpluginportmessaging.moc"
