// SPDX-License-Identifier: MIT
#include "views/signal/Cn0ViewWin.h"

#include "protocol/Records.h"
#include "views/AgeEdit.h"
#include "views/Constellations.h"
#include "views/PlotColours.h"
#include "views/ViewRefresh.h"
#include "views/signal/SignalBars.h"

#include <QMouseEvent>
#include <QPainter>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int kAgeTick = 1000; ///< milliseconds
constexpr int kTotalTextY = 21;
constexpr int kNoteTextY = 32; ///< clear of the lines above and below it, which are 27 pixels apart
constexpr int kNotePixelSize = 10;
constexpr int kFirstIconTop = 36;
constexpr int kCountX = 80;
constexpr int kFlagWidth = 24;
constexpr int kFlagHeight = 16;

/// What stands in front of a constellation's counts.
QString RowLabel(std::size_t row)
{
    const protocol::ConstellationRow& constellation = DrawnAt(row);
    const bool inFull = constellation.constellation == protocol::Constellation::Qzss;
    return QLatin1String(inFull ? constellation.name : constellation.label) + ':';
}

/// A column's first segment has its constellation's colour, every second one a lighter shade, so that segments of
/// one column can be told apart. A signal that isn't used in the fix is pale.
QColor FillColour(const QColor& base, std::size_t segment, bool inUse, const QColor& background)
{
    QColor colour = segment % 2 == 0 ? base : base.lighter(135);
    if (inUse) {
        return colour;
    }
    const auto mix = [](int a, int b) { return (a * 2 + b * 3) / 5; };
    return QColor(mix(colour.red(), background.red()), mix(colour.green(), background.green()),
                  mix(colour.blue(), background.blue()));
}

} // namespace

Cn0ViewWin::Cn0ViewWin(QWidget* parent)
    : ClosingWidget(parent), m_legend(kFirstIconTop), ageEdit(new AgeEdit(this)), ageTimer(new QTimer(this)),
      m_totalImage(ConstellationLegend::Picture("allTypeCount")), m_refresh(new ViewRefresh(this))
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(m_refresh, &ViewRefresh::Due, this, QOverload<>::of(&QWidget::update));
    setWindowTitle(tr("信号强度"));
    for (std::size_t i = 0; i < m_flagImages.size(); ++i) {
        m_flagImages[i] = ConstellationLegend::Picture(DrawnAt(i).flag);
    }
    connect(ageTimer, &QTimer::timeout, this, &Cn0ViewWin::TimerTimeout);
    ageTimer->start(kAgeTick);
}

void Cn0ViewWin::OnRecord(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, sizeof(protocol::Cn0Record), "Cn0ViewWin");
    if (record.IsDropped()) {
        return;
    }
    ageSeconds = 0;
    ageTimer->stop();
    ageEdit->ShowAge(ageSeconds);
    m_signals.Fill(record);
    m_refresh->Request();
    ageTimer->start(kAgeTick);
}

void Cn0ViewWin::TimerTimeout()
{
    ++ageSeconds;
    ageEdit->ShowAge(ageSeconds);
}

void Cn0ViewWin::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    ageEdit->move(10, height() - ageEdit->height() - 10);
}

void Cn0ViewWin::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_legend.Click(event->pos())) {
        update();
    } else {
        QWidget::mousePressEvent(event);
    }
}

void Cn0ViewWin::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), PlotBackground(palette()));
    QFont font("Times New Roman");
    font.setPixelSize(14);
    painter.setFont(font);
    painter.setPen(QPen(Qt::black, 1.0));
    const QRect legend = LegendRect(painter);
    if (m_signals.TrackedCount()[0] > 0 && PaintBars(painter, legend)) {
        // In a low view bars reach up to the legend, which stays readable over them.
        QColor plate = PlotBackground(palette());
        plate.setAlpha(190);
        painter.fillRect(legend, plate);
    }
    PaintLegend(painter);
}

bool Cn0ViewWin::IsShown(int constellation) const
{
    return constellation >= kLegendRows || !m_legend.IsHidden(constellation);
}

QString Cn0ViewWin::CountText(int counter) const
{
    const std::size_t i = static_cast<std::size_t>(counter);
    return QString("%1/%2/%3")
        .arg(m_signals.UsedCount()[i])
        .arg(m_signals.TrackedCount()[i])
        .arg(m_signals.VisibleCount()[i]);
}

/// Where the counts stand, further right only when a label in this font reaches them.
int Cn0ViewWin::CountX(const QPainter& painter) const
{
    int widest = painter.fontMetrics().horizontalAdvance(tr("总和:"));
    for (std::size_t row = 0; row < kLegendRows; ++row) {
        widest = std::max(widest, painter.fontMetrics().horizontalAdvance(RowLabel(row)));
    }
    return std::max(kCountX, ConstellationLegend::kTextX + widest + 4);
}

QRect Cn0ViewWin::LegendRect(const QPainter& painter) const
{
    int right = CountX(painter);
    int widest = painter.fontMetrics().horizontalAdvance(CountText(0));
    for (std::size_t row = 0; row < kLegendRows; ++row) {
        widest = std::max(widest, painter.fontMetrics().horizontalAdvance(CountText(CounterAt(row))));
    }
    right += widest;
    return QRect(QPoint(0, 0), QPoint(right + 8, m_legend.IconRect(kLegendRows - 1).bottom() + 4));
}

void Cn0ViewWin::PaintLegend(QPainter& painter) const
{
    const int countX = CountX(painter);
    ConstellationLegend::PaintPicture(
        painter,
        QRect(ConstellationLegend::kIconX, 9, ConstellationLegend::kIconSize, ConstellationLegend::kIconSize),
        m_totalImage);
    painter.drawText(ConstellationLegend::kTextX, kTotalTextY, tr("总和:"));
    painter.drawText(countX, kTotalTextY, CountText(0));
    m_legend.PaintIcons(painter);
    for (int row = 0; row < kLegendRows; ++row) {
        const std::size_t index = static_cast<std::size_t>(row);
        painter.drawText(ConstellationLegend::kTextX, m_legend.TextY(row), RowLabel(index));
        painter.drawText(countX, m_legend.TextY(row), CountText(CounterAt(index)));
    }
    QFont small = painter.font();
    small.setPixelSize(kNotePixelSize);
    painter.setFont(small);
    painter.drawText(ConstellationLegend::kTextX, kNoteTextY, tr("(注：使用卫星数/跟踪卫星数/可视卫星数)"));
}

/// True when a column reaches into the legend.
bool Cn0ViewWin::PaintBars(QPainter& painter, const QRect& legend)
{
    const SignalBars::Widths widths = SignalBars::WidthsFor(m_signals.TrackedCount()[0], width());
    barWidth = widths.barWidth;
    barPitch = widths.barPitch;
    const int baseline = height() - SignalBars::kBaselineFromBottom;

    int columns = 0;
    for (int i = 0; i < static_cast<int>(kDrawOrder.size()); ++i) {
        if (IsShown(i)) {
            columns += static_cast<int>(m_signals.SatellitesOf(i).size());
        }
    }
    int x = SignalBars::FirstColumnX(columns, barPitch, width(), legend.right(), baseline < legend.bottom());
    bool reachesLegend = false;
    painter.drawLine(baseline < legend.bottom() ? x : 0, baseline, width(), baseline);
    for (int i = 0; i < static_cast<int>(kDrawOrder.size()); ++i) {
        const SignalTable::Satellites& satellites = m_signals.SatellitesOf(i);
        if (!IsShown(i) || satellites.empty()) {
            continue;
        }
        const std::size_t index = static_cast<std::size_t>(i);
        if (DrawnAt(index).flag != nullptr) {
            const int top = baseline + 6 + painter.fontMetrics().height();
            ConstellationLegend::PaintPicture(painter, QRect(x, top, kFlagWidth, kFlagHeight),
                                              m_flagImages[index]);
        }
        for (const SignalTable::Satellite& satellite : satellites) {
            reachesLegend |= PaintColumn(painter, x, satellite, ColourOf(DrawnAt(index)), legend);
            x += barPitch;
        }
    }
    return reachesLegend;
}

/// True when the column reaches into the legend.
bool Cn0ViewWin::PaintColumn(QPainter& painter, int x, const SignalTable::Satellite& satellite,
                             const QColor& colour, const QRect& legend)
{
    const int baseline = height() - SignalBars::kBaselineFromBottom;
    const int unit = SignalBars::PixelsPerDb(height());
    const QColor background = PlotBackground(palette());
    std::vector<int> tops;
    std::vector<QColor> fills;
    int bottom = baseline;
    for (std::size_t i = 0; i < satellite.size(); ++i) {
        const int top = baseline - satellite[i].cn0 * unit;
        fills.push_back(FillColour(colour, i, satellite[i].inuseFlag != 0, background));
        painter.fillRect(x, top, barWidth, bottom - top, fills.back());
        bottom = top;
        tops.insert(tops.begin(), top);
    }
    const QFontMetrics metrics = painter.fontMetrics();
    const int textHeight = metrics.ascent();
    // The strongest's text stands above the column, or inside it where it would lie in the legend.
    int firstTop = bottom - textHeight;
    if (legend.intersects(QRect(x, firstTop, barWidth, textHeight))) {
        const int below = std::max(bottom, legend.bottom() + 1);
        if (below + textHeight <= baseline) {
            firstTop = below;
        }
    }
    const std::vector<int> textTops = SignalBars::TextTops(tops, firstTop, textHeight, baseline);
    for (std::size_t i = 0; i < textTops.size(); ++i) {
        const QRect box(x - 2, textTops[i], barWidth + 4, textHeight);
        // The weakest segment that reaches the text's middle is the one behind it.
        QColor pen = Qt::black;
        for (std::size_t below = tops.size(); below-- > 0;) {
            if (tops[below] <= box.center().y() && box.center().y() < baseline) {
                pen = TextColourOn(fills[tops.size() - 1 - below]);
                break;
            }
        }
        painter.setPen(pen);
        m_labels.Draw(painter, box, satellite[satellite.size() - 1 - i].cn0);
    }
    painter.setPen(Qt::black);
    m_labels.Draw(painter, QRect(x - 2, baseline + 3, barWidth + 4, metrics.height()), satellite.front().svid);
    return legend.intersects(QRect(x, bottom, barWidth, baseline - bottom));
}
