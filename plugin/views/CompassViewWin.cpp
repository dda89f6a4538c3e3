// SPDX-License-Identifier: MIT
#include "views/CompassViewWin.h"

#include "bridge/RecordCopy.h"
#include "protocol/Records.h"
#include "views/RecordConversions.h"
#include "views/ViewRefresh.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

// All lengths in a square of 200 units around the middle.
constexpr int kSquare = 200;
constexpr double kDialRadius =
    78.0; ///< just outside of the needle; the labels stand between it and the square's edge
constexpr double kLabelGap = 2.0;
constexpr double kMajorTick = 6.0;
constexpr double kMinorTick = 3.0;
constexpr double kRadiansPerDegree = 0.017453292519943295;

struct NeedlePart {
    QPoint corners[3];
    Qt::GlobalColor brush;
};

constexpr NeedlePart kNeedle[] = {
    {{{0, 0}, {-7, 0}, {0, -77}}, Qt::darkRed},
    {{{7, 0}, {0, 0}, {0, -77}}, Qt::red},
    {{{0, 0}, {-7, 0}, {0, 77}}, Qt::lightGray},
    {{{7, 0}, {0, 0}, {0, 77}}, Qt::white},
};

constexpr QRect kHeadingBox(-20, -7, 40, 15);
constexpr QRect kModeBox(-20, 9, 40, 15);

} // namespace

CompassViewWin::CompassViewWin(QWidget* parent)
    : ClosingWidget(parent), modeText(GetFixModeText(protocol::FixInvalid)), m_refresh(new ViewRefresh(this))
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(m_refresh, &ViewRefresh::Due, this, QOverload<>::of(&QWidget::update));
    setWindowTitle(tr("航向方位"));
}

void CompassViewWin::OnRecord(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, sizeof(protocol::CompassRecord), "CompassViewWin");
    if (record.IsDropped() || record.Size() < protocol::kCompassRecordMinSize) {
        return;
    }
    heading = record.At<float>(offsetof(protocol::CompassRecord, heading));
    modeText = GetFixModeText(record.At<std::uint8_t>(offsetof(protocol::CompassRecord, fixMode)));
    m_refresh->Request();
}

void CompassViewWin::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    m_dial.Paint(painter, *this, palette().color(QPalette::Window), {}, [this](QPainter& drawing) {
        ToSquare(drawing);
        PaintDial(drawing);
    });
    ToSquare(painter);
    PaintNeedle(painter);
    PaintTexts(painter);
}

void CompassViewWin::ToSquare(QPainter& painter) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(width() / 2.0, height() / 2.0);
    const double factor = static_cast<double>(std::min(width(), height())) / kSquare;
    painter.scale(factor, factor);
}

void CompassViewWin::PaintDial(QPainter& painter) const
{
    painter.save();
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1.0));
    painter.setBrush(Qt::NoBrush);
    QFont font("Times");
    font.setPointSize(10);
    // Between the dial and the square's edge; a wide face is drawn narrower.
    constexpr double room = kSquare / 2.0 - kDialRadius - kLabelGap;
    const double widest = QFontMetricsF(font, this).horizontalAdvance("270");
    if (widest > room) {
        font.setStretch(std::max(50, static_cast<int>(100.0 * room / widest)));
    }
    painter.setFont(font);
    const QFontMetricsF metrics(font, this);
    const double halfHeight = metrics.capHeight() / 2.0;
    for (int angle = 0; angle < 360; angle += 30) {
        const QString text = QString::number(static_cast<double>(angle), 'g');
        const double halfWidth = metrics.horizontalAdvance(text) / 2.0;
        const double turned = angle * kRadiansPerDegree;
        // As far out as a box of this size must stand to clear the dial.
        const double distance = kDialRadius + kLabelGap + halfWidth * std::fabs(std::sin(turned)) +
                                halfHeight * std::fabs(std::cos(turned));
        painter.save();
        painter.rotate(angle - 90.0);
        painter.translate(distance, 0.0);
        painter.rotate(90.0 - angle);
        painter.drawText(QPointF(-halfWidth, halfHeight), text);
        painter.restore();
    }
    painter.save();
    for (int i = 0; i < 12; ++i) {
        painter.drawLine(QPointF(kDialRadius - kMajorTick, 0.0), QPointF(kDialRadius, 0.0));
        painter.rotate(30.0);
    }
    painter.restore();
    painter.setPen(QPen(palette().color(QPalette::WindowText), 0.5));
    painter.save();
    for (int degree = 0; degree < 360; ++degree) {
        if (degree % 5 == 0) {
            painter.drawLine(QPointF(kDialRadius - kMinorTick, 0.0), QPointF(kDialRadius, 0.0));
        }
        painter.rotate(1.0);
    }
    painter.restore();
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1.0));
    painter.drawEllipse(QPointF(0.0, 0.0), kDialRadius, kDialRadius);
    painter.restore();
}

void CompassViewWin::PaintNeedle(QPainter& painter) const
{
    // A heading that isn't a number points nowhere.
    if (!std::isfinite(heading)) {
        return;
    }
    painter.save();
    painter.rotate(std::fmod(static_cast<double>(heading), 360.0));
    painter.setPen(QPen(QColor(90, 90, 90), 0.4));
    for (const NeedlePart& part : kNeedle) {
        painter.setBrush(part.brush);
        painter.drawConvexPolygon(part.corners, 3);
    }
    painter.restore();
}

void CompassViewWin::PaintTexts(QPainter& painter) const
{
    painter.fillRect(kHeadingBox, Qt::gray);
    QFont font = this->font();
    font.setPointSize(5);
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(kHeadingBox, Qt::AlignCenter | Qt::TextDontClip,
                     QString::number(static_cast<double>(heading), 'g') + "°");
    // The needle may lie under the mode; a plate of the window's colour keeps it readable.
    QColor plate = palette().color(QPalette::Window);
    plate.setAlpha(215);
    if (!modeText.isEmpty()) {
        painter.fillRect(kModeBox, plate);
    }
    // A long one is drawn narrower, so that it stays on the plate.
    const double length = QFontMetricsF(font, this).horizontalAdvance(modeText);
    if (length > kModeBox.width()) {
        font.setStretch(std::max(50, static_cast<int>(100.0 * kModeBox.width() / length)));
    }
    painter.setFont(font);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(kModeBox, Qt::AlignCenter | Qt::TextDontClip, modeText);
}
