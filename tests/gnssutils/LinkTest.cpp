#include <QtTest>
class LinkTest : public QObject {
    Q_OBJECT
};
QTEST_GUILESS_MAIN(LinkTest)
#include "LinkTest.moc"
