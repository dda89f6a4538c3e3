#pragma once

#include <QString>
#include <QWidget>

/// The heading as a needle over a dial, with the fix mode in words.
class CompassViewWin : public QWidget {
    Q_OBJECT

public:
    explicit CompassViewWin(QWidget* parent);

    /// Takes a CompassRecord; `length` in bytes.
    void OnRecord(const void* buffer, int length);

signals:
    void CloseSignal();

protected:
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void PaintDial(QPainter& painter) const;
    void PaintNeedle(QPainter& painter) const;
    void PaintTexts(QPainter& painter) const;

    float heading = 0.0F; ///< degrees clockwise from north
    QString modeText;
};
