// SPDX-License-Identifier: MIT
#include "window/ViewHost.h"

#include "host/support/ImageManager.h"
#include "window/WindowText.h"

#include <QAction>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

#include <cstring>

namespace {

/// Pixels: little more than a title bar. When the views ask for more than the screen has, tiling twelve of them
/// would make the whole window larger than the screen.
constexpr QSize smallestSubWindow(125, 60);

} // namespace

ViewHost::ViewHost(QMainWindow* window, ViewEntries views)
    : QObject(window), m_window(window), m_entries(views), m_open(views.count)
{
}

void ViewHost::InstallArea()
{
    m_area = new QMdiArea;
    m_area->setContextMenuPolicy(Qt::NoContextMenu);
    m_window->setCentralWidget(m_area);
    m_window->setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
}

bool ViewHost::Open(const QString& label)
{
    for (int i = 0; i < m_entries.count; ++i) {
        if (WindowText::tr(m_entries.first[i].label) == label) {
            Open(i);
            return true;
        }
    }
    return false;
}

void ViewHost::OpenAll(const char* const* sourceLabels)
{
    for (; *sourceLabels != nullptr; ++sourceLabels) {
        Open(WindowText::tr(*sourceLabels));
    }
}

void ViewHost::Open(int index)
{
    const ViewEntry& entry = m_entries.first[index];
    OpenView& open = m_open[index];
    if (open.subWindow == nullptr) {
        open.view = entry.make(*this, m_window);
        open.subWindow = new QMdiSubWindow;
        open.subWindow->setWidget(open.view);
        open.subWindow->setAttribute(Qt::WA_DeleteOnClose);
        open.subWindow->setWindowIcon(QIcon(
            ImageManager::GetPixmapObject(QLatin1String(":/images/images/gnss/") + QLatin1String(entry.icon))));
        open.subWindow->setMinimumSize(smallestSubWindow);
        m_area->addSubWindow(open.subWindow);
        open.view->showMaximized();
    } else {
        m_area->setActiveSubWindow(open.subWindow);
    }
    AddCloseAllAction();
}

void ViewHost::AddCloseAllAction()
{
    // Before the window is shown nothing is active, but the current sub-window is already the new one.
    QMdiSubWindow* subWindow = m_area->currentSubWindow();
    QMenu* menu = subWindow != nullptr ? subWindow->systemMenu() : nullptr;
    if (menu == nullptr) {
        return;
    }
    const QString text = WindowText::tr("Close All");
    const QList<QAction*> actions = menu->actions();
    for (const QAction* action : actions) {
        if (action->text() == text) {
            return;
        }
    }
    auto* closeAll = new QAction(text, m_window);
    connect(closeAll, &QAction::triggered, m_area, &QMdiArea::closeAllSubWindows);
    menu->addAction(closeAll);
}

void ViewHost::Tile()
{
    if (m_area->currentSubWindow() == nullptr) {
        m_tiled = false;
        return;
    }
    if (!m_tiled) {
        m_area->tileSubWindows();
    } else {
        m_area->cascadeSubWindows();
    }
    m_tiled = !m_tiled;
}

QWidget* ViewHost::Find(const char* className) const
{
    for (const OpenView& open : m_open) {
        if (open.view != nullptr && std::strcmp(open.view->metaObject()->className(), className) == 0) {
            return open.view;
        }
    }
    return nullptr;
}

void ViewHost::Deliver(protocol::GnssCbType type, const void* record, int length) const
{
    for (int i = 0; i < m_entries.count; ++i) {
        for (const ViewRecord& taken : m_entries.first[i].records) {
            if (taken.take != nullptr && taken.type == type && m_open[i].view != nullptr) {
                taken.take(m_open[i].view, record, length);
            }
        }
    }
}

void ViewHost::Forget(const QWidget* view)
{
    for (OpenView& open : m_open) {
        if (view != nullptr && open.view == view) {
            open = OpenView();
        }
    }
}

void ViewHost::Forget(const char* className)
{
    Forget(Find(className));
}
