// SPDX-License-Identifier: MIT
#include "host/app/ComponentRow.h"

#include "host/app/HostWindowText.h"
#include "host/app/StatusDot.h"

#include <QLabel>
#include <QStatusBar>
#include <QStringList>

ComponentRow::ComponentRow() : m_problem(new QLabel)
{
    m_problem->setWordWrap(true);
    m_problem->setMargin(6);
    m_problem->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_problem->setStyleSheet(
        QStringLiteral("background:#fff3cd; color:#664d03; border-bottom:1px solid #e6d9a8;"));
    m_problem->hide();
}

void ComponentRow::AddTo(QStatusBar* bar)
{
    m_archiver.optional = true;
    for (Chip* chip : {&m_plugin, &m_codec, &m_archiver}) {
        chip->label = new QLabel;
        chip->label->setContentsMargins(6, 0, 6, 0);
        bar->addWidget(chip->label);
    }
}

void ComponentRow::Show(const ComponentStatus& plugin, const ComponentStatus& codec,
                        const ComponentStatus& archiver)
{
    m_plugin.status = plugin;
    m_codec.status = codec;
    m_archiver.status = archiver;
    m_filled = true;
    Retranslate();
}

void ComponentRow::Retranslate()
{
    if (!m_filled) {
        return;
    }
    m_plugin.Show(HostWindowText::tr("Plug-in"));
    m_codec.Show(HostWindowText::tr("Codec"));
    m_archiver.Show(HostWindowText::tr("Archiver"));

    QStringList problems;
    if (!m_codec.status.good) {
        problems << HostWindowText::tr("The codec is not in use, so nothing will be decoded: %1 (%2)")
                        .arg(m_codec.status.file, m_codec.status.reason);
    }
    if (!m_archiver.status.good) {
        problems << HostWindowText::tr("The archiver is not in use, so full logs stay uncompressed: %1 (%2)")
                        .arg(m_archiver.status.file, m_archiver.status.reason);
    }
    m_problem->setText(problems.join(QLatin1Char('\n')));
    m_problem->setVisible(!problems.isEmpty());
}

void ComponentRow::Chip::Show(const QString& name) const
{
    const char* colour = status.good ? kDotGood : optional ? kDotOff : kDotBad;
    label->setText(StatusDot(colour, name));
    label->setToolTip(status.good ? status.file : status.file + QLatin1Char('\n') + status.reason);
}
