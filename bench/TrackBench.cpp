// SPDX-License-Identifier: MIT
// The track plot's repaint beside the plain loop that converts each point by a call of its own and draws one
// ellipse a point. Both convert every point at every paint. The counters give milliseconds of processor time of
// one paint and their ratio.

#include "base/ProcessState.h"
#include "base/TrackState.h"
#include "bridge/ClassGnss.h"
#include "protocol/Records.h"
#include "views/track/PositioningViewWin.h"
#include "views/track/TrackDots.h"
#include "views/track/TrackGeometry.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <cmath>
#include <ctime>
#include <random>

namespace {

constexpr QSize kPlot(900, 600);

/// A walk of an hour around a block with the noise of a receiver, so that many dots share pixels and many don't.
void FillView(PositioningViewWin& view, int points)
{
    std::mt19937 random(1);
    std::normal_distribution<double> noise(0.0, 1e-5);
    protocol::PositionRecord record{};
    record.fixMode = protocol::FixAutonomous;
    for (int i = 0; i < points; ++i) {
        const double turn = i * 2.0 * 3.14159265 / 36000.0;
        record.latitude = 39.972 + 2e-4 * std::sin(turn) + noise(random);
        record.longitude = 116.34 + 3e-4 * std::cos(turn) + noise(random);
        view.OnRecord(&record, sizeof(record));
    }
}

void PaintNaively(QImage& image)
{
    QPainter painter(&image);
    painter.translate(image.width() / 2, image.height() / 2);
    const double reference[3] = {TrackState::centerLongitude, TrackState::centerLatitude, 0.0};
    const auto draw = [&](const TrackState::GeoPoint& point, Qt::GlobalColor colour) {
        const double position[3] = {point.longitude, point.latitude, 0.0};
        double enu[3] = {};
        ClassGnss::Lla2Enu(reference, position, enu);
        const QPointF dot = TrackGeometry::DotPosition(enu[0], enu[1], TrackGeometry::kFirstScale);
        painter.setPen(colour);
        painter.setBrush(colour);
        painter.drawEllipse(QRectF(std::floor(dot.x() + 0.5) - 3.0, std::floor(dot.y() + 0.5) - 3.0, 5.0, 5.0));
    };
    painter.setPen(Qt::green);
    for (const TrackState::GeoPoint& point : TrackState::pointList) {
        draw(point, Qt::green);
    }
    draw(TrackState::pointList.back(), Qt::red);
}

/// Processor time, so that other work on the machine doesn't count.
double Milliseconds(std::clock_t since)
{
    return static_cast<double>(std::clock() - since) * 1e3 / CLOCKS_PER_SEC;
}

void BM_TrackPaint(benchmark::State& state)
{
    Global::ResetForNewWindow();
    PositioningViewWin view(nullptr);
    view.resize(kPlot);
    FillView(view, static_cast<int>(state.range(0)));
    QImage image(kPlot, QImage::Format_RGB32);
    image.fill(Qt::white);
    view.render(&image);
    double viewTime = 0.0;
    double naiveTime = 0.0;
    for (auto _ : state) {
        std::clock_t start = std::clock();
        view.render(&image);
        const double once = Milliseconds(start);
        viewTime += once;
        state.SetIterationTime(once / 1e3);
        start = std::clock();
        PaintNaively(image);
        naiveTime += Milliseconds(start);
    }
    const double rounds = static_cast<double>(state.iterations());
    state.counters["view_ms"] = viewTime / rounds;
    state.counters["naive_ms"] = naiveTime / rounds;
    state.counters["naive_to_view"] = naiveTime / viewTime;
}

/// The drawing alone, of positions that are known already.
void BM_TrackDots(benchmark::State& state)
{
    std::mt19937 random(1);
    std::normal_distribution<double> spread(0.0, 80.0);
    std::vector<QPointF> positions(static_cast<std::size_t>(state.range(0)));
    for (QPointF& position : positions) {
        position = QPointF(spread(random), spread(random));
    }
    QImage image(kPlot, QImage::Format_RGB32);
    image.fill(Qt::white);
    TrackDots dots;
    for (auto _ : state) {
        dots.Begin(kPlot, 1.0);
        for (const QPointF& position : positions) {
            dots.Add(position.x(), position.y());
        }
        QPainter painter(&image);
        dots.Paint(painter);
    }
}

/// One conversion a call, and many in one.
void BM_ConvertEach(benchmark::State& state)
{
    const double reference[3] = {116.34, 39.972, 0.0};
    double position[3] = {116.34, 39.972, 0.0};
    double enu[3] = {};
    for (auto _ : state) {
        position[0] += 1e-9;
        ClassGnss::Lla2Enu(reference, position, enu);
        benchmark::DoNotOptimize(enu);
    }
    state.SetItemsProcessed(state.iterations());
}

void BM_ConvertMany(benchmark::State& state)
{
    constexpr std::size_t count = 4096;
    const double reference[3] = {116.34, 39.972, 0.0};
    static double positions[count][3];
    static double enus[count][3];
    for (std::size_t i = 0; i < count; ++i) {
        positions[i][0] = 116.34 + static_cast<double>(i) * 1e-7;
        positions[i][1] = 39.972;
    }
    for (auto _ : state) {
        ClassGnss::Lla2EnuMany(reference, positions, enus, count);
        benchmark::DoNotOptimize(enus);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(count));
}

BENCHMARK(BM_TrackPaint)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(864000)
    ->Arg(1000000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TrackDots)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ConvertEach);
BENCHMARK(BM_ConvertMany);

} // namespace

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    ClassGnss::InitGnssUtils();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    ClassGnss::UnloadCodec();
    return 0;
}
