// SPDX-License-Identifier: MIT
#include "host/app/DebugLogPane.h"

#include "host/app/DebugLog.h"

#include <QDateTime>
#include <QFileDialog>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QSaveFile>
#include <QVBoxLayout>

DebugLogPane::DebugLogPane(QWidget* parent)
    : QWidget(parent), m_text(new QPlainTextEdit), m_save(new QPushButton), m_clear(new QPushButton)
{
    m_text->setReadOnly(true);
    m_text->setUndoRedoEnabled(false);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setMaximumBlockCount(DebugLog::kMaxLines);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));

    auto* buttons = new QVBoxLayout;
    buttons->addWidget(m_save);
    buttons->addWidget(m_clear);
    buttons->addStretch();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(m_text);
    layout->addLayout(buttons);

    connect(m_save, &QPushButton::clicked, this, &DebugLogPane::Save);
    connect(m_clear, &QPushButton::clicked, this, &DebugLogPane::Clear);
    Retranslate();
    DebugLog::Instance().SetListener(this);
    TakeNewLines();
}

DebugLogPane::~DebugLogPane()
{
    DebugLog::Instance().SetListener(nullptr);
}

int DebugLogPane::LineCount() const
{
    return m_text->document()->isEmpty() ? 0 : m_text->blockCount();
}

void DebugLogPane::Save()
{
    const QString proposal = QStringLiteral("debug_%1.log")
                                 .arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddhhmmss")));
    const QPointer<DebugLogPane> self(this);
    const QString path = QFileDialog::getSaveFileName(this, tr("Save Debug Log"), proposal,
                                                      tr("Log files (*.log *.txt);;All files (*)"));
    if (!self || path.isEmpty()) {
        return;
    }
    QSaveFile file(path);
    const QByteArray bytes = DebugLog::Instance().Text().toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        QMessageBox::warning(this, tr("Save Debug Log"),
                             tr("%1 cannot be written: %2").arg(path, file.errorString()));
    }
}

void DebugLogPane::Clear()
{
    DebugLog::Instance().Clear();
    m_text->clear();
}

bool DebugLogPane::event(QEvent* event)
{
    if (event->type() == DebugLog::NewLinesEvent()) {
        TakeNewLines();
        return true;
    }
    return QWidget::event(event);
}

void DebugLogPane::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        Retranslate();
    }
    QWidget::changeEvent(event);
}

void DebugLogPane::Retranslate()
{
    m_save->setText(tr("Save..."));
    m_clear->setText(tr("Clear"));
}

void DebugLogPane::TakeNewLines()
{
    const QStringList lines = DebugLog::Instance().LinesFrom(m_next);
    if (!lines.isEmpty()) {
        m_text->appendPlainText(lines.join(QLatin1Char('\n')));
    }
}
