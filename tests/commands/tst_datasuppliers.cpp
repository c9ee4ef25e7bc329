#include "commands/DataSuppliers.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const DataSupplier cities{u"com.example.data"_s, u"cities"_s, u"Cities"_s, DataSupplier::Kind::Text};
const DataSupplier faces{u"com.example.data"_s, u"faces"_s, u"Faces"_s, DataSupplier::Kind::Image};

DataSuppliers::Supply supplying(const QString &text)
{
    return [text](const DataSuppliers::Layers &layers, const DataSuppliers::Answer &answer) {
        answer(DataSuppliers::Values(layers.size(), text));
    };
}

/// What was answered, or the error's text.
QStringList ask(const DataSuppliers &suppliers, const DataSupplier &supplier)
{
    QStringList texts;
    suppliers.supply(supplier, {nullptr, nullptr}, [&texts](const Result<DataSuppliers::Values> &values) {
        if (!values)
            return texts.append(values.error().localizedDescription);
        for (const auto &value : values.value())
            texts.append(value.value_or(u"nil"_s));
    });
    return texts;
}

} // namespace

class tst_DataSuppliers : public QObject
{
    Q_OBJECT

private slots:
    void suppliersKeepTheirOrder();
    void theOneThatIsMeantAnswers();
    void oneThatHasGoneIsAnError();
    void suppliersMayGoWhileTheyAnswer();
    void registrationsMayOutliveTheRegistry();
};

void tst_DataSuppliers::suppliersKeepTheirOrder()
{
    DataSuppliers suppliers;
    auto first = suppliers.add(faces, supplying(u"f"_s));
    const auto second = suppliers.add(cities, supplying(u"c"_s));
    QCOMPARE(suppliers.suppliers(), QList<DataSupplier>({faces, cities}));
    first.reset();
    QCOMPARE(suppliers.suppliers(), QList<DataSupplier>({cities}));
}

void tst_DataSuppliers::theOneThatIsMeantAnswers()
{
    DataSuppliers suppliers;
    const auto first = suppliers.add(faces, supplying(u"f"_s));
    const auto second = suppliers.add(cities, supplying(u"c"_s));
    QCOMPARE(ask(suppliers, cities), QStringList({u"c"_s, u"c"_s}));
}

void tst_DataSuppliers::oneThatHasGoneIsAnError()
{
    const DataSuppliers suppliers;
    QCOMPARE(
        ask(suppliers, cities), QStringList({u"The plug-in \"com.example.data\" offers no \"Cities\" any more."_s}));
}

void tst_DataSuppliers::suppliersMayGoWhileTheyAnswer()
{
    DataSuppliers suppliers;
    std::shared_ptr<void> registration;
    registration = suppliers.add(cities, [&](const DataSuppliers::Layers &, const DataSuppliers::Answer &answer) {
        registration.reset();
        answer(DataSuppliers::Values{u"last"_s});
    });
    QCOMPARE(ask(suppliers, cities), QStringList({u"last"_s}));
    QCOMPARE(suppliers.suppliers().size(), 0);
}

void tst_DataSuppliers::registrationsMayOutliveTheRegistry()
{
    auto suppliers = std::make_unique<DataSuppliers>();
    auto registration = suppliers->add(cities, supplying(u"c"_s));
    suppliers.reset();
    registration.reset();
}

QTEST_GUILESS_MAIN(tst_DataSuppliers)
#include "tst_datasuppliers.moc"
