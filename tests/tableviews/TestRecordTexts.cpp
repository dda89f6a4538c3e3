#include "Image.h"

#include "views/DisplayTimeZone.h"
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
    void ConversionsOfNoNumbers();
    void FieldsAsText();
    void FieldsThatAreNotHeld();
    void SecondsAreCut();
    void Coordinates();
    void FixRows();
    void FixRowsThatAreNotHeld();
    void FixRowsOfNoNumbers();
    void TimeZones();
    void DateTimes();
};

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
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
    for (int mode = 0; mode < 256; ++mode)
        QCOMPARE(GetFixModeText(static_cast<std::uint8_t>(mode)), names.value(mode));
}

void TestRecordTexts::Conversions()
{
    QCOMPARE(NmeaToDegrees(3958.1234, 'N'), 39 + 58.1234 / 60);
    QCOMPARE(NmeaToDegrees(11629.5, 'E'), 116 + 29.5 / 60);
    QCOMPARE(NmeaToDegrees(11629.5, 'W'), -(116 + 29.5 / 60));
    QCOMPARE(NmeaToDegrees(3.0, 'S'), -0.05);
    QCOMPARE(NmeaToDegrees(3.0, '\0'), 0.05);
    // The hundredfold of 16777217 degrees is 1677721600 in single precision.
    QCOMPARE(NmeaToDegrees(1677721799.0, 'N'), 16777217 + 199 / 60.0);

    const NmeaHms time = NmeaTimeToHms(235958.75);
    QCOMPARE(time.hour, 23);
    QCOMPARE(time.minute, 59);
    QCOMPARE(time.second, 58.75);
    QCOMPARE(NmeaTimeToHms(7.5).hour, 0);
    QCOMPARE(NmeaTimeToHms(7.5).second, 7.5);

    const NmeaYmd date = NmeaDateToYmd(50149);
    QCOMPARE(date.day, 5U);
    QCOMPARE(date.month, 1U);
    QCOMPARE(date.year, 2049U);
    QCOMPARE(NmeaDateToYmd(311250).year, 1950U);
    QCOMPARE(NmeaDateToYmd(311299).year, 1999U);
}

void TestRecordTexts::ConversionsOfNoNumbers()
{
    QVERIFY(qIsNaN(NmeaToDegrees(kNan, 'N')));
    QVERIFY(qIsInf(NmeaToDegrees(kInfinity, 'N')));
    QVERIFY(qIsNaN(NmeaTimeToHms(kNan).second));
    QCOMPARE(NmeaTimeToHms(1e300).hour, std::numeric_limits<int>::max());
    QCOMPARE(WholePart(-2.9), -2);
    QCOMPARE(WholePart(-kInfinity), std::numeric_limits<int>::min());
}

void TestRecordTexts::FieldsAsText()
{
    // Eight-bit numbers are numbers and letters are letters, of whatever code.
    QCOMPARE(Text<quint8>(65, FieldKind::U8), QString("65"));
    QCOMPARE(Text<quint8>(200, FieldKind::I8), QString("-56"));
    QCOMPARE(Text('A', FieldKind::Char), QString("A"));
    QCOMPARE(Text('\xe9', FieldKind::Char), QString(QChar(0xe9)));
    QCOMPARE(Text<quint16>(0xabcd, FieldKind::Hex16), QString("0xABCD"));
    QCOMPARE(Text<quint8>(7, FieldKind::Hex8), QString("0x7"));
    QCOMPARE(Text<quint64>(18446744073709551615ULL, FieldKind::U64), QString("18446744073709551615"));
    QCOMPARE(Text<qint32>(-2147483647, FieldKind::I32), QString("-2147483647"));
    QCOMPARE(Text(1575.42, FieldKind::F64), QString("1575.42"));
    // As QString's arg would show the value.
    for (const double value :
         {39.96872333, -1e-05, 0.0001, 123456.5, 1234567.0, 20235689.123, 1e300, 0.1, 100000.0}) {
        QCOMPARE(Text(value, FieldKind::F64), QString("%1").arg(value));
        QCOMPARE(Text(static_cast<float>(value), FieldKind::F32),
                 QString("%1").arg(static_cast<double>(float(value))));
    }
    QCOMPARE(Text(20235689.123, FieldKind::F64), QString("2.02357e+07"));
    QCOMPARE(Text(kNan, FieldKind::F64), QString("nan"));
    QCOMPARE(Text(-kInfinity, FieldKind::F64), QString("-inf"));
    QCOMPARE(Text(91530.25, FieldKind::NmeaTime), QString("9:15:30.25"));
    QCOMPARE(Text<quint32>(50126, FieldKind::NmeaDate), QString("2026-1-5"));
}

void TestRecordTexts::FieldsThatAreNotHeld()
{
    const QByteArray bytes(16, '\1');
    const auto text = [&bytes](std::size_t size, std::size_t offset, FieldKind kind) {
        return FieldText(bytes.constData(), size, offset, kind);
    };
    QVERIFY(text(7, 0, FieldKind::F64).isEmpty());
    QVERIFY(!text(8, 0, FieldKind::F64).isEmpty());
    QVERIFY(text(8, 0, FieldKind::Coordinate).isEmpty());
    QVERIFY(!text(9, 0, FieldKind::Coordinate).isEmpty());
    QVERIFY(text(4, 3, FieldKind::U16).isEmpty());
    QVERIFY(text(4, 4, FieldKind::U8).isEmpty());
    QVERIFY(text(4, 1000, FieldKind::U8).isEmpty());
    QVERIFY(text(4, std::numeric_limits<std::size_t>::max(), FieldKind::U8).isEmpty());
}

void TestRecordTexts::SecondsAreCut()
{
    QCOMPARE(SecondsText(7.5), QString("07.50"));
    QCOMPARE(SecondsText(59.999), QString("59.99"));
    QCOMPARE(SecondsText(59.999999999999), QString("59.99"));
    for (int ms = 0; ms < 61000; ++ms) {
        const QString expected = QString::asprintf("%02d.%02d", ms / 1000, ms % 1000 / 10);
        QCOMPARE(SecondsText(ms / 1000.0), expected);
    }
    QCOMPARE(SecondsText(kNan), QString("nan"));
    QVERIFY(!SecondsText(1e300).isEmpty());
    QVERIFY(!SecondsText(-1e300).isEmpty());
}

void TestRecordTexts::Coordinates()
{
    QCOMPARE(CoordinateText(0.0, 'E', 'W'), QString("0.00000000E"));
    QCOMPARE(CoordinateText(-0.0, 'E', 'W'), QString("0.00000000E"));
    QCOMPARE(CoordinateText(-1e-05, 'E', 'W'), QString("0.00001000W"));
    QCOMPARE(CoordinateText(-39.5, 'N', 'S'), QString("39.50000000S"));
    QCOMPARE(CoordinateText(116.123456789, 'E', 'W'), QString("116.12345679E"));
}

void TestRecordTexts::FixRows()
{
    const QStringList expected = {"1.23s",      "116.12345679E", "39.50000000S", "1234.57m",
                                  "2026-01-05", "07:08:09.99",   "差分",         "1.5m/s",
                                  "359.25°",    "1.25",          "0.8",          "1.23457e+06"};
    QCOMPARE(Texts(FixImage().Bytes()), expected);
}

void TestRecordTexts::FixRowsThatAreNotHeld()
{
    const QByteArray whole = FixImage().Bytes();
    // Bytes up to which each row reads.
    const int ends[] = {0, 8, 16, 24, 36, 56, 57, 64, 68, 72, 76, 80};
    for (int size = 0; size <= whole.size(); ++size) {
        const QByteArray cut(whole.constData(), size);
        const QStringList texts = Texts(cut);
        for (int row = 0; row < 12; ++row)
            QCOMPARE(texts[row], size < ends[row] ? QString() : Texts(whole)[row]);
    }
}

void TestRecordTexts::FixRowsOfNoNumbers()
{
    QCOMPARE(Texts(QByteArray(80, '\xff'))[3], QString("nanm"));
    QCOMPARE(Texts(QByteArray(80, '\xff'))[4], QString("4294967295-4294967295-4294967295"));
    QCOMPARE(Texts(QByteArray(80, '\xff'))[6], QString());
}

void TestRecordTexts::TimeZones()
{
    const QStringList names = TimeZoneNames();
    QCOMPARE(names.size(), 24);
    QCOMPARE(names.first(), QString("UTC-12"));
    QCOMPARE(names.mid(11, 2), QStringList({"UTC-1", "UTC+1"}));
    QCOMPARE(names[timeZoneBase], QString("UTC+8"));
    QCOMPARE(names.last(), QString("UTC+12"));

    timeZoneIndex = 3;
    ResetTimeZone();
    QCOMPARE(timeZoneIndex, 19);
}

void TestRecordTexts::DateTimes()
{
    Image image = FixImage();
    DateTimeTexts texts = MovedTexts(Time(image), 0);
    QCOMPARE(texts.date, QString("2026-01-05"));
    QCOMPARE(texts.time, QString("07:08:09"));
    QCOMPARE(MovedTexts(Time(image), -8).date, QString("2026-01-04"));
    QCOMPARE(MovedTexts(Time(image), -8).time, QString("23:08:09"));

    // An hour that the clocks of central Europe leave out.
    image.Put<quint32>(28, 3).Put<quint32>(32, 29).Put<quint32>(36, 1).Put<quint32>(40, 30);
    texts = MovedTexts(Time(image), 1);
    QCOMPARE(texts.time, QString("02:30:09"));
    QCOMPARE(MovedTexts(ReadTexts(texts), 1).time, QString("03:30:09"));

    const Image whole = FixImage();
    QVERIFY(!Time(Image(whole).Put<quint32>(24, 26)).isValid());
    QVERIFY(!Time(Image(whole).Put<quint32>(24, 10000)).isValid());
    QVERIFY(!Time(Image(whole).Put<quint32>(28, 13)).isValid());
    QVERIFY(!Time(Image(whole).Put<quint32>(32, 4294967295U)).isValid());
    QVERIFY(!Time(Image(whole).Put<quint32>(36, 24)).isValid());
    QVERIFY(!Time(Image(whole).Put(48, 60.0)).isValid());
    QVERIFY(!Time(Image(whole).Put(48, kNan)).isValid());
    QVERIFY(!FixDateTime(whole.Bytes().constData(), 55).isValid());
    QVERIFY(MovedTexts(QDateTime(), 1).date.isEmpty());
}

QTEST_GUILESS_MAIN(TestRecordTexts)
#include "TestRecordTexts.moc"
