// SPDX-License-Identifier: MIT
#include "views/log/HexViewWin.h"

#include "base/GnssSaveData.h"
#include "views/log/HexDump.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QLabel>

namespace {

constexpr const char* kColumnCounts[] = {"4", "8", "16", "32"};
constexpr int kDefaultColumns = 2; // an index

} // namespace

HexViewWin::HexViewWin(QWidget* parent) : LogTextView("hex", "ISO 8859-1", parent)
{
    setWindowTitle(tr("十六进制"));
    auto* label = new QLabel(tr("列数:"), this);
    m_columns = new QComboBox(this);
    m_columns->setObjectName("columns");
    for (const char* count : kColumnCounts) {
        m_columns->addItem(count);
    }
    m_columns->setCurrentIndex(kDefaultColumns);
    m_row->addSpacing(8);
    m_row->addWidget(label);
    m_row->addWidget(m_columns);
    m_row->addStretch(1);
}

void HexViewWin::OnBytes(const QByteArray& bytes)
{
    if (bytes.isEmpty()) {
        return;
    }
    AddLine(HexDump(bytes, m_columns->currentText().toInt(), TimePrefix()));
    ShowLines();
    saveData->Write(bytes.constData(), static_cast<quint32>(bytes.size()));
}
