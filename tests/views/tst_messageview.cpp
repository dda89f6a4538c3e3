// SPDX-License-Identifier: MIT
#include "Image.h"
#include "LogCatcher.h"

#include "host/support/HostSupportConfig.h"
#include "views/message/MessageViewWin.h"

#include <QHeaderView>
#include <QLabel>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QTreeWidget>

#include <array>
#include <limits>
#include <variant>

class TestMessageView : public QObject {
    Q_OBJECT

private slots:
    void TreeByProduct();
    void TitlesAndPages();
    void Lists();
    void SatelliteTables();
    void MeasurementTables();
    void CutRecordsLeaveTheRestEmpty();
    void OtherTypesChangeNothing();
    void ValuesAreSetInPlace();
};

namespace {

QByteArray Record(quint32 type, const QByteArray& payload)
{
    return Image(4).Put(0, type).Bytes() + payload;
}

QTreeWidgetItem* Item(MessageViewWin& view, const QStringList& path)
{
    QTreeWidgetItem* item = view.findChild<QTreeWidget*>()->invisibleRootItem();
    for (const QString& name : path) {
        int i = 0;
        while (item->child(i)->text(0) != name) {
            ++i;
        }
        item = item->child(i);
    }
    return item;
}

void Click(MessageViewWin& view, const QStringList& path)
{
    emit view.findChild<QTreeWidget*>()->itemClicked(Item(view, path), 0);
}

/// The model that is shown when the item is clicked.
QStandardItemModel* Model(MessageViewWin& view, const QStringList& path)
{
    Click(view, path);
    return qobject_cast<QStandardItemModel*>(view.findChild<QTableView*>("tableView")->model());
}

QStringList Column(const QAbstractItemModel* model, int column)
{
    QStringList texts;
    for (int row = 0; row < model->rowCount(); ++row) {
        texts += model->index(row, column).data().toString();
    }
    return texts;
}

QStringList Headers(const QAbstractItemModel* model)
{
    QStringList texts;
    for (int column = 0; column < model->columnCount(); ++column) {
        texts += model->headerData(column, Qt::Horizontal).toString();
    }
    return texts;
}

/// A name and, in brackets, what lies below it.
QString TreeText(const QTreeWidgetItem* item)
{
    QStringList below;
    for (int i = 0; i < item->childCount(); ++i) {
        below += TreeText(item->child(i));
    }
    return item->text(0) + (below.isEmpty() ? QString() : '(' + below.join(' ') + ')');
}

QString TreeText(MessageViewWin& view)
{
    return TreeText(view.findChild<QTreeWidget*>()->invisibleRootItem());
}

// clang-format off
using Value = std::variant<quint8, qint8, quint16, qint16, quint32, qint32, quint64, float, double, char>;

quint8 operator""_u8(unsigned long long value) { return static_cast<quint8>(value); }
quint16 operator""_u16(unsigned long long value) { return static_cast<quint16>(value); }

/// A row of a list: its name, where its value lies in the payload, and how that is shown.
struct ListRow {
    const char* name;
    int offset;
    Value value;
    const char* text;
};

struct ListCase {
    const char* node;
    const char* name;
    quint32 type;
    int size; ///< of the payload, without tail padding
    std::array<ListRow, 13> rows;
};

const ListCase kListCases[] = {
    {"NMEA", "GGA", 0, 57, {{
        {"valid", 0, 1_u8, "1"}, {"UtcTime", 8, 91530.25, "9:15:30.25"}, {"Latitude", 16, 3958.1234, "39.9687"},
        {"LatDirection", 24, 'N', "N"}, {"Longitude", 32, 11629.5, "-116.492"}, {"LonDirection", 40, 'W', "W"},
        {"Mode", 41, 2_u8, "2"}, {"SvNumInUse", 42, 65_u8, "65"}, {"HDOP", 44, 0.85F, "0.85"},
        {"Altitude", 48, -12.3456789, "-12.3457"}, {"AltitudeUnits", 56, 'M', "M"},
    }}},
    {"NMEA", "RMC", 1, 70, {{
        {"valid", 0, 255_u8, "255"}, {"UtcTime", 8, 235959.5, "23:59:59.5"}, {"PosStatus", 16, 'A', "A"},
        {"Latitude", 24, 3.0, "-0.05"}, {"LatDirection", 32, 'S', "S"}, {"Longitude", 40, 17959.9, "179.998"},
        {"LonDirection", 48, 'E', "E"}, {"KnotSpd", 52, 12.5F, "12.5"}, {"Course", 56, 271.125F, "271.125"},
        {"Date", 60, 10150U, "1950-1-1"}, {"MagDec", 64, -3.5F, "-3.5"}, {"MagDecDir", 68, '\0', ""},
        {"Mode", 69, 'D', "D"},
    }}},
    {"NMEA", "GLL", 4, 49, {{
        {"valid", 0, 0_u8, "0"}, {"Latitude", 8, 4530.0, "45.5"}, {"LatDirection", 16, 'N', "N"},
        {"Longitude", 24, 1230.0, "12.5"}, {"LonDirection", 32, 'E', "E"}, {"UtcTime", 40, 7.0, "0:0:7"},
        {"Satatus", 48, 'V', "V"},
    }}},
    {"NMEA", "VTG", 5, 21, {{
        {"valid", 0, 1_u8, "1"}, {"TrueCourse", 4, 90.5F, "90.5"},
        {"MagCourse", 8, std::numeric_limits<float>::quiet_NaN(), "nan"}, {"KnotSpd", 12, 0.001F, "0.001"},
        {"KmSpeed", 16, std::numeric_limits<float>::infinity(), "inf"}, {"Mode", 20, 'A', "A"},
    }}},
    {"NMEA", "ZDA", 6, 22, {{
        {"valid", 0, 1_u8, "1"}, {"UtcTime", 8, 123456.0, "12:34:56"}, {"Date", 16, 311226U, "2026-12-31"},
        {"HourBias", 20, qint8(-5), "-5"}, {"MinBias", 21, qint8(-65), "-65"},
    }}},
    {"Binary", "Loc", 100, 88, {{
        {"validMask", 0, 4294967295U, "4294967295"}, {"timestamp", 8, quint64(1450000000123), "1450000000123"},
        {"latitude", 16, 39.123456789, "39.1235"}, {"longitude", 24, -116.5, "-116.5"},
        {"clkBias", 32, 1e-9, "1e-09"}, {"clkDrift", 40, 2.5, "2.5"}, {"speede", 48, 3.5, "3.5"},
        {"speedn", 56, 4.5, "4.5"}, {"speedu", 64, -5.5, "-5.5"}, {"altitude", 72, 6.5F, "6.5"},
        {"heading", 76, 7.5F, "7.5"}, {"posAcc", 80, 8.5F, "8.5"}, {"speedAcc", 84, 9.5F, "9.5"},
    }}},
    {"Binary", "PdrComm", 103, 28, {{
        {"deltaTime", 0, 0.5, "0.5"}, {"context", 8, 1_u8, "1"}, {"isStatic", 9, 2_u8, "2"},
        {"pvtState", 10, 3_u8, "3"}, {"inuseNum", 12, 40000_u16, "40000"}, {"qop", 16, 5.5F, "5.5"},
        {"ems", 20, 6.5F, "6.5"}, {"", 24, 7.5F, "7.5"},
    }}},
    {"Binary", "PdrLs", 105, 60, {{
        {"latitude", 0, 1.5, "1.5"}, {"longitude", 8, 2.5, "2.5"}, {"speede", 0, 1.5, "1.5"},
        {"speedn", 16, 3.5, "3.5"}, {"speedu", 24, 4.5, "4.5"}, {"altitude", 32, 5.5, "5.5"},
        {"qop", 40, 6.5F, "6.5"}, {"hdop", 44, 7.5F, "7.5"}, {"ems", 48, 8.5F, "8.5"},
        {"inuseNum", 52, 9.5F, "9.5"}, {"isLsFix", 56, 1000_u16, "1000"}, {"isRaimSucc", 58, 11_u8, "11"},
        {"", 59, 12_u8, "12"},
    }}},
    {"Binary", "PpsSts", 106, 1, {{{"isEnabled", 0, 65_u8, "65"}}}},
    {"Binary", "FixMode", 107, 4, {{{"modeMask", 0, 2147483649U, "2147483649"}}}},
    {"Binary", "NmeaMode", 108, 4, {{{"nmeaMask", 0, 7U, "7"}}}},
    {"Binary", "Tsensor", 109, 2, {{{"temperature", 0, qint16(-40), "-40"}}}},
    {"Binary", "FtmCn0", 110, 16, {{
        {"testStatus", 0, 3000000000U, "3000000000"}, {"satCn0", 4, -1, "-1"}, {"freqBias", 8, -2, "-2"},
        {"freqDrift", 12, 3, "3"},
    }}},
};
// clang-format on

} // namespace

void TestMessageView::TreeByProduct()
{
    const QString nmea = "NMEA(GGA RMC GSV(GPS BDS GAL GLO QZS) GSA(GPS BDS GAL GLO QZS) GLL VTG ZDA)";
    const QString all = "Binary(Loc Meas PdrComm PdrMeas PdrLs PpsSts FixMode NmeaMode Tsensor FtmCn0)";
    MessageViewWin view(nullptr);
    QCOMPARE(TreeText(view), "(" + nmea + " " + all + ")");
    const QTreeWidget* tree = view.findChild<QTreeWidget*>();
    QCOMPARE(tree->minimumWidth(), 200);
    QCOMPARE(tree->maximumWidth(), 200);
    QVERIFY(tree->isHeaderHidden());

    HostSupportConfig::SetProduct(27);
    MessageViewWin reduced(nullptr);
    HostSupportConfig::SetProduct(0);
    QCOMPARE(TreeText(reduced), "(" + nmea + " Binary(Loc Meas PpsSts FixMode FtmCn0))");
}

void TestMessageView::TitlesAndPages()
{
    MessageViewWin view(nullptr);
    const auto* title = view.findChild<QLabel*>("tittle");
    const auto* pages = view.findChild<QStackedWidget*>("stackedWidget");
    QCOMPARE(title->text(), QString("NMEA消息"));
    QCOMPARE(view.findChild<QLabel*>("msgLabel")->text(), QString("NMEA"));
    QCOMPARE(pages->currentWidget()->objectName(), QString("page_2"));

    Click(view, {"NMEA", "GSV", "GLO"});
    QCOMPARE(title->text(), QString("NMEA > GSV > GLO消息"));
    QCOMPARE(pages->currentWidget()->objectName(), QString("page"));
    Click(view, {"NMEA", "GSV"});
    QCOMPARE(title->text(), QString("NMEA > GSV消息"));
    QCOMPARE(pages->currentWidget()->objectName(), QString("page_2"));
    Click(view, {"Binary", "Loc"});
    QCOMPARE(title->text(), QString("Binary > Loc消息"));
    QCOMPARE(pages->currentIndex(), 1);

    // Only what stands behind a blank counts.
    QTreeWidgetItem* item = Item(view, {"NMEA", "GGA"});
    item->setText(0, "GN VTG");
    view.SlotUpdateRightWin(item, 0);
    QCOMPARE(view.findChild<QTableView*>("tableView")->model()->rowCount(), 6);
    view.SlotUpdateRightWin(nullptr, 0);
}

void TestMessageView::Lists()
{
    MessageViewWin view(nullptr);
    for (const ListCase& one : kListCases) {
        Image payload(one.size);
        QStringList names;
        QStringList values;
        for (const ListRow& row : one.rows) {
            if (row.text == nullptr) {
                break;
            }
            std::visit([&](auto value) { payload.Put(row.offset, value); }, row.value);
            names += row.name;
            values += row.text;
        }
        const QStandardItemModel* model = Model(view, {one.node, one.name});
        QCOMPARE(Headers(model), QStringList({"", "value"}));
        QCOMPARE(Column(model, 0).join(' '), names.join(' ').trimmed());
        QCOMPARE(Column(model, 1).join(""), QString());
        // Written also while another type is shown.
        Click(view, {"Binary", "Meas"});
        Send(view, Record(one.type, payload.Bytes()));
        QCOMPARE(Model(view, {one.node, one.name}), model);
        QCOMPARE(Column(model, 0), names);
        QCOMPARE(Column(model, 1), values);
    }
}

void TestMessageView::SatelliteTables()
{
    Image gsv(1832);
    Image gsa(144);
    for (int block = 0; block < 5; ++block) {
        for (int cell = 0; cell < 36 * 5; ++cell) {
            gsv.Put<quint16>(2 + block * 366 + 6 + cell * 2, block * 10000 + cell);
        }
        const int at = 4 + block * 28;
        gsa.Put<quint8>(at, block).Put(at + 1, 'A').Put<quint8>(at + 2, 3).Put<quint8>(at + 3, 12);
        for (int prn = 0; prn < 12; ++prn) {
            gsa.Put<quint8>(at + 4 + prn, 65 + prn + block);
        }
        gsa.Put(at + 16, 1.5F).Put(at + 20, 2.5F).Put(at + 24, block + 0.25F);
    }
    MessageViewWin view(nullptr);
    const QStringList constellations = {"GPS", "BDS", "GAL", "GLO", "QZS"};
    // Empty before the first record.
    QCOMPARE(Column(Model(view, {"NMEA", "GSV", "QZS"}), 0).join(""), QString());
    Send(view, Record(2, gsv.Bytes()));
    Send(view, Record(3, gsa.Bytes()));
    QStringList names = {"valid", "OptMode", "PosMode", "ValidPrnNum"};
    for (int prn = 1; prn <= 12; ++prn) {
        names += QString("Prn%1").arg(prn);
    }
    names += {"Pdop", "Hdop", "Vdop"};
    for (int block = 0; block < 5; ++block) {
        const QStandardItemModel* model = Model(view, {"NMEA", "GSV", constellations[block]});
        QCOMPARE(Headers(model), QStringList({"Prn", "Elev", "Azim", "Cn0", "Freq"}));
        QCOMPARE(model->rowCount(), 36);
        for (int cell = 0; cell < 36 * 5; ++cell) {
            QCOMPARE(model->index(cell / 5, cell % 5).data().toInt(), block * 10000 + cell);
        }

        model = Model(view, {"NMEA", "GSA", constellations[block]});
        QStringList values = {QString::number(block), "A", "3", "12"};
        for (int prn = 0; prn < 12; ++prn) {
            values += QString::number(65 + prn + block);
        }
        QCOMPARE(Column(model, 0), names);
        QCOMPARE(Column(model, 1), values + QStringList({"1.5", "2.5", QString("%1.25").arg(block)}));
    }
    // Nothing writes the labels of the group.
    for (const char* name : {"totalGsvNum", "currGsvNo", "satNum", "FillNum"}) {
        QCOMPARE(view.findChild<QLabel*>(name)->text(), QString());
    }
}

void TestMessageView::MeasurementTables()
{
    // The last of the measurements stays empty and is shown all the same.
    Image meas(4416);
    Image pdr(404);
    for (int row = 0; row < 49; ++row) {
        for (int i = 0; i < 15; ++i) {
            if (i < 5) {
                meas.Put<quint8>(16 + row * 88 + i, 65 + row + i);
            } else {
                meas.Put(16 + row * 88 + i * 8 - 32, row * 100 + i + 0.5);
            }
        }
        for (int i = 0; i < 4; ++i) {
            pdr.Put<quint8>(4 + row * 8 + i, 65 + row + i);
        }
        pdr.Put(4 + row * 8 + 4, row + 0.5F);
    }
    MessageViewWin view(nullptr);
    Send(view, Record(101, meas.Bytes()));
    Send(view, Record(104, pdr.Bytes()));

    const auto text = [](const QStandardItemModel* model, int row, int column) {
        return model->index(row, column).data().toString();
    };
    const QStandardItemModel* model = Model(view, {"Binary", "Meas"});
    QCOMPARE(Headers(model), QStringList({"svid", "constellation", "cn0", "inuseFlag", "satFlag", "carrierFreq",
                                          "psr", "doppler", "carrierPhase", "satPosX", "satPosY", "satPosZ",
                                          "satSpeedX", "satSpeedY", "satSpeedZ"}));
    QCOMPARE(model->rowCount(), 50);
    for (int i = 0; i < 15; ++i) {
        for (int row = 0; row < 49; ++row) {
            QCOMPARE(text(model, row, i), QString::number(i < 5 ? 65 + row + i : row * 100 + i + 0.5));
        }
        QCOMPARE(text(model, 49, i), QString("0"));
    }
    model = Model(view, {"Binary", "PdrMeas"});
    QCOMPARE(Headers(model), QStringList({"svid", "gnssType", "inuseFlag", "shape", "psrNs"}));
    QCOMPARE(model->rowCount(), 50);
    for (int row = 0; row < 49; ++row) {
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(text(model, row, i), QString::number(i < 4 ? 65 + row + i : row + 0.5));
        }
    }
}

void TestMessageView::CutRecordsLeaveTheRestEmpty()
{
    MessageViewWin view(nullptr);
    const QStandardItemModel* gga = Model(view, {"NMEA", "GGA"});
    const QByteArray whole = Record(0, QByteArray(64, 'A'));
    Send(view, whole);
    const QStringList values = Column(gga, 1);
    QCOMPARE(values.mid(6), QStringList({"65", "65", "12.0784", "2.26163e+06", "A"}));
    Send(view, whole.left(4 + 47)); // in the middle of HDOP
    QCOMPARE(Column(gga, 1), values.mid(0, 8) + QStringList({"", "", ""}));
    Send(view, whole);         // and back
    Send(view, whole.left(3)); // no type, no change
    QCOMPARE(Column(gga, 1), values);
}

void TestMessageView::OtherTypesChangeNothing()
{
    MessageViewWin view(nullptr);
    const LogCatcher log;
    for (const quint32 type : {7U, 8U, 99U, 102U, 111U, 0xffffffffU}) {
        Send(view, Record(type, QByteArray(4416, '\1')));
    }
    QCOMPARE(log.Lines(), QStringList());
    for (QTreeWidgetItemIterator it(view.findChild<QTreeWidget*>()); *it != nullptr; ++it) {
        view.SlotUpdateRightWin(*it, 0);
        if (const QAbstractItemModel* model = view.findChild<QTableView*>("tableView")->model()) {
            QCOMPARE(Column(model, model->columnCount() - 1).join(""), QString());
        }
    }
}

void TestMessageView::ValuesAreSetInPlace()
{
    MessageViewWin view(nullptr);
    const QStandardItemModel* model = Model(view, {"Binary", "Meas"});
    Image meas(4416);
    Send(view, Record(101, meas.Bytes()));
    const QSignalSpy changed(model, &QAbstractItemModel::dataChanged);
    Send(view, Record(101, meas.Bytes()));
    QCOMPARE(changed.count(), 0);
    meas.Put(16 + 88 * 7 + 16, 1.5);
    Send(view, Record(101, meas.Bytes()));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed[0][0].toModelIndex(), model->index(7, 6));
}

QTEST_MAIN(TestMessageView)
#include "tst_messageview.moc"
