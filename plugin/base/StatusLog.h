// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QTextEdit;

/// The status log, open to every class. All of it does nothing while no log exists.

/// Publishes the text area that shows the log; null takes it back.
void SetStatusEdit(QTextEdit* edit);
QTextEdit* StatusEdit();

/// Appends a line, with the time in front when Global::showTimestamp is set. `text` is plain text.
void AppendStatus(const QString& text);

/// Colours the failure that the last line names red. Called right after appending an outcome.
void HighlightStatus();

void ClearStatus();
void ScrollStatusToEnd();
