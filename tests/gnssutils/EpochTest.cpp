#include <QtTest>
class EpochTest : public QObject {
    Q_OBJECT
};
QTEST_GUILESS_MAIN(EpochTest)
#include "EpochTest.moc"
