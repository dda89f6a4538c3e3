// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

class RecordTarget;

/// Publishes the target of all records; null takes it back.
void PublishRecordTarget(RecordTarget* target);
RecordTarget* PublishedRecordTarget();

/// Registers every callback and then the log handler with the codec.
void RegisterCallbacks();

/// The text of the time to first fix when a fix comes at `now` after a start at `start`: seconds with two
/// decimals, less a fixed 0.12 s that belongs to the published figure.
QString FirstFixText(const QDateTime& start, const QDateTime& now);
