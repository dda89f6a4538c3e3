// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

class QSlider;

/// A slider from 0 to 100 with its value as a percentage at the right.
class CustomProgressBar : public QLabel {
    Q_OBJECT

public:
    explicit CustomProgressBar(QWidget* parent = nullptr);

    /// Moves the slider and the text; emits nothing.
    void setValue(int value);

signals:
    void ProgressBarPressed(bool pressed);

    /// The user has chosen a value; the program's own changes don't come here.
    void ProgressValueChanged(int value);

public slots:
    void SlotValueChanged(int value);
    void SlotSliderReleased();
    void SlotSliderPressed();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void ShowValue(int value);

    QSlider* m_slider = nullptr;
};
