// SPDX-License-Identifier: MIT
#include "widgets/CustomProgressBar.h"

#include <QFontMetrics>
#include <QResizeEvent>
#include <QSignalBlocker>
#include <QSlider>
#include <QStyle>
#include <QStyleFactory>

CustomProgressBar::CustomProgressBar(QWidget* parent) : QLabel(parent)
{
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_slider = new QSlider(Qt::Horizontal, this);
    m_slider->setRange(0, 100);
    // The value changes once, at the release of the handle, and not all along its way.
    m_slider->setTracking(false);
    if (QStyle* style = QStyleFactory::create("fusion")) {
        style->setParent(this);
        setStyle(style);
        m_slider->setStyle(style);
    }
    ShowValue(0);
    connect(m_slider, &QSlider::valueChanged, this, &CustomProgressBar::SlotValueChanged);
    connect(m_slider, &QSlider::sliderPressed, this, &CustomProgressBar::SlotSliderPressed);
    connect(m_slider, &QSlider::sliderReleased, this, &CustomProgressBar::SlotSliderReleased);
}

void CustomProgressBar::setValue(int value)
{
    const QSignalBlocker blocker(m_slider);
    m_slider->setValue(value);
    ShowValue(m_slider->value());
}

void CustomProgressBar::SlotValueChanged(int value)
{
    ShowValue(value);
    emit ProgressValueChanged(value);
}

void CustomProgressBar::SlotSliderReleased()
{
    emit ProgressBarPressed(false);
}

void CustomProgressBar::SlotSliderPressed()
{
    emit ProgressBarPressed(true);
}

void CustomProgressBar::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    const int textWidth = fontMetrics().horizontalAdvance("100%") + 4;
    m_slider->setGeometry(0, 0, qMax(0, width() - textWidth), height());
}

void CustomProgressBar::ShowValue(int value)
{
    setText(QString::number(value) + "%");
}
