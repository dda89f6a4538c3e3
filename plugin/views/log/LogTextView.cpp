// SPDX-License-Identifier: MIT
#include "views/log/LogTextView.h"

#include "base/ClockText.h"
#include "base/FixedFont.h"
#include "base/GnssSaveData.h"
#include "base/StatusLog.h"
#include "host/support/ImageManager.h"
#include "views/ViewRefresh.h"
#include "views/log/LogHistory.h"

#include <QDir>
#include <QFile>
#include <QFont>
#include <QHBoxLayout>
#include <QIcon>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextCursor>
#include <QTextStream>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace {

// Small enough that a line of sixteen bytes fits into a quarter of a window.
constexpr int kPointSize = 8;

} // namespace

LogTextView::LogTextView(const QString& logName, const char* codecName, QWidget* parent)
    : ClosingWidget(parent), m_logName(logName), m_codecName(codecName)
{
    // Opaque, or each renewal of the text paints the windows behind it too.
    setAutoFillBackground(true);
    textEdit = new QPlainTextEdit(this);
    textEdit->setObjectName("textEdit");
    textEdit->setReadOnly(true);
    textEdit->setUndoRedoEnabled(false);
    textEdit->setLineWrapMode(QPlainTextEdit::NoWrap);
    QFont font = FixedFont();
    font.setPointSize(kPointSize);
    textEdit->setFont(font);
    textEdit->setFrameShape(QFrame::NoFrame);
    textEdit->viewport()->installEventFilter(this);
    // The end stays in sight through tiling and hiding too, not only while lines come in, until it is scrolled
    // away.
    QScrollBar* bar = textEdit->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, [this, bar](int value) { m_follows = value == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int maximum) {
        if (m_follows) {
            bar->setValue(maximum);
        }
    });

    m_row = new QHBoxLayout;
    m_row->setContentsMargins(4, 2, 4, 2);
    m_row->setSpacing(2);
    timeBtn = AddButton("timeBtn", "clock.png", tr("显示时间"), true);
    clearBtn = AddButton("clearBtn", "delete.png", tr("清空"), false);
    bottomBtn = AddButton("bottomBtn", "bottom.png", tr("滚动到底部"), false);
    connect(timeBtn, &QToolButton::clicked, this, &LogTextView::SlotTimeBtnClicked);
    connect(clearBtn, &QToolButton::clicked, this, &LogTextView::SlotClearBtnClicked);
    connect(bottomBtn, &QToolButton::clicked, this, &LogTextView::SlotBottomBtnClicked);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(m_row);
    column->addWidget(textEdit, 1);

    m_refresh = new ViewRefresh(this);
    connect(m_refresh, &ViewRefresh::Due, this, &LogTextView::FlushLines);

    saveData = new GnssSaveData(this);
    saveData->SetLogName(logName);
    saveData->OpenLog();
    connect(saveData, &GnssSaveData::clearWin, this, &LogTextView::SlotClearBtnClicked);
    connect(this, &LogTextView::ScrolledPastTop, this, &LogTextView::ProcScrolledPastTop);
}

QToolButton* LogTextView::AddButton(const QString& name, const QString& icon, const QString& toolTip,
                                    bool checkable)
{
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setIcon(QIcon(ImageManager::GetPixmapObject(":/images/images/gnss/" + icon)));
    button->setIconSize(QSize(16, 16));
    button->setToolTip(toolTip);
    button->setCheckable(checkable);
    button->setAutoRaise(true);
    m_row->addWidget(button);
    return button;
}

void LogTextView::SlotTimeBtnClicked()
{
    showTime = !showTime;
    timeBtn->setChecked(showTime);
}

void LogTextView::SlotClearBtnClicked()
{
    m_lines.clear();
    m_haveLines = false;
    textEdit->clear();
    historyIndex = 1;
}

void LogTextView::SlotBottomBtnClicked()
{
    FlushLines();
    textEdit->verticalScrollBar()->setValue(textEdit->verticalScrollBar()->maximum());
}

void LogTextView::ProcScrolledPastTop()
{
    const QDir folder(QDir::currentPath() + "/GnssData/logs/" + m_logName + "/");
    const QStringList names = folder.entryList(QDir::Files);
    const QVector<QDateTime> stamps = LogStamps(names);
    if (stamps.isEmpty()) {
        AppendStatus(tr("无可用文件，请检查log文件是否存在！"));
        return;
    }
    if (historyIndex >= stamps.size()) {
        AppendStatus(tr("已是当前测试所有内容！"));
        return;
    }
    const QString name = LogFileOf(names, stamps.at(historyIndex));
    if (name.isEmpty()) {
        AppendStatus(tr("文件") + name + tr("文件为空！"));
        return;
    }
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        AppendStatus(tr("文件") + name + tr("打开失败！"));
        return;
    }
    QTextStream stream(&file);
    if (m_codecName != nullptr) {
        stream.setCodec(m_codecName);
    }
    stream.setAutoDetectUnicode(false);

    FlushLines();
    // The text that stands in the window stays there; the older one is found above it.
    const int linesBefore = textEdit->blockCount();
    const int scrolled = textEdit->verticalScrollBar()->value();
    QTextCursor cursor(textEdit->document());
    cursor.movePosition(QTextCursor::Start);
    cursor.insertText(stream.readAll());
    textEdit->verticalScrollBar()->setValue(scrolled + textEdit->blockCount() - linesBefore);
    ++historyIndex;
}

bool LogTextView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == textEdit->viewport() && event->type() == QEvent::Wheel) {
        const QScrollBar* bar = textEdit->verticalScrollBar();
        if (bar->value() == bar->minimum() && static_cast<QWheelEvent*>(event)->angleDelta().y() > 0) {
            emit ScrolledPastTop();
        }
    }
    return QWidget::eventFilter(watched, event);
}

void LogTextView::hideEvent(QHideEvent* event)
{
    FlushLines();
    QWidget::hideEvent(event);
}

QString LogTextView::TimePrefix() const
{
    return showTime ? '[' + ClockText() + "] " : QString();
}

void LogTextView::AddLine(const QString& line)
{
    if (m_haveLines) {
        m_lines += '\n';
    }
    m_lines += line;
    m_haveLines = true;
}

void LogTextView::ShowLines()
{
    m_refresh->Request();
}

void LogTextView::FlushLines()
{
    m_refresh->Cancel();
    if (!m_haveLines) {
        return;
    }
    textEdit->appendPlainText(m_lines);
    m_lines.resize(0);
    m_haveLines = false;
}
