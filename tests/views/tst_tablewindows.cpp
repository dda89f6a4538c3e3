// SPDX-License-Identifier: MIT
#include "Image.h"
#include "LogFolder.h"

#include "base/ProcessState.h"
#include "views/BasicViewWin.h"
#include "views/DataViewWin.h"
#include "views/DisplayTimeZone.h"
#include "views/PackageViewWin.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTableView>
#include <QTableWidget>
#include <QTest>
#include <QToolButton>

class TestTableWindows : public QObject {
    Q_OBJECT

private slots:
    void init() { Global::ResetForNewWindow(); }

    void DataTable();
    void BasicForm();
    void BasicFormMovesByListPlaces();
    void PackageRows();
    void PackageTableRestarts();
    void PackageTableFollows();
};

namespace {

Image FixImage()
{
    Image image(80);
    image.Put(0, -116.5).Put(8, 39.25).Put(16, 55.5);
    image.Put<quint32>(24, 2026).Put<quint32>(28, 3).Put<quint32>(32, 29).Put<quint32>(36, 23).Put<quint32>(40,
                                                                                                            30);
    return image.Put(48, 7.5).Put<quint8>(56, 0).Put(60, 1.5F);
}

QStringList Values(const DataViewWin& view)
{
    QStringList texts;
    const auto* table = view.findChild<QTableWidget*>();
    for (int row = 0; row < table->rowCount(); ++row) {
        texts += table->item(row, 0)->text();
    }
    return texts;
}

/// Date and time of a basic view.
QString Shown(const BasicViewWin& view)
{
    return view.findChild<QLineEdit*>("date")->text() + ' ' + view.findChild<QLineEdit*>("time")->text();
}

Image Package(quint8 type, quint8 direction, quint16 subType, quint16 length)
{
    return Image(6).Put(0, type).Put(1, direction).Put(2, subType).Put(4, length);
}

const QAbstractItemModel* Table(const PackageViewWin& view)
{
    return view.findChild<QTableView*>("tableView")->model();
}

QStringList Headers(const QAbstractItemModel* model)
{
    QStringList texts;
    for (int column = 0; column < model->columnCount(); ++column) {
        texts += model->headerData(column, Qt::Horizontal).toString();
    }
    return texts;
}

} // namespace

void TestTableWindows::DataTable()
{
    DataViewWin view(nullptr);
    const auto* table = view.findChild<QTableWidget*>();
    QStringList labels;
    for (int row = 0; row < table->rowCount(); ++row) {
        labels += table->verticalHeaderItem(row)->text();
    }
    QCOMPARE(labels, QStringList({"TTFF", "经度", "纬度", "海拔高度", "UTC日期", "UTC时间", "定位模式", "速度",
                                  "航向", "位置精度DOP", "水平精度DOP", "高程精度DOP"}));
    QCOMPARE(table->columnCount(), 1);
    QCOMPARE(table->horizontalHeaderItem(0)->text(), QString("值"));
    QCOMPARE(table->currentRow(), 0);
    QCOMPARE(table->editTriggers(), QAbstractItemView::NoEditTriggers);
    QVERIFY(table->alternatingRowColors());

    Global::firstFixText = "28.31s";
    Send(view, FixImage().Bytes());
    QCOMPARE(Values(view), QStringList({"28.31s", "116.50000000W", "39.25000000N", "55.5m", "2026-03-29",
                                        "23:30:07.50", "无效", "1.5m/s", "0°", "0", "0", "0"}));
}

void TestTableWindows::BasicForm()
{
    BasicViewWin view(nullptr);
    const auto text = [&view](const char* name) { return view.findChild<QLineEdit*>(name)->text(); };
    auto* zones = view.findChild<QComboBox*>();
    QCOMPARE(zones->count(), 24);
    QCOMPARE(zones->itemText(0) + zones->itemText(11) + zones->itemText(12) + zones->itemText(23),
             QString("UTC-12UTC-1UTC+1UTC+12"));
    QCOMPARE(zones->currentText(), QString("UTC+8"));
    Send(view, FixImage().Bytes());
    QCOMPARE(text("longitude") + text("latitude"), QString("116.50000000W39.25000000N"));
    QCOMPARE(text("altitude"), QString("55.5"));
    QCOMPARE(Shown(view), QString("2026-03-29 23:30:07"));
    Send(view, FixImage().Put<quint32>(28, 0).Bytes()); // no month
    QCOMPARE(Shown(view), QString(" "));
    Send(view, FixImage().Bytes().left(20));
    QCOMPARE(text("altitude"), QString());
}

void TestTableWindows::BasicFormMovesByListPlaces()
{
    BasicViewWin view(nullptr);
    auto* zones = view.findChild<QComboBox*>();
    zones->setCurrentIndex(18);
    QCOMPARE(Global::timeZoneIndex, 18); // also with nothing to move
    Send(view, FixImage().Bytes());
    QCOMPARE(Shown(view), QString("2026-03-29 22:30:07"));
    zones->setCurrentIndex(20);
    QCOMPARE(Shown(view), QString("2026-03-30 00:30:07"));
    zones->setCurrentIndex(11);
    QCOMPARE(Shown(view), QString("2026-03-29 15:30:07"));
    zones->setCurrentIndex(12); // from UTC-1 to UTC+1
    QCOMPARE(Shown(view), QString("2026-03-29 16:30:07"));

    // Through the night in which the clocks of central Europe go forward.
    Send(view, FixImage().Put<quint32>(36, 9).Bytes());
    QCOMPARE(Shown(view), QString("2026-03-29 02:30:07"));
    zones->setCurrentIndex(13);
    QCOMPARE(Shown(view), QString("2026-03-29 03:30:07"));

    // All forms show one zone, those that are opened later too.
    BasicViewWin second(nullptr);
    QCOMPARE(second.findChild<QComboBox*>()->currentText(), QString("UTC+2"));
    second.SlotTimeZoneChanged(14);
    QCOMPARE(zones->currentText(), QString("UTC+3"));
    QCOMPARE(Shown(view), QString("2026-03-29 04:30:07"));
    view.SlotTimeZoneChanged(-1);
    view.SlotTimeZoneChanged(24);
    QCOMPARE(Global::timeZoneIndex, 14);
}

void TestTableWindows::PackageRows()
{
    const LogFolder folder;
    PackageViewWin view(nullptr);
    const QAbstractItemModel* table = Table(view);
    QCOMPARE(Headers(table), QStringList({"时间戳", "数据类型", "方向", "子数据类型", "数据长度"}));
    Send(view, Package(0xab, 0, 0xfe12, 65535).Bytes());
    Send(view, Package(7, 65, 0, 0).Bytes());
    Send(view, Package(7, 1, 5, 9).Bytes().left(3));
    const QStringList rows[] = {
        {"0xAB", "receive", "0xFE12", "65535"}, {"0x7", "send", "0x0", "0"}, {"0x7", "send", "", ""}};
    QCOMPARE(table->rowCount(), 3);
    for (int row = 0; row < 3; ++row) {
        const QString time = table->index(row, 0).data().toString();
        QVERIFY2(QRegularExpression("^[0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3}$").match(time).hasMatch(),
                 qPrintable(time));
        for (int column = 0; column < 4; ++column) {
            QCOMPARE(table->index(row, column + 1).data().toString(), rows[row][column]);
        }
    }
}

void TestTableWindows::PackageTableRestarts()
{
    const LogFolder folder;
    PackageViewWin view(nullptr);
    const QAbstractItemModel* table = Table(view);
    int most = 0;
    connect(table, &QAbstractItemModel::rowsInserted, [&] { most = qMax(most, table->rowCount()); });
    const QByteArray bytes("\xef\xbb\xbf\x00\xff\x80", 6);
    const auto send = [&](int count) {
        for (int i = 0; i < count; ++i) {
            Send(view, bytes);
        }
    };
    send(50);
    QCOMPARE(table->rowCount(), 50);
    send(1);
    QCOMPARE(most, 51);
    QCOMPARE(table->rowCount(), 0);
    QCOMPARE(Headers(table).first(), QString("时间戳"));

    // A table that the user empties restarts with the 51st record all the same.
    send(30);
    view.findChild<QToolButton*>("clearBtn")->click();
    QCOMPARE(table->rowCount(), 0);
    send(20);
    QCOMPARE(table->rowCount(), 20);
    send(1);
    QCOMPARE(table->rowCount(), 0);

    // The log goes on through all of that.
    const QStringList files = folder.Files("GnssData/logs/package");
    QCOMPARE(files.size(), 1);
    const QByteArray content = LogFolder::Content(folder.Path("GnssData/logs/package/" + files[0]));
    QCOMPARE(LogFolder::WithoutTimes(content), (bytes + '\n').repeated(102));
}

void TestTableWindows::PackageTableFollows()
{
    const LogFolder folder;
    PackageViewWin view(nullptr);
    view.resize(400, 200);
    view.show();
    const QScrollBar* bar = view.findChild<QTableView*>("tableView")->verticalScrollBar();
    // How far below the visible rows the end is once more records have come.
    const auto distance = [&] {
        for (int i = 0; i < 15; ++i) {
            Send(view, Package(1, 0, 2, 3).Bytes());
        }
        QCoreApplication::processEvents();
        return bar->maximum() - bar->value();
    };
    auto* button = view.findChild<QToolButton*>("bottomBtn");
    QVERIFY(distance() > 0);
    button->click();
    QCOMPARE(distance(), 0);
    button->click();
    QVERIFY(distance() > 0);
}

QTEST_MAIN(TestTableWindows)
#include "tst_tablewindows.moc"
