#include "widgets/console/LogFilter.h"

#include "support/TestEnvironment.h"
#include "widgets/console/LogModel.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_LogFilter : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void everythingAtFirst();
    void byPlugin();
    void byLevel();
    void bySearch_data();
    void bySearch();
    void allTogether();
    void entriesThatComeLater();
    void entryOfARow();

private:
    void append(const QString &plugin, LogLevel level, const QString &text, const QString &command = {});
    QStringList shown() const;

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<LogModel> m_model;
    std::unique_ptr<LogFilter> m_filter;
};

void tst_LogFilter::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_model = std::make_unique<LogModel>();
    m_filter = std::make_unique<LogFilter>(*m_model);
    append(u"a"_s, LogLevel::Log, u"Hello from a"_s, u"Tidy Layers"_s);
    append(u"b"_s, LogLevel::Log, u"Hello from b"_s);
    append(u"b"_s, LogLevel::Warning, u"Careful"_s);
    append(u"a"_s, LogLevel::Error, u"TypeError: a.*"_s);
    append(QString(), LogLevel::Log, u"loader"_s);
    m_environment->queue.advance(LogModel::frame);
}

void tst_LogFilter::cleanup()
{
    m_filter.reset();
    m_model.reset();
    m_environment.reset();
}

void tst_LogFilter::append(const QString &plugin, LogLevel level, const QString &text, const QString &command)
{
    LogEntry entry;
    entry.pluginIdentifier = plugin;
    entry.level = level;
    entry.text = text;
    entry.command = command;
    m_model->append(entry);
}

QStringList tst_LogFilter::shown() const
{
    QStringList texts;
    for (int row = 0; row < m_filter->rowCount(); ++row)
        texts.append(m_filter->entry(row).text);
    return texts;
}

void tst_LogFilter::everythingAtFirst()
{
    QCOMPARE(shown().size(), 5);
}

void tst_LogFilter::byPlugin()
{
    m_filter->setPlugin(u"a"_s);
    QCOMPARE(shown(), QStringList({u"Hello from a"_s, u"TypeError: a.*"_s}));
    m_filter->setPlugin(QString());
    QCOMPARE(shown(), QStringList{u"loader"_s});
    m_filter->setPlugin(u"nobody"_s);
    QCOMPARE(shown(), QStringList());
    m_filter->setPlugin(std::nullopt);
    QCOMPARE(shown().size(), 5);
}

void tst_LogFilter::byLevel()
{
    m_filter->setLowestLevel(LogLevel::Warning);
    QCOMPARE(shown(), QStringList({u"Careful"_s, u"TypeError: a.*"_s}));
    m_filter->setLowestLevel(LogLevel::Error);
    QCOMPARE(shown(), QStringList{u"TypeError: a.*"_s});
}

void tst_LogFilter::bySearch_data()
{
    QTest::addColumn<QString>("search");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("in any case") << u"hELLO"_s << QStringList({u"Hello from a"_s, u"Hello from b"_s});
    QTest::newRow("no pattern") << u".*"_s << QStringList{u"TypeError: a.*"_s};
    QTest::newRow("names of commands") << u"tidy"_s << QStringList{u"Hello from a"_s};
    QTest::newRow("nothing") << u"xyz"_s << QStringList();
}

void tst_LogFilter::bySearch()
{
    QFETCH(QString, search);
    m_filter->setSearch(search);
    QTEST(shown(), "expected");
    m_filter->setSearch({});
    QCOMPARE(shown().size(), 5);
}

void tst_LogFilter::allTogether()
{
    m_filter->setPlugin(u"a"_s);
    m_filter->setLowestLevel(LogLevel::Warning);
    m_filter->setSearch(u"hello"_s);
    QCOMPARE(shown(), QStringList());
    m_filter->setSearch(u"type"_s);
    QCOMPARE(shown(), QStringList{u"TypeError: a.*"_s});
}

void tst_LogFilter::entriesThatComeLater()
{
    m_filter->setPlugin(u"b"_s);
    append(u"a"_s, LogLevel::Log, u"late a"_s);
    append(u"b"_s, LogLevel::Log, u"late b"_s);
    m_environment->queue.advance(LogModel::frame);
    QCOMPARE(shown(), QStringList({u"Hello from b"_s, u"Careful"_s, u"late b"_s}));
}

void tst_LogFilter::entryOfARow()
{
    m_filter->setLowestLevel(LogLevel::Error);
    QCOMPARE(m_filter->entry(0).level, LogLevel::Error);
    QCOMPARE(m_filter->entry(0).pluginIdentifier, u"a"_s);
}

QTEST_MAIN(tst_LogFilter)
#include "tst_logfilter.moc"
