// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/ClosingWidget.h"

#include <QStringList>

#include <memory>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSerialPort;
class QTextEdit;

/// The window of the firmware load. It has a serial port of its own, open only while a load runs.
class VersionLoad : public ClosingWidget {
    Q_OBJECT

public:
    explicit VersionLoad(QWidget* parent = nullptr);
    ~VersionLoad() override;

    /// Sets the progress and the log back; called just before the window is shown.
    void Prepare();

    bool eventFilter(QObject* watched, QEvent* event) override;

public slots:
    void SlotUpdatePortInfo();
    void SlotChangePort(const QString& portName);
    void SlotSelectVersionPath();
    void SlotStartLoadVersion();
    void SlotChangeComboBoxText(int index);

signals:
    void ComboBoxClicked();

private:
    void BuildWindow();
    void Log(const QString& line);

    QStringList m_portName; ///< the ports offered
    std::unique_ptr<QSerialPort> m_serialPort;
    QLineEdit* m_pathEdit = nullptr;
    QPushButton* m_startBtn = nullptr;
    QPushButton* m_selectBtn = nullptr;
    QTextEdit* m_log = nullptr;
    QComboBox* m_portBox = nullptr;
    QLabel* m_progress = nullptr;
    QString firmwarePath;
    QString lastDir;
};
