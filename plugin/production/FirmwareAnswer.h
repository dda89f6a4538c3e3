// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

// What the chip's loader answers.

/// Whether every byte is one of 'C', 'G' and 0x06; an empty answer is none.
bool IsAcceptedAnswer(const QByteArray& answer);

/// The bytes in capital hexadecimal, a blank between them.
QString AnswerAsHex(const QByteArray& answer);

/// More than this is no version line.
constexpr int kLongestVersionReply = 128;

/// The version in what the receiver sent after the load, at most kLongestVersionReply bytes: from the '$' through
/// the two characters behind the '*'. Empty without a '$'; a single NUL character, which counts as a version,
/// when nothing came.
QString VersionText(const QByteArray& reply);
