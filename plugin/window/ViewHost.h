// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/GnssCbType.h"
#include "window/ViewTable.h"

#include <QObject>
#include <QVector>

class QMainWindow;
class QMdiArea;
class QMdiSubWindow;
class QString;

/// The open views of a window: one of each entry of a view table at most, as sub-windows of its MDI area. What
/// goes to and comes from any view passes here.
class ViewHost : public QObject {
    Q_OBJECT

public:
    /// `window` is the parent of every view; its central area holds the sub-windows.
    ViewHost(QMainWindow* window, ViewEntries views);

    /// Replaces the window's central widget by a new, empty area.
    void InstallArea();
    QMdiArea* Area() const { return m_area; }

    /// Opens or activates the view with this translated label. False for a text that is no label.
    bool Open(const QString& label);
    /// Opens views by their source labels; null ends the list.
    void OpenAll(const char* const* sourceLabels);

    /// Tiles and cascades in turn.
    void Tile();

    /// The open view of a class; null while it is closed.
    template <typename View> View* Find() const
    {
        return static_cast<View*>(Find(View::staticMetaObject.className()));
    }
    QWidget* Find(const char* className) const;

    /// Gives a record to the views that take it. A closed view drops its records.
    void Deliver(protocol::GnssCbType type, const void* record, int length) const;

    /// The view is closing: nothing reaches it from now on.
    void Forget(const QWidget* view);
    void Forget(const char* className);

signals:
    void SendMsg(uint8_t* buffer, int length);
    void SendWakeUpCmd();
    void BytesReceived(const QByteArray& bytes);

private:
    struct OpenView {
        QWidget* view = nullptr;
        QMdiSubWindow* subWindow = nullptr;
    };

    void Open(int index);
    void AddCloseAllAction();

    QMainWindow* m_window;
    QMdiArea* m_area = nullptr;
    ViewEntries m_entries;
    QVector<OpenView> m_open; ///< in the order of the entries
    bool m_tiled = false;
};
