#include "platform/NotificationCenter.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_NotificationCenter : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_seen.clear(); }

    void observersAreCalledInOrder();
    void namesAndSendersAreTold();
    void observationEndsWithItsToken();
    void observerThatEndsItself();
    void observerThatEndsTheNext();
    void observerThatComesMeanwhile();
    void notificationInsideOfANotification();
    void centerMayGoFirst();
    void tokenMoves();

private:
    NotificationObserver::Callback noting(const QString &text)
    {
        return [this, text](const Notification &) { m_seen.append(text); };
    }

    QStringList m_seen;
};

void tst_NotificationCenter::observersAreCalledInOrder()
{
    NotificationCenter center;
    const auto a = center.addObserver(u"n"_s, nullptr, noting(u"a"_s));
    const auto b = center.addObserver(u"n"_s, nullptr, noting(u"b"_s));
    center.post({u"n"_s, this});
    QCOMPARE(m_seen, (QStringList{u"a"_s, u"b"_s}));
}

void tst_NotificationCenter::namesAndSendersAreTold()
{
    NotificationCenter center;
    const int other = 0;
    const auto mine = center.addObserver(u"n"_s, this, noting(u"mine"_s));
    const auto any = center.addObserver(u"n"_s, nullptr, noting(u"any"_s));
    center.post({u"n"_s, &other});
    center.post({u"N"_s, this});
    center.post({u"n"_s, this});
    QCOMPARE(m_seen, (QStringList{u"any"_s, u"mine"_s, u"any"_s}));
}

void tst_NotificationCenter::observationEndsWithItsToken()
{
    NotificationCenter center;
    {
        const auto token = center.addObserver(u"n"_s, nullptr, noting(u"a"_s));
    }
    auto token = center.addObserver(u"n"_s, nullptr, noting(u"b"_s));
    token.reset();
    token.reset();
    center.post({u"n"_s, this});
    QCOMPARE(m_seen, QStringList());
}

void tst_NotificationCenter::observerThatEndsItself()
{
    NotificationCenter center;
    NotificationObserver token;
    const auto text = std::make_shared<QString>(u"once"_s);
    token = center.addObserver(u"n"_s, nullptr, [this, &token, text](const Notification &) {
        token.reset();
        m_seen.append(*text); // what the callback holds is still there
    });
    center.post({u"n"_s, this});
    center.post({u"n"_s, this});
    QCOMPARE(m_seen, QStringList{u"once"_s});
}

void tst_NotificationCenter::observerThatEndsTheNext()
{
    NotificationCenter center;
    NotificationObserver next;
    const auto first = center.addObserver(u"n"_s, nullptr, [&](const Notification &) { next.reset(); });
    next = center.addObserver(u"n"_s, nullptr, noting(u"never"_s));
    center.post({u"n"_s, this});
    QCOMPARE(m_seen, QStringList());
}

void tst_NotificationCenter::observerThatComesMeanwhile()
{
    NotificationCenter center;
    std::vector<NotificationObserver> late;
    const auto first = center.addObserver(u"n"_s, nullptr, [&](const Notification &) {
        for (int i = 0; i < 100; ++i)
            late.push_back(center.addObserver(u"n"_s, nullptr, noting(u"late"_s)));
    });
    center.post({u"n"_s, this});
    QCOMPARE(m_seen, QStringList());
    center.post({u"n"_s, this});
    QCOMPARE(m_seen.size(), 100);
}

void tst_NotificationCenter::notificationInsideOfANotification()
{
    NotificationCenter center;
    const auto first = center.addObserver(u"outer"_s, nullptr, [&](const Notification &) {
        center.post({u"inner"_s, this});
    });
    const auto second = center.addObserver(u"inner"_s, nullptr, noting(u"inner"_s));
    const auto third = center.addObserver(u"outer"_s, nullptr, noting(u"outer"_s));
    center.post({u"outer"_s, this});
    QCOMPARE(m_seen, (QStringList{u"inner"_s, u"outer"_s}));
}

void tst_NotificationCenter::centerMayGoFirst()
{
    auto center = std::make_unique<NotificationCenter>();
    auto token = center->addObserver(u"n"_s, nullptr, noting(u"a"_s));
    center.reset();
    token.reset();
    QCOMPARE(m_seen, QStringList());
}

void tst_NotificationCenter::tokenMoves()
{
    NotificationCenter center;
    auto token = center.addObserver(u"n"_s, nullptr, noting(u"a"_s));
    auto other = std::move(token);
    center.post({u"n"_s, this});
    other = NotificationObserver();
    center.post({u"n"_s, this});
    QCOMPARE(m_seen, QStringList{u"a"_s});
}

QTEST_GUILESS_MAIN(tst_NotificationCenter)
#include "tst_notificationcenter.moc"
