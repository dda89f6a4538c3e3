// SPDX-License-Identifier: MIT
// Cost of one "Meas" and one "GSV" message in the message view, from the record to the painted table, beside a
// table that gets a new item for every value:
//
//   message_bench [options of Google Benchmark]
//
// Every message differs from the one before it in all values of 40 of its satellites. "Hidden" is a message whose
// type is not the one that is shown, "Shown" one that is, with the repaint.

#include "protocol/Records.h"
#include "views/message/MessageModels.h"
#include "views/message/MessageViewWin.h"

#include <QApplication>
#include <QByteArray>
#include <QStandardItemModel>
#include <QTableView>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

#include <array>
#include <cstring>

namespace {

constexpr int width = 960;
constexpr int height = 540;
constexpr std::size_t satellites = 40;

using Records = std::array<QByteArray, 2>;

template <typename Payload> QByteArray Record(std::uint32_t type, const Payload& payload)
{
    QByteArray record(static_cast<int>(protocol::kMessageHeaderSize + sizeof(payload)), '\0');
    std::memcpy(record.data(), &type, sizeof(type));
    std::memcpy(record.data() + protocol::kMessageHeaderSize, &payload, sizeof(payload));
    return record;
}

QByteArray MeasRecord(int turn)
{
    protocol::MsgMeas meas{};
    for (std::size_t i = 0; i < satellites; ++i) {
        const double step = static_cast<double>(i) + turn * 0.37;
        protocol::MeasEntry& entry = meas.entry[i];
        entry.svid = static_cast<std::uint8_t>(i + 1);
        entry.constellation = 'G';
        entry.cn0 = static_cast<std::uint8_t>(40 + turn);
        entry.inuseFlag = 1;
        entry.satFlag = 3;
        entry.carrierFreq = 1575.42;
        entry.psr = 22000000.0 + 12345.678 * step;
        entry.doppler = -1234.567 + 11.1 * step;
        entry.carrierPhase = 115000000.0 + 98765.4 * step;
        entry.satPosX = -12345678.9 + 54321.0 * step;
        entry.satPosY = 20345678.9 - 54321.0 * step;
        entry.satPosZ = 8345678.9 + 54321.0 * step;
        entry.satSpeedX = -1234.56 + step;
        entry.satSpeedY = 2234.56 - step;
        entry.satSpeedZ = 734.56 + step;
    }
    return Record(protocol::MsgTypeMeas, meas);
}

QByteArray GsvRecord(int turn)
{
    protocol::MsgGsv gsv{};
    for (protocol::GsvBlock& block : gsv.block) {
        for (std::size_t i = 0; i < satellites / protocol::kMessageBlocks; ++i) {
            const auto number = static_cast<std::uint16_t>(2 * i + static_cast<std::size_t>(turn));
            block.row[i] = {static_cast<std::uint16_t>(number + 1), number, static_cast<std::uint16_t>(number * 3),
                            static_cast<std::uint16_t>(30 + number), number};
        }
    }
    return Record(protocol::MsgTypeGsv, gsv);
}

Records RecordsOf(std::uint32_t type)
{
    return type == protocol::MsgTypeMeas ? Records{MeasRecord(0), MeasRecord(1)}
                                         : Records{GsvRecord(0), GsvRecord(1)};
}

/// Paints what is due now.
void Repaint()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

void RunView(benchmark::State& state, std::uint32_t type, const char* shown)
{
    const Records records = RecordsOf(type);
    MessageViewWin view(nullptr);
    view.resize(width, height);
    view.show();
    auto* tree = view.findChild<QTreeWidget*>();
    QTreeWidgetItem* item = tree->findItems(shown, Qt::MatchExactly | Qt::MatchRecursive).value(0);
    if (item == nullptr) {
        state.SkipWithError("no such item");
        return;
    }
    tree->setCurrentItem(item);
    Repaint();
    std::size_t turn = 0;
    for (auto _ : state) {
        const QByteArray& record = records[turn++ % records.size()];
        view.OnRecord(record.constData(), record.size());
        Repaint();
    }
}

/// The plain way: every value is a new item.
void RunNewItems(benchmark::State& state, std::uint32_t type, bool isShown)
{
    const Records records = RecordsOf(type);
    const MessageShape* shape = FindMessageShape(type);
    QObject owner;
    const QVector<QStandardItemModel*> models = MakeMessageModels(*shape, &owner);
    QTableView table;
    table.setModel(models.first());
    table.resize(width, height);
    if (isShown) {
        table.show();
    }
    Repaint();
    std::size_t turn = 0;
    for (auto _ : state) {
        const QByteArray& record = records[turn++ % records.size()];
        const char* payload = record.constData() + protocol::kMessageHeaderSize;
        const std::size_t size = static_cast<std::size_t>(record.size()) - protocol::kMessageHeaderSize;
        for (int block = 0; block < models.size(); ++block) {
            const std::size_t start =
                shape->blockOffset + static_cast<std::size_t>(block) * shape->blockSize + shape->rowOffset;
            for (std::size_t row = 0; row < shape->rows; ++row) {
                for (std::size_t i = 0; i < shape->fieldCount; ++i) {
                    const MessageField& field = shape->fields[i];
                    models[block]->setItem(
                        static_cast<int>(row), static_cast<int>(i),
                        new QStandardItem(
                            FieldText(payload, size, start + row * shape->rowSize + field.offset, field.kind)));
                }
            }
        }
        Repaint();
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    const auto add = [](const char* name, auto function, auto... arguments) {
        benchmark::RegisterBenchmark(name, function, arguments...)->Unit(benchmark::kMicrosecond);
    };
    add("Meas/Hidden", RunView, protocol::MsgTypeMeas, "GGA");
    add("Meas/Hidden/NewItems", RunNewItems, protocol::MsgTypeMeas, false);
    add("Meas/Shown", RunView, protocol::MsgTypeMeas, "Meas");
    add("Meas/Shown/NewItems", RunNewItems, protocol::MsgTypeMeas, true);
    add("GSV/Hidden", RunView, protocol::MsgTypeGsv, "GGA");
    add("GSV/Hidden/NewItems", RunNewItems, protocol::MsgTypeGsv, false);
    add("GSV/Shown", RunView, protocol::MsgTypeGsv, "GPS");
    add("GSV/Shown/NewItems", RunNewItems, protocol::MsgTypeGsv, true);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
