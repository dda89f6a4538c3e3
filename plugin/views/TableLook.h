// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QTableView;

// What the tables of the views have in common in their look.

/// Makes the rows as low as the font allows, so that a tiled window shows many.
void MakeRowsLow(QTableView* table);

/// Width of a cell that shows `text` whole, in pixels.
int CellWidth(const QTableView* table, const QString& text);
