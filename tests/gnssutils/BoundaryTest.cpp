#include <QtTest>
class BoundaryTest : public QObject {
    Q_OBJECT
};
QTEST_GUILESS_MAIN(BoundaryTest)
#include "BoundaryTest.moc"
