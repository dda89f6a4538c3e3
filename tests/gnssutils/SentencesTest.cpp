#include <QtTest>
class SentencesTest : public QObject {
    Q_OBJECT
};
QTEST_GUILESS_MAIN(SentencesTest)
#include "SentencesTest.moc"
