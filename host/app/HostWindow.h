// SPDX-License-Identifier: MIT
#pragma once

#include "host/app/ComponentRow.h"

#include <QMainWindow>
#include <QMap>

class DebugLogPane;
class QAction;
class QActionGroup;
class QDockWidget;
class QLabel;
class QMenu;
class QStackedWidget;

/// The host's window: menus, the container for the plug-in's window, the start-up row and the debug log pane.
/// It holds no rule of its own; what the user wishes goes out as a signal.
class HostWindow : public QMainWindow {
    Q_OBJECT

public:
    HostWindow();

    /// The widget into whose layout the plug-in's window is taken.
    QWidget* Container() const { return m_container; }

    /// Shows the plug-in's window, or a page that tells why there is none.
    void ShowPlugin();
    void ShowMissingPlugin(const ComponentStatus& plugin);

    /// Fills the start-up row.
    void ShowComponents(const ComponentStatus& plugin, const ComponentStatus& codec,
                        const ComponentStatus& archiver);

    void ShowProduct(int product);
    void ShowLanguage(int language);
    /// `text` is the receiver's state in words; `running` sets the menu's check mark.
    void ShowReceiver(bool running, const QString& text, bool good);
    /// Marks the playing speed, "" for none chosen; empty `capture` means the simulated sky.
    void ShowCapture(const QString& capture, const QString& speed);
    /// Shows a line in the status bar for some seconds.
    void ShowNote(const QString& text);

Q_SIGNALS:
    void ProductChosen(int product);
    void LanguageChosen(int language);
    void ReceiverSwitched(bool on);
    /// A file to play; empty for the simulated sky.
    void CaptureChosen(const QString& file);
    void SpeedChosen(const QString& speed);
    void Closing();

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void BuildMenus();
    QAction* AddAction(QMenu* menu, const char* text);
    void BuildStatusRow();
    void Retranslate();
    void UpdateTitle();
    void ChooseCapture();

    QStackedWidget* m_pages;
    QWidget* m_container;
    QLabel* m_missing;
    QDockWidget* m_logDock;
    DebugLogPane* m_log;
    QLabel* m_receiverState;
    QAction* m_receiverSwitch = nullptr;
    QAction* m_stopCapture = nullptr;
    QActionGroup* m_products = nullptr;
    QActionGroup* m_languages = nullptr;
    QActionGroup* m_speeds = nullptr;
    QMap<QAction*, const char*> m_actionTexts;
    QMap<QMenu*, const char*> m_menuTexts;
    ComponentRow m_components;
    QString m_capture;
    QString m_captureFolder;
};
