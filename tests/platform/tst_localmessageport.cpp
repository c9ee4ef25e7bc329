// The receiving end of a message port, fed by the real sending end.

#include "platform/LocalMessagePort.h"
#include "platform/RemoteMessagePort.h"

#include <QFile>
#include <QLocalSocket>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class tst_LocalMessagePort : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void messagesArriveInOrder();
    void severalSenders();
    void messageInPieces();
    void senderThatBreaksOff();
    void senderOfTooMuch();
    void handlerDestroysThePort();
    void nameIsTaken();
    void leftoverIsNoObstacle();
    void filesAreNeverReplaced();
    void namesThatCannotBe_data();
    void namesThatCannotBe();

private:
    QString name() const { return m_folder->filePath(u"port"_s); }
    std::unique_ptr<LocalMessagePort> makePort()
    {
        return LocalMessagePort::create(name(), [this](quint32 number, const QByteArray &data) {
            m_received.append(QByteArray::number(number) + ' ' + data);
        });
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QByteArrayList m_received;
};

void tst_LocalMessagePort::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_received.clear();
}

void tst_LocalMessagePort::messagesArriveInOrder()
{
    const auto port = makePort();
    QVERIFY(port);
    const auto sender = RemoteMessagePort::create(name());
    QVERIFY(sender);
    QVERIFY(sender->sendRequest(1, "first", 5000ms));
    QVERIFY(sender->sendRequest(2, "", 5000ms));
    QVERIFY(sender->sendRequest(3, QByteArray("a\0b", 3), 5000ms));
    QTRY_COMPARE(m_received, (QByteArrayList{"1 first", "2 ", QByteArray("3 a\0b", 5)}));
}

void tst_LocalMessagePort::severalSenders()
{
    const auto port = makePort();
    for (int number = 0; number < 20; ++number) {
        const auto sender = RemoteMessagePort::create(name());
        QVERIFY(sender && sender->sendRequest(quint32(number), "text", 5000ms)); // and hangs up
    }
    QTRY_COMPARE(m_received.size(), 20);
}

void tst_LocalMessagePort::messageInPieces()
{
    const auto port = makePort();
    QLocalSocket sender;
    sender.connectToServer(name());
    QVERIFY(sender.waitForConnected());
    const QByteArray message("\0\0\0\x07\0\0\0\x04text\0\0\0\x08\0\0\0\0", 20);
    for (const auto byte : message) {
        sender.write(&byte, 1);
        sender.flush();
        QCoreApplication::processEvents();
    }
    QTRY_COMPARE(m_received, (QByteArrayList{"7 text", "8 "}));
}

void tst_LocalMessagePort::senderThatBreaksOff()
{
    const auto port = makePort();
    {
        QLocalSocket sender;
        sender.connectToServer(name());
        QVERIFY(sender.waitForConnected());
        sender.write(QByteArray("\0\0\0\x07\0\0\0\x04te", 10));
        sender.flush();
    }
    const auto other = RemoteMessagePort::create(name());
    QVERIFY(other && other->sendRequest(1, "whole", 5000ms));
    QTRY_COMPARE(m_received, QByteArrayList{"1 whole"});
}

void tst_LocalMessagePort::senderOfTooMuch()
{
    const auto port = makePort();
    QLocalSocket sender;
    sender.connectToServer(name());
    QVERIFY(sender.waitForConnected());
    sender.write(QByteArray("\0\0\0\x07\xFF\xFF\xFF\xFFtext", 12));
    sender.flush();
    QTRY_COMPARE(sender.state(), QLocalSocket::UnconnectedState);
    QCOMPARE(m_received, QByteArrayList());
}

void tst_LocalMessagePort::handlerDestroysThePort()
{
    std::unique_ptr<LocalMessagePort> port;
    int calls = 0;
    port = LocalMessagePort::create(name(), [&](quint32, const QByteArray &) {
        ++calls;
        port.reset();
    });
    const auto sender = RemoteMessagePort::create(name());
    QVERIFY(sender->sendRequest(1, "first", 5000ms));
    QVERIFY(sender->sendRequest(2, "second", 5000ms));
    QTRY_COMPARE(calls, 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    QCOMPARE(calls, 1);
    QVERIFY(!RemoteMessagePort::create(name()));
}

void tst_LocalMessagePort::nameIsTaken()
{
    const auto port = makePort();
    QVERIFY(!makePort());
    const auto sender = RemoteMessagePort::create(name());
    QVERIFY(sender->sendRequest(1, "still there", 5000ms));
    QTRY_COMPARE(m_received, QByteArrayList{"1 still there"});
}

void tst_LocalMessagePort::leftoverIsNoObstacle()
{
    auto leftover = makePort();
    QVERIFY(QFile::rename(name(), name() + u".kept"_s));
    leftover.reset();
    QVERIFY(QFile::rename(name() + u".kept"_s, name()));
    const auto port = makePort();
    QVERIFY(port);
    QVERIFY(RemoteMessagePort::create(name()));
}

void tst_LocalMessagePort::filesAreNeverReplaced()
{
    QFile file(name());
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("precious") == 8);
    file.close();
    QVERIFY(!makePort());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), "precious");
}

void tst_LocalMessagePort::namesThatCannotBe_data()
{
    QTest::addColumn<QString>("portName");

    QTest::newRow("empty") << u""_s;
    QTest::newRow("far too long") << u"x"_s.repeated(5000);
    QTest::newRow("in no folder") << u"/no/such/folder/port"_s;
}

void tst_LocalMessagePort::namesThatCannotBe()
{
    QFETCH(QString, portName);
    QVERIFY(!LocalMessagePort::create(portName, [](quint32, const QByteArray &) {}));
}

QTEST_GUILESS_MAIN(tst_LocalMessagePort)
#include "tst_localmessageport.moc"
