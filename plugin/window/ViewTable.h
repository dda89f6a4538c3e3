// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/GnssCbType.h"

class QWidget;
class ViewHost;

/// A record that a view takes.
struct ViewRecord {
    protocol::GnssCbType type;
    void (*take)(QWidget* view, const void* record, int length); ///< null ends the list
};

/// A live view: everything that the window knows of it.
struct ViewEntry {
    static constexpr int maxRecords = 2;

    const char* label; ///< source text of the control panel's label, in the context of GnssWindow
    const char* icon;  ///< picture of the sub-window
    QWidget* (*make)(ViewHost& host, QWidget* parent); ///< makes the view and joins what it sends
    ViewRecord records[maxRecords];
};

/// The table and its number of entries.
struct ViewEntries {
    const ViewEntry* first;
    int count;

    const ViewEntry* begin() const { return first; }
    const ViewEntry* end() const { return first + count; }
};

/// The workbench's views.
ViewEntries WorkbenchViews();

/// The labels of the views that a new window opens, in this order; null ends the list.
extern const char* const kDefaultViewLabels[];
