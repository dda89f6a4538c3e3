// SPDX-License-Identifier: MIT
#include "FixCountViewWin.h"

#include "bridge/RecordCopy.h"
#include "protocol/Records.h"

#include <QLabel>
#include <QVBoxLayout>

FixCountViewWin::FixCountViewWin(QWidget* parent) : ClosingWidget(parent), m_text(new QLabel(this))
{
    setWindowTitle(tr("定位次数"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_text);
}

void FixCountViewWin::OnRecord(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, sizeof(protocol::FixRecord), "FixCountViewWin");
    if (record.Size() < sizeof(protocol::FixRecord)) {
        return;
    }
    const auto fix = record.At<protocol::FixRecord>(0);
    if (fix.fixMode != protocol::FixInvalid) {
        ++m_fixes;
    }
    m_text->setText(QStringLiteral("%1 (%2:%3)").arg(m_fixes).arg(fix.hour).arg(fix.minute));
}
