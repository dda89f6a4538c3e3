// SPDX-License-Identifier: MIT
#include "commands/ConfigViewWin.h"

#include "base/MessageBoxes.h"
#include "base/StatusLog.h"
#include "bridge/CommandFrame.h"
#include "commands/CustomCommand.h"

#include "host/support/CProductVersion.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

namespace {

enum Column { NameColumn, StringColumn, SendColumn, kColumns };

constexpr int narrowColumnWidth = 80;

} // namespace

ConfigViewWin::ConfigViewWin(QWidget* parent) : QMainWindow(parent)
{
    setWindowTitle(tr("自定义命令"));
    // Inside a sub-window it is a view like the others.
    setWindowFlags(Qt::Widget);
    auto* body = new QWidget(this);
    m_layout = new QVBoxLayout(body);
    setCentralWidget(body);
    BuildTable();
    const QVector<CustomCommand> commands = LoadCustomCommands(CustomCommandFile());
    for (const CustomCommand& command : commands) {
        AppendRow(command);
    }
    BuildSendRow();
}

ConfigViewWin::~ConfigViewWin()
{
    QVector<CustomCommand> commands;
    commands.reserve(m_model->rowCount());
    for (int row = 0; row < m_model->rowCount(); ++row) {
        commands.append({CellText(row, NameColumn), CellText(row, StringColumn)});
    }
    SaveCustomCommands(CustomCommandFile(), commands);
}

void ConfigViewWin::BuildTable()
{
    m_table = new QTableView(this);
    m_model = new QStandardItemModel(0, kColumns, m_table);
    m_model->setHorizontalHeaderLabels(
        {QStringLiteral("Cmd Name"), QStringLiteral("Cmd String"), QStringLiteral("Send")});
    m_table->setModel(m_model);
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
    QHeaderView* header = m_table->horizontalHeader();
    header->setMinimumSectionSize(narrowColumnWidth);
    header->setSectionResizeMode(StringColumn, QHeaderView::Stretch);
    m_table->setColumnWidth(NameColumn, narrowColumnWidth);
    m_table->setColumnWidth(SendColumn, narrowColumnWidth);
    connect(m_table, &QTableView::customContextMenuRequested, this,
            &ConfigViewWin::OnTableViewCustomContextMenuRequested);
    m_layout->addWidget(m_table);
}

void ConfigViewWin::BuildSendRow()
{
    auto* label = new QLabel(QStringLiteral("Cmd:"), this);
    label->setFixedWidth(qMax(30, label->sizeHint().width()));
    m_combo = new QComboBox(this);
    m_combo->setEditable(true);
    // Only what is sent is remembered.
    m_combo->setInsertPolicy(QComboBox::NoInsert);
    auto* send = new QPushButton(QStringLiteral("Send:"), this);
    send->setFixedWidth(narrowColumnWidth);
    connect(send, &QPushButton::clicked, this, &ConfigViewWin::SlotEditSendBtnClicked);
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_combo, 1);
    row->addWidget(send);
    m_layout->addLayout(row);
}

void ConfigViewWin::AppendRow(const CustomCommand& command)
{
    m_model->appendRow({new QStandardItem(command.name), new QStandardItem(command.text)});
    SetSendButton(m_model->rowCount() - 1);
}

void ConfigViewWin::SetSendButton(int row)
{
    auto* button = new QPushButton(QStringLiteral("Send"));
    connect(button, &QPushButton::clicked, this, &ConfigViewWin::SloTabletSendBtnClicked);
    m_table->setIndexWidget(m_model->index(row, SendColumn), button);
}

QString ConfigViewWin::CellText(int row, int column) const
{
    // A row that was added by hand has no item where nothing was typed.
    const QStandardItem* item = m_model->item(row, column);
    return item != nullptr ? item->text() : QString();
}

void ConfigViewWin::OnTableViewCustomContextMenuRequested(QPoint pos)
{
    menuRow = m_table->indexAt(pos).row();
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(QStringLiteral("Add cmd"), this, &ConfigViewWin::SlotAddCmdAction);
    menu->addAction(QStringLiteral("Delete cmd"), this, &ConfigViewWin::SlotDeleteCmdAction);
    menu->addAction(QStringLiteral("Clear Table"), this, &ConfigViewWin::SlotClearTableAction);
    menu->popup(QCursor::pos());
}

void ConfigViewWin::SlotAddCmdAction()
{
    // Without a row under the menu, or with one that is gone since, the new row is the last.
    const bool isThere = menuRow >= 0 && menuRow < m_model->rowCount();
    const int row = isThere ? menuRow : m_model->rowCount();
    m_model->insertRow(row, new QStandardItem);
    SetSendButton(row);
}

void ConfigViewWin::SlotDeleteCmdAction()
{
    m_model->removeRows(menuRow, 1);
}

void ConfigViewWin::SlotClearTableAction()
{
    m_model->removeRows(0, m_model->rowCount());
}

bool ConfigViewWin::SendCommand(const QString& text)
{
    const CommandFrame frame(ClassGnss::passThroughId, CustomCommandBytes(text, CProductVersion::GetVersion()));
    if (frame.IsEncoded()) {
        emit SendMsg(frame.Data(), frame.Length());
    }
    return frame.IsEncoded();
}

void ConfigViewWin::WarnOfEmptyCommand()
{
    ShowWarningBox(this, QStringLiteral("SYSTEM"),
                   QStringLiteral("Cmd string is empty!\nPlease enter a command string."));
}

void ConfigViewWin::SlotEditSendBtnClicked()
{
    AppendStatus(tr("发送自定义命令"));
    const QString text = m_combo->currentText().trimmed();
    if (text.isEmpty()) {
        WarnOfEmptyCommand();
        return;
    }
    if (m_combo->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive) < 0) {
        m_combo->addItem(text);
    }
    SendCommand(text);
}

void ConfigViewWin::SloTabletSendBtnClicked()
{
    const auto* button = qobject_cast<QPushButton*>(sender());
    if (button == nullptr) {
        return;
    }
    const int row = m_table->indexAt(button->frameGeometry().topLeft()).row();
    const QString text = CellText(row, StringColumn).trimmed();
    if (text.isEmpty()) {
        WarnOfEmptyCommand();
        return;
    }
    // The window may be closed while a box about the closed port is open.
    const QString name = CellText(row, NameColumn);
    const QString label = tr("发送自定义命令");
    if (SendCommand(text)) {
        AppendStatus(label + name);
    }
}

void ConfigViewWin::closeEvent(QCloseEvent* event)
{
    QMainWindow::closeEvent(event);
    emit CloseSignal();
}
