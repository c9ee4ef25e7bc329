// The exact words about installations that have failed.

#include "updates/InstallationFailures.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_InstallationFailures : public QObject
{
    Q_OBJECT

private slots:
    void texts();
};

void tst_InstallationFailures::texts()
{
    const KRError reason{u"posix"_s, 1, u"No %1 room"_s};
    QCOMPARE(movingAsideFailureLine(reason), u"Failure to move the plugin with error No %1 room."_s);
    QCOMPARE(movingAsideFailureLine({}), u"Failure to move the plugin (unknown error)"_s);
    QCOMPARE(installationFailureLine(reason, "/%2", "/b"),
        u"1. Failure to install plugin with error No %1 room from: /%2, to: /b"_s);
    QCOMPARE(installationFailureLine({}, "/a", "/b"), u"2. Failure to install plugin from: /a, to: /b"_s);
    QCOMPARE(installationFailure(reason), reason);
    QCOMPARE(installationFailure({}), (KRError{u"NSURLErrorDomain"_s, 0, u"Failure to install plugin."_s}));
}

QTEST_APPLESS_MAIN(tst_InstallationFailures)
#include "tst_installationfailures.moc"
