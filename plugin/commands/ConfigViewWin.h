// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>

#include <cstdint>

class QComboBox;
class QPushButton;
class QStandardItemModel;
class QTableView;
class QVBoxLayout;
struct CustomCommand;

/// A table of named command strings, each of which can be sent, and a line for a string typed ad hoc.
class ConfigViewWin : public QMainWindow {
    Q_OBJECT

public:
    explicit ConfigViewWin(QWidget* parent);

    /// Keeps the table in the file.
    ~ConfigViewWin() override;

signals:
    void SendMsg(uint8_t* buffer, int len);
    void CloseSignal();

public slots:
    void OnTableViewCustomContextMenuRequested(QPoint pos);
    void SlotAddCmdAction();
    void SlotDeleteCmdAction();
    void SlotClearTableAction();
    void SloTabletSendBtnClicked();
    void SlotEditSendBtnClicked();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void BuildTable();
    void BuildSendRow();
    void AppendRow(const CustomCommand& command);
    void SetSendButton(int row);
    QString CellText(int row, int column) const;
    bool SendCommand(const QString& text);
    void WarnOfEmptyCommand();

    QVBoxLayout* m_layout = nullptr;
    QTableView* m_table = nullptr;
    QStandardItemModel* m_model = nullptr;
    QComboBox* m_combo = nullptr;
    qint32 menuRow = -1; ///< row of the last context menu, -1 on empty space
};
