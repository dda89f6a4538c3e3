// SPDX-License-Identifier: MIT
#include "SimulatedHost.h"

#include "base/ReadyCommand.h"
#include "bridge/CallbackRouting.h"
#include "bridge/ClassGnss.h"
#include "bridge/CommandFrame.h"
#include "bridge/RecordTarget.h"
#include "performance/KpiSatellites.h"
#include "protocol/Records.h"
#include "receiver/Receiver.h"
#include "receiver/Utc.h"

#include <QtTest>

#include <cmath>

namespace {

constexpr quint32 starts = 200;

/// The receiver's model behind the open codec, on the host's clock.
class SimulatedReceiver : public RecordTarget {
public:
    SimulatedReceiver(SimulatedHost& host, const receiver::ReceiverOptions& options)
        : m_host(host), m_receiver(options)
    {
        ClassGnss::InitGnssUtils();
        PublishRecordTarget(this);
        RegisterCallbacks();
        host.atEveryStep = [this] {
            m_receiver.Advance(m_host.now);
            for (const std::string& message : m_receiver.TakeOutput()) {
                ClassGnss::GnssDecode(reinterpret_cast<const quint8*>(message.data()),
                                      static_cast<quint32>(message.size()));
            }
        };
        host.toTheReceiver = [this](protocol::ReadyFrame frame) {
            const CommandFrame encoded(ClassGnss::passThroughId, ReadyFrameBytes(frame));
            m_receiver.Receive(encoded.Data(), static_cast<std::size_t>(encoded.Length()), m_host.now);
        };
    }
    ~SimulatedReceiver() override
    {
        PublishRecordTarget(nullptr);
        ClassGnss::UnloadCodec();
    }

    void OnKpiPosition(const void* data, int) override
    {
        protocol::KpiFixRecord fix = {};
        std::memcpy(&fix, data, sizeof fix);
        if (m_host.sequencer.Accepts()) {
            m_host.sequencer.OnPosition(fix.second, {fix.latitude, fix.longitude, fix.altitude});
        }
    }
    void OnKpiSatellite(const void* data, int length) override
    {
        satellites.Take(static_cast<const char*>(data), static_cast<std::size_t>(length));
    }

    void OnNmea(const void*, int) override {}
    void OnPackage(const void*, int) override {}
    void OnCn0(const void*, int) override {}
    void OnPosition(const void*, int) override {}
    void OnSatPos(const void*, int) override {}
    void OnCompass(const void*, int) override {}
    void OnData(const void*, int) override {}
    void OnMessage(const void*, int) override {}
    void OnAck(const void*, int) override {}
    void OnSleepWakeup() override {}
    void OnUartSend(const void*, int) override {}
    void OnFirstFix() override {}
    void OnHisInfo(const void*, int) override {}

    KpiSatellites satellites;

private:
    SimulatedHost& m_host;
    receiver::Receiver m_receiver;
};

receiver::ReceiverOptions Options()
{
    receiver::ReceiverOptions options;
    options.seed = 11;
    options.rateHz = 10;
    options.idle = true;
    options.memoryKept = true;
    options.utcAtPowerOn = receiver::FromFields({2026, 3, 14, 9, 26, 53, 0});
    return options;
}

SimulatedHost& Prepared(SimulatedHost& host, const receiver::ReceiverOptions& options, quint32 count)
{
    host.cold = true;
    host.hot = true;
    host.config = {count, 60, 1, 2, count, 20, 1, 2};
    host.reference = {options.place.latitude, options.place.longitude, options.place.altitude};
    return host;
}

/// Checks 68 %, 95 % and average of a row against the true ones, each within four standard errors and the
/// resolution of the measurement.
void CompareRow(const SimulatedHost& host, const char* kind, int row, const double (&truth)[3],
                const double (&errors)[3], double resolution)
{
    const QStringList shown = host.Row(kind, row).split(' ');
    QCOMPARE(shown.size(), 4);
    qInfo().noquote() << kind << (row == KpiRowTtff ? "TTFF" : "CEP") << "68% 95% MAX AVG:" << shown.join(' ')
                      << "true 68% 95% AVG:" << QString::asprintf("%.2f %.2f %.2f", truth[0], truth[1], truth[2]);
    const double values[3] = {shown[0].toDouble(), shown[1].toDouble(), shown[3].toDouble()};
    for (int i = 0; i < 3; ++i) {
        QVERIFY2(std::abs(values[i] - truth[i]) <= 4.0 * errors[i] + resolution, qPrintable(shown.join(' ')));
    }
}

/// A normal distribution; `late` is what the measurement adds on average.
void CompareTtff(const SimulatedHost& host, const char* kind, const receiver::Distribution& times, double late)
{
    constexpr double z[2] = {0.46770, 1.64485};
    constexpr double density[2] = {0.35764, 0.10314};
    const double root = std::sqrt(static_cast<double>(starts));
    const double sd = times.deviation;
    const double truth[3] = {times.mean + z[0] * sd + late, times.mean + z[1] * sd + late, times.mean + late};
    const double errors[3] = {sd * std::sqrt(0.68 * 0.32) / density[0] / root,
                              sd * std::sqrt(0.95 * 0.05) / density[1] / root, sd / root};
    CompareRow(host, kind, KpiRowTtff, truth, errors, 0.06);
}

/// A Rayleigh distribution given by its median.
void CompareCep(const SimulatedHost& host, const char* kind, double median)
{
    constexpr double shares[2] = {0.68, 0.95};
    constexpr double pi = 3.14159265358979323846;
    const double sigma = median / std::sqrt(-2.0 * std::log(0.5));
    const double root = std::sqrt(static_cast<double>(starts));
    double truth[3] = {0, 0, sigma * std::sqrt(pi / 2)};
    double errors[3] = {0, 0, sigma * std::sqrt(2 - pi / 2) / root};
    for (int i = 0; i < 2; ++i) {
        const double r = std::sqrt(-2.0 * std::log(1 - shares[i]));
        truth[i] = sigma * r;
        errors[i] = sigma * std::sqrt(shares[i] * (1 - shares[i])) / (r * (1 - shares[i])) / root;
    }
    CompareRow(host, kind, KpiRowCep, truth, errors, 0.02);
}

} // namespace

class TestKpiSeries : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("default.debug=false"); }

    void TheTablesMatchTheTrueDistributions()
    {
        const receiver::ReceiverOptions options = Options();
        SimulatedHost host;
        const SimulatedReceiver receiver(Prepared(host, options, starts), options);
        host.sequencer.StartStopClicked();
        QVERIFY(host.RunToTheEnd(100000));
        // An epoch shows a fix up to 100 ms late, and the fixed deduction is 120 ms.
        constexpr double late = 0.05 - 0.12;
        const std::pair<const char*, receiver::Distribution> kinds[] = {{"Hot", options.times.hot},
                                                                        {"Cold", options.times.cold}};
        for (const auto& kind : kinds) {
            QCOMPARE(host.Row(kind.first, KpiRowCounts), QString("%1 %1 100.00%").arg(starts));
            CompareTtff(host, kind.first, kind.second, late);
            CompareCep(host, kind.first, options.errorMetres);
        }
        QVERIFY(receiver.satellites.Count() > 10);
        QVERIFY(receiver.satellites.UsedCount() > 5);
        QVERIFY(receiver.satellites.Top5() > 20);
    }

    void ReceiversThatDoNotFix_data()
    {
        QTest::addColumn<int>("fault");
        QTest::newRow("never") << 0;
        QTest::newRow("silent") << 1;
        QTest::newRow("refuses every command") << 2;
    }

    void ReceiversThatDoNotFix()
    {
        QFETCH(int, fault);
        receiver::ReceiverOptions options = Options();
        options.faults.noFix = fault == 0;
        options.faults.silence = fault == 1;
        options.faults.refuse = fault == 2 ? 3 : options.faults.refuse;
        SimulatedHost host;
        const SimulatedReceiver receiver(Prepared(host, options, 2), options);
        host.sequencer.StartStopClicked();
        QVERIFY(host.RunToTheEnd(1000));
        for (const char* kind : {"Hot", "Cold"}) {
            QCOMPARE(host.Row(kind, KpiRowCounts), QString("2 0 0%"));
            QCOMPARE(host.Row(kind, KpiRowTtff), QString("0.0 0.0 0.0 0.0"));
            QCOMPARE(host.Row(kind, KpiRowCep), QString("0.0 0.0 0.0 0.0"));
        }
    }

    void AReceiverThatFixesAtOnce()
    {
        receiver::ReceiverOptions options = Options();
        options.times = {{0.0, 0.0}, {0.0, 0.0}};
        options.idle = false;
        SimulatedHost host;
        const SimulatedReceiver receiver(Prepared(host, options, 5), options);
        host.Pass(3000); // it has a fix when the run begins
        host.sequencer.StartStopClicked();
        QVERIFY(host.RunToTheEnd(1000));
        QCOMPARE(host.Row("Hot", KpiRowCounts), QString("5 5 100.00%"));
        QCOMPARE(host.Row("Cold", KpiRowCounts), QString("5 5 100.00%"));
        QVERIFY(host.sequencer.Statistics().Ttff(KpiTestMode::Hot).back() < 0.3);
        QVERIFY(host.sequencer.Statistics().Ttff(KpiTestMode::Cold).empty());
    }
};

QTEST_GUILESS_MAIN(TestKpiSeries)
#include "tst_series.moc"
