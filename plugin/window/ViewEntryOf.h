// SPDX-License-Identifier: MIT
#pragma once

#include "window/ViewHost.h"
#include "window/ViewTable.h"

#include <QObject>

#include <type_traits>

// What the view table's rows are made with. A view is a QWidget with a constructor from its parent and the signal
// CloseSignal(); it may have more of the members below, which are then joined.

namespace view_entry {

template <typename View, typename = void> struct Sends : std::false_type {
};
template <typename View> struct Sends<View, std::void_t<decltype(&View::SendMsg)>> : std::true_type {
};

template <typename View, typename = void> struct WakesUp : std::false_type {
};
template <typename View> struct WakesUp<View, std::void_t<decltype(&View::SendWakeUpCmd)>> : std::true_type {
};

template <typename View, typename = void> struct TakesBytes : std::false_type {
};
template <typename View> struct TakesBytes<View, std::void_t<decltype(&View::OnBytes)>> : std::true_type {
};

} // namespace view_entry

/// Makes a view and joins it: SendMsg() goes to the line and SendWakeUpCmd() wakes the receiver; OnBytes() takes
/// every received byte.
template <typename View> QWidget* MakeView(ViewHost& host, QWidget* parent)
{
    auto* view = new View(parent);
    QObject::connect(view, &View::CloseSignal, &host, [&host, view] { host.Forget(view); });
    if constexpr (view_entry::Sends<View>::value) {
        QObject::connect(view, &View::SendMsg, &host, &ViewHost::SendMsg, Qt::DirectConnection);
    }
    if constexpr (view_entry::WakesUp<View>::value) {
        QObject::connect(view, &View::SendWakeUpCmd, &host, &ViewHost::SendWakeUpCmd);
    }
    if constexpr (view_entry::TakesBytes<View>::value) {
        QObject::connect(&host, &ViewHost::BytesReceived, view, &View::OnBytes);
    }
    return view;
}

/// A record that goes to the view's operation `Take(const void* record, int length)`.
template <auto Take> struct ViewOperation;
template <typename View, void (View::*Take)(const void*, int)> struct ViewOperation<Take> {
    static void Call(QWidget* view, const void* record, int length)
    {
        (static_cast<View*>(view)->*Take)(record, length);
    }
};
template <protocol::GnssCbType type, auto take> constexpr ViewRecord Record()
{
    return {type, &ViewOperation<take>::Call};
}

/// A row of the table for a view that shows a record, which goes to its OnRecord() unless told otherwise.
template <typename View, protocol::GnssCbType type, auto take = &View::OnRecord>
constexpr ViewEntry ShowsRecord(const char* label, const char* icon)
{
    return {label, icon, MakeView<View>, {Record<type, take>(), {}}};
}

/// A row for a view that takes no record.
template <typename View> constexpr ViewEntry WithoutRecord(const char* label, const char* icon)
{
    return {label, icon, MakeView<View>, {}};
}
