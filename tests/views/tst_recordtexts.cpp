// SPDX-License-Identifier: MIT
#include "Image.h"

#include "views/FixTexts.h"
#include "views/RecordConversions.h"
#include "views/RecordField.h"

#include <QTest>

#include <limits>

class TestRecordTexts : public QObject {
    Q_OBJECT

private slots:
    void NamesOfFixModes();
    void Conversions();
    void FieldsAsText();
    void SecondsAreCut();
    void FixRows();
    void TimesThatAreNone();
};

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

Image FixImage()
{
    Image image(80);
    image.Put(0, 116.123456789).Put(8, -39.5).Put(16, 1234.5678);
    image.Put<quint32>(24, 2026).Put<quint32>(28, 1).Put<quint32>(32, 5).Put<quint32>(36, 7).Put<quint32>(40, 8);
    image.Put(48, 9.999).Put<quint8>(56, 2).Put(60, 1.5F).Put(64, 359.25F);
    image.Put(68, 1.25F).Put(72, 0.8F).Put(76, 1234567.0F);
    return image;
}

QStringList Texts(const QByteArray& bytes, const QString& first = "1.23s")
{
    return FixTexts(bytes.constData(), static_cast<std::size_t>(bytes.size()), first);
}

QDateTime Time(const Image& image)
{
    return FixDateTime(image.Bytes().constData(), static_cast<std::size_t>(image.Bytes().size()));
}

template <typename T> QString Text(T value, FieldKind kind)
{
    return FieldText(reinterpret_cast<const char*>(&value), sizeof(value), 0, kind);
}

} // namespace

void TestRecordTexts::NamesOfFixModes()
{
    const QStringList names = {"无效", "自动", "差分", "PPS", "FIXED", "FLOAT", "估算", "手动", "模拟"};
    for (int mode = 0; mode < 256; ++mode) {
        QCOMPARE(GetFixModeText(static_cast<std::uint8_t>(mode)), names.value(mode));
    }
}

void TestRecordTexts::Conversions()
{
    QCOMPARE(NmeaToDegrees(3958.1234, 'N'), 39 + 58.1234 / 60);
    QCOMPARE(NmeaToDegrees(11629.5, 'W'), -(116 + 29.5 / 60));
    QCOMPARE(NmeaToDegrees(3.0, 'S'), -0.05);
    QCOMPARE(NmeaToDegrees(3.0, '\0'), 0.05);
    // The hundredfold of 16777217 degrees is 1677721600 in single precision.
    QCOMPARE(NmeaToDegrees(1677721799.0, 'N'), 16777217 + 199 / 60.0);
    QCOMPARE(Text(235958.75, FieldKind::NmeaTime), QString("23:59:58.75"));
    QCOMPARE(Text(7.5, FieldKind::NmeaTime), QString("0:0:7.5"));
    QCOMPARE(Text<quint32>(50149, FieldKind::NmeaDate), QString("2049-1-5"));
    QCOMPARE(Text<quint32>(311250, FieldKind::NmeaDate), QString("1950-12-31"));
    QCOMPARE(NmeaTimeToHms(1e300).hour, std::numeric_limits<int>::max());
    QCOMPARE(WholePart(-2.9), -2);
    QCOMPARE(WholePart(-kInfinity), std::numeric_limits<int>::min());
}

void TestRecordTexts::FieldsAsText()
{
    // Eight-bit numbers are numbers and letters are letters, of whatever code.
    QCOMPARE(Text<quint8>(65, FieldKind::U8), QString("65"));
    QCOMPARE(Text<quint8>(200, FieldKind::I8), QString("-56"));
    QCOMPARE(Text('\xe9', FieldKind::Char), QString(QChar(0xe9)));
    QCOMPARE(Text<quint64>(18446744073709551615ULL, FieldKind::U64), QString("18446744073709551615"));
    // As QString's arg would show the value.
    for (const double value : {39.96872333, -1e-05, 0.0001, 123456.5, 20235689.123, 1e300, 100000.0}) {
        QCOMPARE(Text(value, FieldKind::F64), QString("%1").arg(value));
        QCOMPARE(Text(static_cast<float>(value), FieldKind::F32),
                 QString("%1").arg(static_cast<double>(float(value))));
    }
    // What a record doesn't hold whole has no text.
    const QByteArray bytes(16, '\1');
    const auto held = [&bytes](std::size_t size, std::size_t offset, FieldKind kind) {
        return !FieldText(bytes.constData(), size, offset, kind).isEmpty();
    };
    QVERIFY(held(8, 0, FieldKind::F64) && !held(7, 0, FieldKind::F64));
    QVERIFY(held(9, 0, FieldKind::Coordinate) && !held(8, 0, FieldKind::Coordinate));
    QVERIFY(!held(4, 3, FieldKind::U16) && !held(4, 4, FieldKind::U8));
    QVERIFY(!held(4, std::numeric_limits<std::size_t>::max(), FieldKind::U8));
}

void TestRecordTexts::SecondsAreCut()
{
    for (int ms = 0; ms < 61000; ++ms) {
        QCOMPARE(SecondsText(ms / 1000.0), QString::asprintf("%02d.%02d", ms / 1000, ms % 1000 / 10));
    }
    QCOMPARE(SecondsText(59.999999999999), QString("59.99"));
    QVERIFY(!SecondsText(1e300).isEmpty() && !SecondsText(-1e300).isEmpty());
}

void TestRecordTexts::FixRows()
{
    const QByteArray whole = FixImage().Bytes();
    const QStringList expected = {"1.23s",      "116.12345679E", "39.50000000S", "1234.57m",
                                  "2026-01-05", "07:08:09.99",   "差分",         "1.5m/s",
                                  "359.25°",    "1.25",          "0.8",          "1.23457e+06"};
    // Bytes up to which each row reads.
    const int ends[] = {0, 8, 16, 24, 36, 56, 57, 64, 68, 72, 76, 80};
    for (int size = 0; size <= whole.size(); ++size) {
        const QStringList texts = Texts(QByteArray(whole.constData(), size));
        for (int row = 0; row < 12; ++row) {
            QCOMPARE(texts[row], size < ends[row] ? QString() : expected[row]);
        }
    }
    QCOMPARE(Texts(QByteArray(80, '\xff')).mid(3, 4),
             QStringList({"nanm", "4294967295-4294967295-4294967295", "4294967295:4294967295:nan", ""}));
    QCOMPARE(CoordinateText(0.0, 'E', 'W'), QString("0.00000000E"));
    QCOMPARE(CoordinateText(-0.0, 'E', 'W'), QString("0.00000000E"));
    QCOMPARE(CoordinateText(-1e-05, 'E', 'W'), QString("0.00001000W"));
}

void TestRecordTexts::TimesThatAreNone()
{
    const Image whole = FixImage();
    QVERIFY(Time(whole).isValid());
    QVERIFY(!Time(Image(whole).Put<quint32>(24, 26)).isValid());
    QVERIFY(!Time(Image(whole).Put<quint32>(24, 10000)).isValid());
    QVERIFY(!Time(Image(whole).Put<quint32>(28, 13)).isValid());
    QVERIFY(!Time(Image(whole).Put<quint32>(32, 4294967295U)).isValid());
    QVERIFY(!Time(Image(whole).Put<quint32>(36, 24)).isValid());
    QVERIFY(!Time(Image(whole).Put(48, 60.0)).isValid());
    QVERIFY(!FixDateTime(whole.Bytes().constData(), 55).isValid());
}

QTEST_GUILESS_MAIN(TestRecordTexts)
#include "tst_recordtexts.moc"
