// SPDX-License-Identifier: MIT
#include "LogFolder.h"
#include "PaintedViews.h"

#include "base/ProcessState.h"
#include "base/TrackState.h"
#include "bridge/ClassGnss.h"
#include "views/BasicViewWin.h"
#include "views/CompassViewWin.h"
#include "views/DataViewWin.h"
#include "views/PackageViewWin.h"
#include "views/log/HexViewWin.h"
#include "views/log/NMEAViewWin.h"
#include "views/message/MessageTables.h"
#include "views/message/MessageViewWin.h"
#include "views/signal/Cn0ViewWin.h"
#include "views/sky/SatellitesPosViewWin.h"
#include "views/track/PositioningViewWin.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QTableView>
#include <QTableWidget>
#include <QTest>
#include <QTreeWidget>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <random>

using namespace painted;

/// What no receiver should send, to every view that takes a record.
class TestAnyRecords : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { ClassGnss::InitGnssUtils(); }
    void init() { Global::ResetForNewWindow(); }

    void AnyBytesAtAnySize_data();
    void AnyBytesAtAnySize();
    void NumbersThatAreNone();
    void AnHourAtTenRecordsASecond();
    void OpenedAndClosedWhileRecordsCome();
    void RecordsOnlyAskForAPaint();

private:
    LogFolder m_folder;
};

namespace {

template <typename Record> QByteArray Bytes(const Record& record)
{
    return QByteArray(reinterpret_cast<const char*>(&record), static_cast<int>(sizeof(record)));
}

/// A view, a good record for it, and where the floating numbers lie in that: offset and width.
struct ViewCase {
    const char* name;
    std::function<QWidget*(QWidget*)> make;
    std::function<void(QWidget*, const char*, int)> give;
    QByteArray record;
    bool remembers; ///< shows more than its latest record
    std::vector<std::pair<int, int>> numbers;

    /// From a buffer that ends with the record, so that the sanitizer sees what is read beyond it.
    void Send(QWidget* view, const QByteArray& bytes) const
    {
        const std::vector<char> exact(bytes.begin(), bytes.end());
        give(view, exact.data(), bytes.size());
    }
};

template <typename View> void Give(View& view, const char* bytes, int length)
{
    view.OnRecord(bytes, length);
}

void Give(HexViewWin& view, const char* bytes, int length)
{
    view.OnBytes(QByteArray(bytes, std::max(0, length)));
}

template <typename View>
ViewCase Case(const QByteArray& record, bool remembers, const std::vector<std::pair<int, int>>& numbers = {})
{
    return {View::staticMetaObject.className(),
            [](QWidget* parent) -> QWidget* { return new View(parent); },
            [](QWidget* view, const char* bytes, int length) { Give(*static_cast<View*>(view), bytes, length); },
            record,
            remembers,
            numbers};
}

QByteArray Message(std::uint32_t type, const QByteArray& payload)
{
    return Bytes(type) + payload;
}

const std::vector<ViewCase>& Cases()
{
    static const std::vector<ViewCase> cases = [] {
        // As many satellites as a record can hold, of every letter and none, at places that there aren't.
        std::vector<protocol::Cn0Entry> bars;
        std::vector<protocol::SatPosEntry> dots;
        for (int i = 0; i < 255; ++i) {
            const auto byte = static_cast<std::uint8_t>(i);
            bars.push_back({"GSREJCI?"[i % 8], static_cast<std::uint8_t>(i / 2), byte, 1, 1575.42F});
            dots.push_back({"GSREJCI?"[i % 8], byte, byte, 0, static_cast<std::uint16_t>(i * 257), 1, byte});
        }
        protocol::NmeaText text{};
        text.count = protocol::kNmeaSlots;
        for (auto& slot : text.slot) {
            std::memcpy(slot, "$GPTXT,01,01,02,x*00\r\n", 22);
        }
        const protocol::FixRecord fix{116.3, 39.9, 50.0, 2026, 3, 1, 7, 8, 0, 10.5, 1, {}, 1.5F, 90.0F, 1, 1, 1};
        const std::vector<std::pair<int, int>> fixNumbers = {{0, 8},  {8, 8},  {16, 8}, {48, 8}, {60, 4},
                                                             {64, 4}, {68, 4}, {72, 4}, {76, 4}};
        return std::vector<ViewCase>{
            Case<Cn0ViewWin>(Cn0Bytes(bars), false, {{5, 4}}),
            Case<SatellitesPosViewWin>(SkyBytes(dots), true),
            Case<PositioningViewWin>(PositionBytes(40.0, 116.0), true, {{0, 8}, {8, 8}, {16, 8}}),
            Case<CompassViewWin>(CompassBytes(10.0F, 1), false, {{0, 4}}),
            Case<DataViewWin>(Bytes(fix), false, fixNumbers),
            Case<BasicViewWin>(Bytes(fix), false, fixNumbers),
            Case<MessageViewWin>(Message(protocol::MsgTypeMeas, QByteArray(sizeof(protocol::MsgMeas), '\1')),
                                 false),
            Case<PackageViewWin>(Bytes(protocol::PackageRecord{4, 0, 5, 6}), true),
            Case<NMEAViewWin>(Bytes(text), true),
            Case<HexViewWin>("any bytes", true),
        };
    }();
    return cases;
}

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const double kNoNumbers[] = {
    std::numeric_limits<double>::quiet_NaN(), kInfinity, -kInfinity, 1e308, -1e308, 1e-320};

/// The record with a number of 4 or 8 bytes put in.
QByteArray With(QByteArray record, int offset, int width, double number)
{
    const auto narrow = static_cast<float>(number);
    std::memcpy(record.data() + offset, width == 4 ? static_cast<const void*>(&narrow) : &number,
                static_cast<std::size_t>(width));
    return record;
}

} // namespace

void TestAnyRecords::AnyBytesAtAnySize_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("follow");
    for (int i = 0; i < static_cast<int>(Cases().size()); ++i) {
        QTest::newRow(Cases()[static_cast<std::size_t>(i)].name) << i << (i % 2 == 0);
    }
    QTest::newRow("the track follows") << 2 << false;
}

void TestAnyRecords::AnyBytesAtAnySize()
{
    QFETCH(int, index);
    QFETCH(bool, follow);
    TrackState::useLastPoint = follow;
    const ViewCase& one = Cases()[static_cast<std::size_t>(index)];
    const std::unique_ptr<QWidget> view(one.make(nullptr));
    std::mt19937 random(3);
    for (const QSize& size : {QSize(1, 1), QSize(40, 600), QSize(600, 40), QSize(100, 50), QSize(500, 400)}) {
        view->resize(size);
        for (int i = 0; i < 60; ++i) {
            // A good record cut short, one with bytes of any value, and nothing but ones: the largest counts.
            QByteArray bytes = one.record.left(i < 20 ? i : static_cast<int>(random() % 6000));
            if (i % 3 == 1) {
                for (int k = 0; k < bytes.size(); k += 1 + static_cast<int>(random() % 16)) {
                    bytes[k] = static_cast<char>(random());
                }
            } else if (i % 3 == 2) {
                bytes.fill('\xff');
            }
            one.Send(view.get(), bytes);
            if (i % 5 == 0) {
                view->grab();
            }
        }
        one.give(view.get(), nullptr, one.record.size());
        one.give(view.get(), one.record.constData(), 0);
        one.give(view.get(), one.record.constData(), -1);
        // A length that lies; a record may come without the bytes that round it up.
        const QByteArray whole = one.record.leftJustified((one.record.size() + 7) / 8 * 8, '\0');
        const std::vector<char> exact(whole.begin(), whole.end());
        one.give(view.get(), exact.data(),
                 index + 1 < static_cast<int>(Cases().size()) ? 100000000 : whole.size());
    }
    if (one.remembers) {
        return;
    }
    // Nothing of all that is left behind.
    one.Send(view.get(), one.record);
    const std::unique_ptr<QWidget> fresh(one.make(nullptr));
    fresh->resize(view->size());
    one.Send(fresh.get(), one.record);
    QVERIFY(Picture(*view) == Picture(*fresh));
}

void TestAnyRecords::NumbersThatAreNone()
{
    for (const ViewCase& one : Cases()) {
        const std::unique_ptr<QWidget> view(one.make(nullptr));
        view->resize(300, 200);
        for (const auto& [offset, width] : one.numbers) {
            for (const double number : kNoNumbers) {
                one.Send(view.get(), With(one.record, offset, width, number));
                view->grab();
            }
        }
    }
    // In a message the number is shown as what it is.
    MessageViewWin view(nullptr);
    auto* tree = view.findChild<QTreeWidget*>();
    for (const MessageShape& shape : message_tables::kShapes) {
        const protocol::MessageLayout& layout = *protocol::FindMessageLayout(shape.msgType);
        QTreeWidgetItem* item = tree->findItems(layout.name, Qt::MatchExactly | Qt::MatchRecursive).value(0);
        view.SlotUpdateRightWin(item->childCount() > 0 ? item->child(0) : item, 0);
        const QAbstractItemModel* model = view.findChild<QTableView*>("tableView")->model();
        for (int i = 0; i < static_cast<int>(shape.fieldCount); ++i) {
            const MessageField& field = shape.fields[i];
            const bool narrow = field.kind == FieldKind::F32;
            if (!narrow && FieldSize(field.kind) < 8) {
                continue;
            }
            const std::size_t at = shape.blockOffset + shape.rowOffset + field.offset;
            for (const double number : kNoNumbers) {
                const QByteArray blank(static_cast<int>(layout.fullPayload), '\0');
                Send(view, Message(shape.msgType, With(blank, static_cast<int>(at), narrow ? 4 : 8, number)));
                const QString text = (shape.IsTable() ? model->index(0, i) : model->index(i, 1)).data().toString();
                QVERIFY(std::isfinite(number) || field.kind == FieldKind::U64 ||
                        text.contains(std::isnan(number) ? "nan" : "inf"));
            }
        }
    }
}

void TestAnyRecords::AnHourAtTenRecordsASecond()
{
    constexpr int records = 36000;
    QMdiArea area;
    area.resize(1200, 800);
    std::vector<QWidget*> views;
    for (const ViewCase& one : Cases()) {
        views.push_back(one.make(&area));
        area.addSubWindow(views.back());
    }
    area.show();
    area.tileSubWindows();
    for (int i = 0; i < records; ++i) {
        for (std::size_t k = 0; k < views.size(); ++k) {
            const ViewCase& one = Cases()[k];
            QByteArray record = one.record;
            if (one.name == NMEAViewWin::staticMetaObject.className()) {
                record[static_cast<int>(offsetof(protocol::NmeaText, count))] = 1;
            } else if (one.name == MessageViewWin::staticMetaObject.className() && i % 10 != 0) {
                record = Message(protocol::MsgTypeGga, QByteArray(sizeof(protocol::MsgGga), '\1'));
            } else if (one.name == PositioningViewWin::staticMetaObject.className()) {
                record = PositionBytes(40.0 + i * 1e-7, 116.0);
            }
            one.give(views[k], record.constData(), record.size());
        }
        if (i % 200 == 0) {
            QCoreApplication::processEvents();
        }
    }
    QCOMPARE(TrackState::pointList.size(), std::size_t(records));
    for (QWidget* view : views) {
        view->hide();
        if (const auto* text = view->findChild<QPlainTextEdit*>("textEdit")) {
            QCOMPARE(text->blockCount(), records);
        }
        if (qobject_cast<PackageViewWin*>(view) != nullptr) {
            QCOMPARE(view->findChild<QTableView*>()->model()->rowCount(), records % 51);
        }
        view->grab();
    }
}

void TestAnyRecords::OpenedAndClosedWhileRecordsCome()
{
    QMdiArea area;
    area.resize(500, 400);
    area.show();
    // The three views that were opened last are open, and get records before and after they are closed.
    std::vector<std::pair<const ViewCase*, QMdiSubWindow*>> open;
    for (std::size_t round = 0; round < 1000; ++round) {
        const ViewCase& one = Cases()[round % Cases().size()];
        QMdiSubWindow* window = area.addSubWindow(one.make(&area));
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->widget()->showMaximized();
        open.emplace_back(&one, window);
        for (const auto& [view, shown] : open) {
            view->Send(shown->widget(), view->record);
        }
        if (round % 4 == 0) {
            QCoreApplication::processEvents();
        }
        if (open.size() > 3) {
            open.front().second->close();
            open.front().first->Send(open.front().second->widget(), open.front().first->record);
            open.erase(open.begin());
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }
    area.closeAllSubWindows();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(area.subWindowList().isEmpty());
    QVERIFY(TrackState::pointList.empty());
}

void TestAnyRecords::RecordsOnlyAskForAPaint()
{
    struct PaintCounter : QObject {
        int count = 0;
        bool eventFilter(QObject*, QEvent* event) override
        {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    };
    for (std::size_t i = 0; i < 4; ++i) { // the painted ones
        const ViewCase& one = Cases()[i];
        const std::unique_ptr<QWidget> view(one.make(nullptr));
        view->resize(300, 300);
        view->show();
        QVERIFY(QTest::qWaitForWindowExposed(view.get()));
        QCoreApplication::processEvents();
        PaintCounter paints;
        view->installEventFilter(&paints);
        for (int k = 0; k < 100; ++k) {
            one.Send(view.get(), one.record);
        }
        QCOMPARE(paints.count, 0);
        QTRY_COMPARE(paints.count, 1);
    }
}

QTEST_MAIN(TestAnyRecords)
#include "tst_anyrecords.moc"
