// SPDX-License-Identifier: MIT
#include "widgets/SerialSetting.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

namespace {

struct Choice {
    const char* text;
    int value;
};

constexpr Choice kDataBits[] = {
    {"5", QSerialPort::Data5}, {"6", QSerialPort::Data6}, {"7", QSerialPort::Data7}, {"8", QSerialPort::Data8}};
// The value of "1.5" is 3.
constexpr Choice kStopBits[] = {
    {"1", QSerialPort::OneStop}, {"1.5", QSerialPort::OneAndHalfStop}, {"2", QSerialPort::TwoStop}};
constexpr Choice kParities[] = {{"None", QSerialPort::NoParity},
                                {"Odd", QSerialPort::OddParity},
                                {"Even", QSerialPort::EvenParity},
                                {"Mark", QSerialPort::MarkParity},
                                {"Space", QSerialPort::SpaceParity}};
constexpr Choice kFlowControls[] = {{"Hardware", QSerialPort::HardwareControl},
                                    {"Software", QSerialPort::SoftwareControl},
                                    {"None", QSerialPort::NoFlowControl}};
constexpr QSize kButtonSize(80, 20);

template <int Count> QComboBox* MakeBox(const Choice (&choices)[Count], const char* name, QWidget* parent)
{
    auto* box = new QComboBox(parent);
    box->setObjectName(name);
    for (const Choice& choice : choices) {
        box->addItem(choice.text);
    }
    return box;
}

/// The value of the chosen text, 0 when the table doesn't hold it.
template <int Count> int Chosen(const Choice (&choices)[Count], const QComboBox* box)
{
    const QString text = box->currentText();
    for (const Choice& choice : choices) {
        if (text == choice.text) {
            return choice.value;
        }
    }
    return 0;
}

template <int Count> void Choose(const Choice (&choices)[Count], QComboBox* box, int value)
{
    for (const Choice& choice : choices) {
        if (choice.value == value) {
            box->setCurrentText(choice.text);
        }
    }
}

} // namespace

SerialSetting::SerialSetting(QSerialPort* port, QWidget* parent) : ClosingWidget(parent, Qt::Dialog), m_port(port)
{
    setWindowTitle(tr("串口设置"));
    m_dataBits = MakeBox(kDataBits, "dataBits", this);
    m_stopBits = MakeBox(kStopBits, "stopBits", this);
    m_parity = MakeBox(kParities, "parity", this);
    m_flowControl = MakeBox(kFlowControls, "flowControl", this);

    auto* form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow("Data bits : ", m_dataBits);
    form->addRow("Stop bits : ", m_stopBits);
    form->addRow("Parity bits : ", m_parity);
    form->addRow("Flow control : ", m_flowControl);

    auto* ok = new QPushButton("OK", this);
    ok->setObjectName("ok");
    auto* cancel = new QPushButton("Cancel", this);
    cancel->setObjectName("cancel");
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QPushButton* button : {ok, cancel}) {
        button->setFixedSize(kButtonSize);
        buttons->addWidget(button);
    }
    connect(ok, &QPushButton::clicked, this, &SerialSetting::SlotOkClick);
    connect(cancel, &QPushButton::clicked, this, &SerialSetting::SlotCancelClick);

    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addStretch(1);
    column->addLayout(buttons);
    ShowPort();
}

void SerialSetting::SlotOkClick()
{
    if (m_port) {
        m_port->setDataBits(static_cast<QSerialPort::DataBits>(Chosen(kDataBits, m_dataBits)));
        m_port->setStopBits(static_cast<QSerialPort::StopBits>(Chosen(kStopBits, m_stopBits)));
        m_port->setFlowControl(static_cast<QSerialPort::FlowControl>(Chosen(kFlowControls, m_flowControl)));
        m_port->setParity(static_cast<QSerialPort::Parity>(Chosen(kParities, m_parity)));
    }
    close();
}

void SerialSetting::SlotCancelClick()
{
    close();
}

void SerialSetting::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous()) {
        ShowPort();
    }
}

void SerialSetting::ShowPort()
{
    if (!m_port) {
        return;
    }
    Choose(kDataBits, m_dataBits, m_port->dataBits());
    Choose(kStopBits, m_stopBits, m_port->stopBits());
    Choose(kFlowControls, m_flowControl, m_port->flowControl());
    Choose(kParities, m_parity, m_port->parity());
}
