// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// The dump of a block, `columns` bytes a line: lower-case hexadecimal padded to the full width, " | ", and the
/// printable characters with a full stop for the others. Each line begins with `prefix`; lines are parted by
/// line feeds, with none at the end. No bytes or no columns give no text.
QString HexDump(const QByteArray& bytes, int columns, const QString& prefix);
