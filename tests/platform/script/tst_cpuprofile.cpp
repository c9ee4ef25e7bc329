#include "platform/script/CPUProfile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

CPUProfile::Call call(const QString &name, int line = 1, int column = 1)
{
    return {name, name, {}, u"file:///a.js"_s, line, column};
}

QJsonObject parsed(const CPUProfile &profile)
{
    return QJsonDocument::fromJson(profile.toJSON()).object();
}

QJsonObject node(const QJsonObject &profile, int id)
{
    return profile[u"nodes"_s].toArray().at(id - 1).toObject();
}

QString pathOf(const QJsonObject &profile, int id)
{
    const auto nodes = profile[u"nodes"_s].toArray();
    const auto name = node(profile, id)[u"callFrame"_s].toObject()[u"functionName"_s].toString();
    for (const auto &parent : nodes) {
        if (parent.toObject()[u"children"_s].toArray().contains(id))
            return pathOf(profile, parent.toObject()[u"id"_s].toInt()) + u' ' + name;
    }
    return name;
}

} // namespace

class tst_CPUProfile : public QObject
{
    Q_OBJECT

private slots:
    void nothing();
    void treeAndTimes();
    void silence();
    void placesOfFunctions();
    void originalNames();
};

void tst_CPUProfile::nothing()
{
    const auto profile = parsed(CPUProfile(1000));
    QCOMPARE(profile.keys(), QStringList({u"endTime"_s, u"nodes"_s, u"samples"_s, u"startTime"_s, u"timeDeltas"_s}));
    QCOMPARE(profile[u"samples"_s].toArray(), QJsonArray());
}

void tst_CPUProfile::treeAndTimes()
{
    CPUProfile profile(1000);
    profile.add(5000, {call(u"a"_s), call(u"b"_s)});
    profile.add(6000, {call(u"a"_s)});
    profile.add(7500, {call(u"a"_s), call(u"b"_s)});
    profile.add(8000, {call(u"b"_s)});
    QCOMPARE(profile.sampleCount(), 4);
    const auto json = parsed(profile);
    QCOMPARE(json[u"startTime"_s], QJsonValue(5000));
    QCOMPARE(json[u"endTime"_s], QJsonValue(9000));
    QCOMPARE(json[u"timeDeltas"_s].toArray(), QJsonArray({0, 1000, 1500, 500}));
    QStringList paths;
    QMap<int, int> counts;
    const auto samples = json[u"samples"_s].toArray();
    for (const auto &sample : samples) {
        paths.append(pathOf(json, sample.toInt()));
        ++counts[sample.toInt()];
    }
    QCOMPARE(paths, QStringList({u"(root) a b"_s, u"(root) a"_s, u"(root) a b"_s, u"(root) b"_s}));
    for (auto count = counts.begin(); count != counts.end(); ++count)
        QCOMPARE(node(json, count.key())[u"hitCount"_s], QJsonValue(count.value()));
}

void tst_CPUProfile::silence()
{
    CPUProfile profile(1000);
    profile.add(0, {call(u"a"_s)});
    profile.add(10000, {call(u"a"_s)});
    profile.add(21000, {call(u"a"_s)});
    const auto json = parsed(profile);
    QStringList paths;
    const auto samples = json[u"samples"_s].toArray();
    for (const auto &sample : samples)
        paths.append(pathOf(json, sample.toInt()));
    QCOMPARE(paths, QStringList({u"(root) a"_s, u"(root) a"_s, u"(root) (idle)"_s, u"(root) a"_s}));
    QCOMPARE(json[u"timeDeltas"_s].toArray(), QJsonArray({0, 10000, 1000, 10000}));
}

void tst_CPUProfile::placesOfFunctions()
{
    CPUProfile profile(1000);
    profile.add(0, {call(u"a"_s, 0, 0)});
    profile.add(1000, {call(u"a"_s, 7, 3)});
    profile.add(2000, {call(u"a"_s, 5, 9)});
    profile.add(3000, {call(u"a"_s, 7, 1)});
    profile.add(4000, {{u"native"_s, u"native"_s, {}, {}, 0, 0}});
    const auto json = parsed(profile);
    const auto frame = node(json, 2)[u"callFrame"_s].toObject();
    QCOMPARE(frame[u"url"_s], QJsonValue(u"file:///a.js"_s));
    QCOMPARE(frame[u"lineNumber"_s], QJsonValue(4)); // counted from 0
    QCOMPARE(frame[u"columnNumber"_s], QJsonValue(8));
    QCOMPARE(node(json, 2)[u"positionTicks"_s].toArray(),
        QJsonArray({QJsonObject{{u"line"_s, 5}, {u"ticks"_s, 1}}, QJsonObject{{u"line"_s, 7}, {u"ticks"_s, 2}}}));
    QCOMPARE(node(json, 3)[u"callFrame"_s].toObject()[u"lineNumber"_s], QJsonValue(-1));
}

void tst_CPUProfile::originalNames()
{
    CPUProfile profile(1000);
    profile.add(0, {call(u"e"_s)});
    profile.add(1000, {{u"e"_s, u"e"_s, u"mixColours"_s, u"file:///a.js"_s, 1, 1}});
    QCOMPARE(node(parsed(profile), 2)[u"callFrame"_s].toObject()[u"functionName"_s], QJsonValue(u"mixColours"_s));
}

QTEST_GUILESS_MAIN(tst_CPUProfile)
#include "tst_cpuprofile.moc"
