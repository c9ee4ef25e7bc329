#include "widgets/console/LogModel.h"

#include "support/TestEnvironment.h"

#include <QAbstractItemModelTester>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_LogModel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void entriesComeWithTheFrame();
    void oneInsertionForMany();
    void manyTakeSeveralFrames();
    void nothingIsPlannedWhenNothingWaits();
    void oldestGoFirst();
    void moreThanFitAtOnce();
    void longTextsTakeTheRoomOfMany();
    void longestTextOfAll();
    void clearing();
    void whatIsShown();
    void hostileText();

private:
    void append(int count, int first = 0);
    QStringList texts() const;
    VirtualMainQueue &queue() { return m_environment->queue; }

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<LogModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

void tst_LogModel::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_model = std::make_unique<LogModel>(10);
    m_tester = std::make_unique<QAbstractItemModelTester>(
        m_model.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
}

void tst_LogModel::cleanup()
{
    m_tester.reset();
    m_model.reset();
    m_environment.reset();
}

void tst_LogModel::append(int count, int first)
{
    for (int i = first; i < first + count; ++i) {
        LogEntry entry;
        entry.text = QString::number(i);
        m_model->append(entry);
    }
}

QStringList tst_LogModel::texts() const
{
    QStringList texts;
    for (int row = 0; row < m_model->rowCount(); ++row)
        texts.append(m_model->entry(row).text);
    return texts;
}

void tst_LogModel::entriesComeWithTheFrame()
{
    append(2);
    QCOMPARE(m_model->rowCount(), 0);
    queue().advance(LogModel::frame - std::chrono::milliseconds(1));
    QCOMPARE(m_model->rowCount(), 0);
    queue().advance(std::chrono::milliseconds(1));
    QCOMPARE(texts(), QStringList({u"0"_s, u"1"_s}));
}

void tst_LogModel::oneInsertionForMany()
{
    QSignalSpy insertions(m_model.get(), &QAbstractItemModel::rowsInserted);
    QSignalSpy batches(m_model.get(), &LogModel::batchEnded);
    append(7);
    queue().advance(LogModel::frame);
    QCOMPARE(insertions.size(), 1);
    QCOMPARE(batches.size(), 1);
    QCOMPARE(m_model->rowCount(), 7);
}

void tst_LogModel::manyTakeSeveralFrames()
{
    LogModel model;
    LogEntry entry;
    const int count = int(LogModel::largestBatch) * 2 + 1;
    for (int i = 0; i < count; ++i)
        model.append(entry);
    queue().advance(LogModel::frame);
    QCOMPARE(model.rowCount(), int(LogModel::largestBatch));
    queue().advance(LogModel::frame);
    queue().advance(LogModel::frame);
    QCOMPARE(model.rowCount(), count);
}

void tst_LogModel::nothingIsPlannedWhenNothingWaits()
{
    append(1);
    QCOMPARE(queue().scheduledCount(), std::size_t(1));
    queue().advance(LogModel::frame);
    QCOMPARE(queue().scheduledCount(), std::size_t(0));
}

void tst_LogModel::oldestGoFirst()
{
    append(10);
    queue().advance(LogModel::frame);
    append(3, 10);
    queue().advance(LogModel::frame);
    QCOMPARE(m_model->rowCount(), 10);
    QCOMPARE(texts().first(), u"3"_s);
    QCOMPARE(texts().last(), u"12"_s);
}

void tst_LogModel::moreThanFitAtOnce()
{
    append(25);
    queue().advance(LogModel::frame * 10);
    QCOMPARE(m_model->rowCount(), 10);
    QCOMPARE(texts().first(), u"15"_s);
    QCOMPARE(texts().last(), u"24"_s);
}

void tst_LogModel::longTextsTakeTheRoomOfMany()
{
    append(1);
    queue().advance(LogModel::frame);
    LogEntry half;
    half.text = QString(LogModel::mostCharacters / 2, u'x');
    for (int i = 0; i < 2; ++i)
        m_model->append(half);
    queue().advance(LogModel::frame);
    QCOMPARE(m_model->rowCount(), 2);
    append(1, 7);
    queue().advance(LogModel::frame);
    QCOMPARE(m_model->rowCount(), 2);
    QCOMPARE(texts().last(), u"7"_s);
    for (int i = 0; i < 4; ++i)
        m_model->append(half); // which do not all wait
    append(1, 8);
    queue().advance(LogModel::frame);
    QCOMPARE(m_model->rowCount(), 3);
    QCOMPARE(m_model->entry(0).text, u"7"_s);
    QCOMPARE(texts().last(), u"8"_s);
    m_model->clear();
    m_model->append(half);
    queue().advance(LogModel::frame);
    QCOMPARE(m_model->rowCount(), 1);
}

void tst_LogModel::longestTextOfAll()
{
    append(3);
    queue().advance(LogModel::frame);
    LogEntry entry;
    entry.text = QString(LogModel::mostCharacters + 1, u'x');
    m_model->append(entry);
    queue().advance(LogModel::frame);
    QCOMPARE(m_model->rowCount(), 1);
    QCOMPARE(m_model->entry(0).text.size(), entry.text.size());
    append(1);
    queue().advance(LogModel::frame);
    QCOMPARE(texts(), QStringList{u"0"_s});
}

void tst_LogModel::clearing()
{
    append(3);
    queue().advance(LogModel::frame);
    append(3, 3);
    m_model->clear();
    queue().advance(LogModel::frame);
    QCOMPARE(m_model->rowCount(), 0);
    append(1, 6);
    queue().advance(LogModel::frame);
    QCOMPARE(texts(), QStringList{u"6"_s});
}

void tst_LogModel::whatIsShown()
{
    LogEntry entry;
    entry.time = QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5, 6));
    entry.level = LogLevel::Error;
    entry.pluginIdentifier = u"com.example.tidy"_s;
    entry.pluginName = u"Tidy"_s;
    entry.text = u"first\nsecond"_s;
    entry.file = QUrl(u"file:///plugins/Tidy.korvanplugin/Contents/Korvan/tidy.js"_s);
    entry.line = 12;
    m_model->append(entry);
    queue().advance(LogModel::frame);
    const auto shown = [this](int column) { return m_model->index(0, column).data().toString(); };
    QCOMPARE(shown(LogModel::TimeColumn), u"03:04:05.006"_s);
    QCOMPARE(shown(LogModel::PluginColumn), u"Tidy"_s);
    QCOMPARE(shown(LogModel::MessageColumn), u"first …"_s);
    QCOMPARE(shown(LogModel::PlaceColumn), u"tidy.js:12"_s);
    const auto message = m_model->index(0, LogModel::MessageColumn);
    QCOMPARE(message.data(Qt::AccessibleTextRole).toString(), u"Error: first second"_s);
    QCOMPARE(message.data(LogModel::TextRole).toString(), entry.text);
    QCOMPARE(message.data(LogModel::FileRole).toUrl(), entry.file);
    QCOMPARE(message.data(LogModel::LineRole).toInt(), 12);
    QCOMPARE(message.data(LogModel::IdentifierRole).toString(), entry.pluginIdentifier);
}

void tst_LogModel::hostileText()
{
    LogEntry entry;
    entry.pluginName = u"<b>\u202eTidy"_s;
    entry.text = QString(1'000'000, u'x');
    m_model->append(entry);
    queue().advance(LogModel::frame);
    QCOMPARE(m_model->index(0, LogModel::PluginColumn).data().toString(), u"<b>Tidy"_s);
    QVERIFY(m_model->index(0, LogModel::MessageColumn).data().toString().size() < 400);
    QCOMPARE(m_model->index(0, LogModel::PlaceColumn).data().toString(), QString());
}

QTEST_MAIN(tst_LogModel)
#include "tst_logmodel.moc"
