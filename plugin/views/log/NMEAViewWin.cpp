// SPDX-License-Identifier: MIT
#include "views/log/NMEAViewWin.h"

#include "base/GnssSaveData.h"
#include "bridge/RecordCopy.h"
#include "protocol/Records.h"

#include <QBoxLayout>
#include <QLineEdit>
#include <QToolButton>

#include <cstddef>
#include <cstring>

namespace {

/// The sentence as it is shown: up to its line end, CR LF or a bare LF.
QString ShownSentence(const char* sentence, std::size_t length)
{
    const QString text = QString::fromLocal8Bit(sentence, static_cast<int>(length));
    QString piece = text.left(text.indexOf('\r'));
    if (piece.endsWith('\n')) {
        piece.chop(1);
    }
    return piece;
}

} // namespace

NMEAViewWin::NMEAViewWin(QWidget* parent) : LogTextView("nmea", nullptr, parent)
{
    setWindowTitle("NMEA");
    filterBtn = AddButton("filterBtn", "filter.png", tr("过滤"), true);
    filterEdit = new QLineEdit(this);
    filterEdit->setObjectName("filterEdit");
    filterEdit->setPlaceholderText(tr("过滤文本"));
    filterEdit->setClearButtonEnabled(true);
    filterEdit->setMaximumWidth(200);
    filterEdit->setEnabled(false);
    m_row->addWidget(filterEdit, 1);
    m_row->addStretch(1);
    connect(filterBtn, &QToolButton::clicked, this, &NMEAViewWin::SlotFilterBtnClicked);
}

void NMEAViewWin::OnRecord(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, sizeof(protocol::NmeaText), "NMEAViewWin");
    if (record.IsDropped()) {
        return;
    }
    // A record that ends before its count has none.
    const std::size_t count = record.HeldEntries(record.At<std::uint8_t>(offsetof(protocol::NmeaText, count)), 0,
                                                 protocol::kNmeaSlotSize);
    for (std::size_t i = 0; i < count; ++i) {
        const char* slot = record.Data() + i * protocol::kNmeaSlotSize;
        const std::size_t size = strnlen(slot, protocol::kNmeaSlotSize);
        const QString sentence = ShownSentence(slot, size);
        if (sentence.isEmpty()) {
            continue;
        }
        // A sentence that the filter holds back isn't logged either, and so it is meant.
        if (filterOn && !sentence.contains(filterEdit->text(), Qt::CaseInsensitive)) {
            continue;
        }
        AddLine(TimePrefix() + sentence);
        saveData->Write(slot, static_cast<quint32>(size));
    }
    ShowLines();
}

void NMEAViewWin::SlotFilterBtnClicked()
{
    filterOn = !filterOn;
    filterBtn->setChecked(filterOn);
    filterEdit->setEnabled(filterOn);
}
