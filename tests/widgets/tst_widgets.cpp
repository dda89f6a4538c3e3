// SPDX-License-Identifier: MIT
#include "widgets/CustomComboBox.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/DockTitleBar.h"
#include "widgets/LeftDockWidget.h"
#include "widgets/MyButton.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>
#include <QTimer>

namespace {

/// The texts of the menu, the checked one in brackets and greyed ones behind a bar.
QString Shown(const MyButton& button)
{
    QStringList texts;
    const QList<QAction*> actions = button.menu()->actions();
    for (const QAction* action : actions) {
        const QString text = action->isChecked() ? '[' + action->text() + ']' : action->text();
        texts.append((action->isEnabled() && action->isCheckable() ? "" : "|") + text);
    }
    return texts.join(' ');
}

/// A dock in its window.
struct Dock : QMainWindow {
    Dock() { addDockWidget(Qt::LeftDockWidgetArea, dock); }

    LeftDockWidget* dock = new LeftDockWidget("Control Panel", this);
    DockTitleBar* title = qobject_cast<DockTitleBar*>(dock->titleBarWidget());
    QMenu* menu = title->findChild<QMenu*>();
    QAction* autoHide = menu->actions().at(1);
};

} // namespace

class TestWidgets : public QObject {
    Q_OBJECT

private slots:
    void ButtonHasTwoParts()
    {
        const QList<QPair<int, int>> widths{{45, 30}, {59, 39}, {60, 45}, {61, 48}, {75, 60}};
        for (const auto& [width, inner] : widths) {
            const MyButton button(QString("text"), width, nullptr);
            QCOMPARE(button.size(), QSize(width, 25));
            QCOMPARE(button.Inner()->geometry(), QRect(0, 0, inner, 25));
        }
    }

    void ButtonOffersEntries()
    {
        MyButton button(QString("text"), 60, nullptr);
        QStringList told;
        connect(&button, &MyButton::triggered, [&told](const QString& text) { told.append(text); });
        connect(&button, &MyButton::ChildBtnClicked, [&told] { told.append("inner"); });
        button.SetMenuEntries({"old"});
        button.SetMenuEntries({"ttyUSB0", "ttyUSB1", "ttyUSB2"}, {"ttyUSB1", "elsewhere"});
        button.menu()->actions()[2]->trigger();
        button.SlotMenuAddAction("ttyUSB1");
        button.SelectEntry("ttyUSB1");
        QCOMPARE(Shown(button), QString("ttyUSB0 |ttyUSB1 [ttyUSB2]"));
        button.Inner()->click();
        // A selection tells nothing, but one that isn't among them is added and chosen.
        button.SelectEntry("ttyUSB0");
        button.SelectEntry("ttyUSB0");
        button.SelectEntry("");
        QCOMPARE(told, (QStringList{"ttyUSB2", "inner"}));
        QCOMPARE(button.Inner()->text(), QString("text"));
        button.SelectEntry("300");
        QCOMPARE(button.Inner()->text(), QString("300"));
        // An added one that is there is chosen and not added again, also when it is the present one.
        for (const char* text : {"300", "ttyUSB0", ""}) {
            button.SlotMenuAddAction(text);
        }
        QCOMPARE(told, (QStringList{"ttyUSB2", "inner", "300", "300", "ttyUSB0"}));
        QCOMPARE(Shown(button), QString("[ttyUSB0] |ttyUSB1 ttyUSB2 300"));
        QCOMPARE(button.Entries(), (QStringList{"ttyUSB0", "ttyUSB1", "ttyUSB2", "300"}));
        // From inside the choice itself.
        connect(&button, &MyButton::triggered, &button, [&button] { button.SetMenuEntries({"new"}); });
        button.menu()->actions()[2]->trigger();
        QCOMPARE(Shown(button), QString("new"));
    }

    void ButtonRefillsBeforeItsMenuOpens()
    {
        MyButton button(QString("text"), 60, nullptr);
        button.SetMenuEntries({"gone"});
        connect(&button, &MyButton::BtnClicked, &button, [&] { button.SetMenuEntries({"ttyACM0", "ttyACM1"}); });
        button.show();
        QVERIFY(QTest::qWaitForWindowExposed(&button));
        QString shown;
        // The press comes back only when the menu is closed.
        QTimer::singleShot(0, &button, [&] {
            shown = button.menu()->isVisible() ? Shown(button) : QString();
            button.menu()->close();
        });
        QTest::mousePress(&button, Qt::LeftButton, Qt::NoModifier, QPoint(55, 12));
        QCOMPARE(shown, QString("ttyACM0 ttyACM1"));
    }

    void ProgressTellsOnlyOfTheUser()
    {
        CustomProgressBar bar;
        auto* slider = bar.findChild<QSlider*>();
        QStringList events;
        connect(&bar, &CustomProgressBar::ProgressBarPressed, &bar,
                [&events](bool pressed) { events.append(pressed ? "pressed" : "released"); });
        connect(&bar, &CustomProgressBar::ProgressValueChanged, &bar,
                [&events](int value) { events.append(QString::number(value)); });
        for (int value : {1, 50, 100, 120, -3}) {
            bar.setValue(value);
        }
        QCOMPARE(bar.text(), QString("0%"));
        bar.setValue(42);
        QCOMPARE(bar.text(), QString("42%"));
        QCOMPARE(slider->value(), 42);
        QCOMPARE(events, QStringList());

        slider->setSliderDown(true);
        for (int position : {45, 60, 70}) {
            slider->setSliderPosition(position);
        }
        QCOMPARE(events, QStringList("pressed"));
        slider->setSliderDown(false);
        // A click beside the handle and a key are the user's too.
        slider->triggerAction(QAbstractSlider::SliderPageStepAdd);
        QCOMPARE(events, QStringList({"pressed", "released", "70", "80"}));
    }

    void DockTitleMenu()
    {
        Dock window;
        QAction* docking = window.menu->actions().at(0);
        /// What can be chosen, with a star where it is checked.
        const auto menu = [&window] {
            QStringList texts;
            for (const QAction* action : window.menu->actions()) {
                const QString text = action->text() + (action->isChecked() ? "*" : "");
                texts.append(action->isEnabled() ? text : '(' + text + ')');
            }
            return texts.join(' ') + (window.dock->isFloating() ? " floating" : "");
        };
        const QString idle = "Docking* Auto Hide Hide";
        QSignalSpy autoHidden(window.title, &DockTitleBar::DockAutoHideSignal);
        QCOMPARE(menu(), idle);
        window.autoHide->trigger();
        QCOMPARE(menu(), QString("(Docking) Auto Hide* (Hide) floating"));
        window.autoHide->trigger();
        QCOMPARE(menu(), idle);
        QCOMPARE(autoHidden, (QList<QList<QVariant>>{{true}, {false}}));
        window.dock->setFloating(true);
        QCOMPARE(menu(), QString("Docking* (Auto Hide) Hide floating"));
        docking->trigger();
        QCOMPARE(menu(), idle);
        window.menu->actions().at(2)->trigger();
        QVERIFY(!window.dock->isHidden());
        // A left press is left to the dock, a right one opens the menu.
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
            QTest::mousePress(window.title, button);
            QCOMPARE(window.menu->isVisible(), button == Qt::RightButton);
        }
        window.menu->close();
    }

    void DockHidesAtItsEdge()
    {
        Dock window;
        LeftDockWidget* dock = window.dock;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const auto after = [dock](QEvent::Type type) {
            QEvent event(type);
            QCoreApplication::sendEvent(dock, &event);
            return dock->pos();
        };
        const QPoint docked = dock->pos();
        QCOMPARE(after(QEvent::Leave), docked);
        window.autoHide->trigger();
        const QPoint at = dock->pos();
        QCOMPARE(after(QEvent::Leave), at - QPoint(dock->width() - 3, 0));
        QCOMPARE(after(QEvent::Enter), at - QPoint(3, 0));
        dock->LocationChanged(Qt::RightDockWidgetArea);
        QCOMPARE(after(QEvent::Leave), at + QPoint(dock->width() - 3, 0));
        QCOMPARE(after(QEvent::Enter), at + QPoint(3, 0));
        dock->LocationChanged(Qt::TopDockWidgetArea);
        QCOMPARE(after(QEvent::Leave), at + QPoint(3, 0));
    }

    void ComboFitsItsChild()
    {
        customComboBox::CustomComboBox box;
        auto* child = new QWidget;
        box.SetChildWidget(child);
        for (const int width : {120, 10}) {
            box.resize(width, 25);
            box.grab();
            QCOMPARE(child->size(), QSize(qMax(0, width - 20), 25));
        }
    }
};

QTEST_MAIN(TestWidgets)
#include "tst_widgets.moc"
