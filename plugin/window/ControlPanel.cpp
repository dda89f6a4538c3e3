// SPDX-License-Identifier: MIT
#include "window/ControlPanel.h"

#include "base/ProcessState.h"
#include "base/StatusLog.h"
#include "host/support/VerCommon.h"
#include "window/ControlTree.h"
#include "window/ToolPictures.h"
#include "window/WindowText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QStyleFactory>
#include <QTextEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

QPushButton* LogButton(const char* picture, const QString& toolTip)
{
    auto* button = new QPushButton(ToolPicture(picture), QString());
    button->setIconSize(kToolIconSize);
    button->setToolTip(toolTip);
    return button;
}

} // namespace

ControlPanel::ControlPanel(QMainWindow* window) : LeftDockWidget(QStringLiteral("Control Panel"), window)
{
    setFeatures(QDockWidget::DockWidgetClosable);
    setAllowedAreas(Qt::LeftDockWidgetArea);
    setWidget(BuildContent(window));
    m_tree->expandAll();
    window->addDockWidget(Qt::LeftDockWidgetArea, this);
}

QWidget* ControlPanel::BuildContent(QMainWindow* window)
{
    auto* content = new QWidget(window);

    m_status = new QTextEdit(content);
    m_status->setReadOnly(true);
    m_status->setUndoRedoEnabled(false);
    SetStatusEdit(m_status);

    m_tree = new QTreeWidget(content);
    m_tree->setHeaderHidden(true);
    if (QStyle* style = QStyleFactory::create(QStringLiteral("windows"))) {
        style->setParent(m_tree);
        m_tree->setStyle(style);
    }
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    const QString configDirectory = VerCommon::GetCfgPath(QString::number(VerCommon::GetCurrentVersion()));
    LoadControlTree(m_tree, TreeFilePath(configDirectory, Global::language));

    auto* label = new QLabel(WindowText::tr("系统状态："), content);
    label->setFont(QFont(QStringLiteral("Times New Roman"), 12));
    label->setStyleSheet(QStringLiteral("color:black;"));
    label->setFixedSize(100, 30);

    m_timestamp = LogButton("clock.png", WindowText::tr("时间戳"));
    m_timestamp->setCheckable(true);
    m_timestamp->setChecked(Global::showTimestamp);
    m_clear = LogButton("delete.png", WindowText::tr("清空"));
    m_bottom = LogButton("bottom.png", WindowText::tr("滚动到底部"));

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_timestamp);
    buttons->addWidget(m_clear);
    buttons->addWidget(m_bottom);
    auto* layout = new QVBoxLayout(content);
    layout->addWidget(m_tree, 3);
    layout->addWidget(label);
    layout->addWidget(m_status, 2);
    layout->addLayout(buttons);
    return content;
}

void ControlPanel::ToggleTimestamp()
{
    Global::showTimestamp = !Global::showTimestamp;
    m_timestamp->setChecked(Global::showTimestamp);
}
