#include "widgets/CustomComboBox.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/DockTitleBar.h"
#include "widgets/LeftDockWidget.h"
#include "widgets/MyButton.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>
#include <QTimer>

class TestWidgets : public QObject {
    Q_OBJECT

private slots:
    void ButtonHasTwoParts();
    void ButtonOffersEntries();
    void ButtonSelectsSilently();
    void ButtonAddsAnEntry();
    void ButtonRefillsBeforeItsMenuOpens();
    void ProgressTellsOnlyOfTheUser();
    void DockTitleMenu();
    void DockHidesAtItsEdge();
    void ComboFitsItsChild();
};

namespace {

QAction* FindAction(const QWidget& owner, const QString& text)
{
    const auto actions = owner.findChildren<QAction*>();
    for (QAction* action : actions) {
        if (action->text() == text)
            return action;
    }
    return nullptr;
}

QStringList Checked(const MyButton& button)
{
    QStringList texts;
    const auto actions = button.menu()->actions();
    for (const QAction* action : actions) {
        if (action->isChecked())
            texts.append(action->text());
    }
    return texts;
}

} // namespace

void TestWidgets::ButtonHasTwoParts()
{
    const QList<QPair<int, int>> widths{{45, 30}, {59, 39}, {60, 45}, {61, 48}, {75, 60}};
    for (const auto& [width, inner] : widths) {
        const MyButton button(QString("text"), width, nullptr);
        QCOMPARE(button.size(), QSize(width, 25));
        QCOMPARE(button.Inner()->geometry(), QRect(0, 0, inner, 25));
    }
    MyButton button(QIcon(), 60, nullptr);
    button.QWidget::setToolTip("whole");
    button.SetToolTip("inner");
    button.SetText("text");
    QCOMPARE(button.toolTip(), QString("whole"));
    QCOMPARE(button.Inner()->toolTip(), QString("inner"));
    QCOMPARE(button.Inner()->text(), QString("text"));
    QVERIFY(button.text().isEmpty());

    QSignalSpy inner(&button, &MyButton::ChildBtnClicked);
    QSignalSpy outer(&button, &MyButton::BtnClicked);
    QTest::mouseClick(button.Inner(), Qt::LeftButton);
    QCOMPARE(inner.count(), 1);
    QCOMPARE(outer.count(), 0);
}

void TestWidgets::ButtonOffersEntries()
{
    MyButton button(QString("text"), 60, nullptr);
    QSignalSpy triggered(&button, &MyButton::triggered);
    button.SetMenuEntries({"old"});
    button.SetMenuEntries({"ttyUSB0", "ttyUSB1", "ttyUSB2"}, {"ttyUSB1", "elsewhere"});
    QCOMPARE(button.Entries(), QStringList({"ttyUSB0", "ttyUSB1", "ttyUSB2"}));
    const auto actions = button.menu()->actions();
    QCOMPARE(actions.size(), 3);
    QVERIFY(actions[0]->isEnabled() && actions[0]->isCheckable());
    QVERIFY(!actions[1]->isEnabled() && !actions[1]->isCheckable());
    actions[2]->trigger();
    button.SlotMenuAddAction("ttyUSB1");
    QCOMPARE(triggered.count(), 1);
    QCOMPARE(triggered[0][0].toString(), QString("ttyUSB2"));
    QCOMPARE(Checked(button), QStringList("ttyUSB2"));
    button.SelectEntry("ttyUSB1");
    QCOMPARE(Checked(button), QStringList("ttyUSB2"));
    // From inside the choice itself.
    connect(&button, &MyButton::triggered, &button, [&button] { button.SetMenuEntries({"new"}); });
    button.menu()->actions()[0]->trigger();
    QCOMPARE(button.Entries(), QStringList("new"));
}

void TestWidgets::ButtonSelectsSilently()
{
    MyButton button(QString("text"), 75, nullptr);
    button.SetMenuEntries({"9600", "115200"});
    QSignalSpy triggered(&button, &MyButton::triggered);
    button.SelectEntry("9600");
    button.SelectEntry("115200");
    button.SelectEntry("115200");
    QCOMPARE(Checked(button), QStringList("115200"));
    button.SelectEntry("");
    QCOMPARE(triggered.count(), 0);
    QCOMPARE(button.Entries().size(), 2);
    QCOMPARE(button.Inner()->text(), QString("text"));
}

void TestWidgets::ButtonAddsAnEntry()
{
    MyButton button(QString("115200"), 75, nullptr);
    button.SetMenuEntries({"9600", "115200"});
    button.SelectEntry("115200");
    QSignalSpy triggered(&button, &MyButton::triggered);
    button.SlotMenuAddAction("230400");
    QCOMPARE(triggered.count(), 1);
    QCOMPARE(triggered[0][0].toString(), QString("230400"));
    QCOMPARE(button.Inner()->text(), QString("230400"));
    QCOMPARE(Checked(button), QStringList("230400"));
    // One that is there is chosen and not added again, also when it is the present one.
    button.SlotMenuAddAction("230400");
    button.SlotMenuAddAction("9600");
    button.SlotMenuAddAction("");
    QCOMPARE(triggered.count(), 3);
    QCOMPARE(button.Entries(), QStringList({"9600", "115200", "230400"}));
    QCOMPARE(Checked(button), QStringList("9600"));
    // Selecting a text that isn't among them adds it likewise.
    button.SelectEntry("300");
    QCOMPARE(triggered.count(), 4);
    QCOMPARE(Checked(button), QStringList("300"));
}

void TestWidgets::ButtonRefillsBeforeItsMenuOpens()
{
    MyButton button(QString("text"), 60, nullptr);
    button.SetMenuEntries({"gone"});
    connect(&button, &MyButton::BtnClicked, &button, [&button] { button.SetMenuEntries({"ttyACM0", "ttyACM1"}); });
    button.show();
    QVERIFY(QTest::qWaitForWindowExposed(&button));
    QStringList shown;
    // The press comes back only when the menu is closed.
    QTimer::singleShot(0, &button, [&] {
        if (button.menu()->isVisible()) {
            const auto actions = button.menu()->actions();
            for (const QAction* action : actions)
                shown.append(action->text());
        }
        button.menu()->close();
    });
    QTest::mousePress(&button, Qt::LeftButton, Qt::NoModifier, QPoint(55, 12));
    QCOMPARE(shown, QStringList({"ttyACM0", "ttyACM1"}));
    QVERIFY(!button.menu()->isVisible());
}

void TestWidgets::ProgressTellsOnlyOfTheUser()
{
    CustomProgressBar bar;
    bar.resize(105, 25);
    auto* slider = bar.findChild<QSlider*>();
    QStringList events;
    connect(&bar, &CustomProgressBar::ProgressBarPressed, &bar,
            [&events](bool pressed) { events.append(pressed ? "pressed" : "released"); });
    connect(&bar, &CustomProgressBar::ProgressValueChanged, &bar,
            [&events](int value) { events.append(QString::number(value)); });
    QCOMPARE(bar.text(), QString("0%"));
    for (int value : {1, 50, 100, 120, -3})
        bar.setValue(value);
    QCOMPARE(bar.text(), QString("0%"));
    bar.setValue(42);
    QCOMPARE(bar.text(), QString("42%"));
    QCOMPARE(slider->value(), 42);
    QCOMPARE(events, QStringList());

    slider->setSliderDown(true);
    for (int position : {45, 60, 70})
        slider->setSliderPosition(position);
    QCOMPARE(events, QStringList("pressed"));
    slider->setSliderDown(false);
    QCOMPARE(events, QStringList({"pressed", "released", "70"}));
    QCOMPARE(bar.text(), QString("70%"));

    // A click beside the handle and a key are the user's too.
    events.clear();
    slider->triggerAction(QAbstractSlider::SliderPageStepAdd);
    QCOMPARE(events, QStringList("80"));
}

void TestWidgets::DockTitleMenu()
{
    QMainWindow window;
    auto* dock = new LeftDockWidget("Control Panel", &window);
    window.addDockWidget(Qt::LeftDockWidgetArea, dock);
    auto* title = qobject_cast<DockTitleBar*>(dock->titleBarWidget());
    QVERIFY(title != nullptr);
    QCOMPARE(title->sizeHint(), QSize(200, 25));
    dock->setFeatures(QDockWidget::DockWidgetVerticalTitleBar);
    QCOMPARE(title->sizeHint(), QSize(25, 200));
    dock->setFeatures(QDockWidget::DockWidgetClosable);
    QAction* docking = FindAction(*title, "Docking");
    QAction* autoHide = FindAction(*title, "Auto Hide");
    QAction* hide = FindAction(*title, "Hide");
    QVERIFY(docking->isChecked() && docking->isCheckable() && autoHide->isCheckable() && !hide->isCheckable());

    QSignalSpy autoHidden(title, &DockTitleBar::DockAutoHideSignal);
    autoHide->trigger();
    QVERIFY(title->AutoHide() && dock->isFloating() && autoHide->isChecked() && autoHide->isEnabled());
    QVERIFY(!docking->isEnabled() && !hide->isEnabled() && !docking->isChecked());
    autoHide->trigger();
    QVERIFY(!title->AutoHide() && !dock->isFloating() && !autoHide->isChecked());
    QVERIFY(docking->isEnabled() && hide->isEnabled() && docking->isChecked() && autoHide->isEnabled());
    QCOMPARE(autoHidden.count(), 2);
    QCOMPARE(autoHidden[0][0].toBool(), true);
    QCOMPARE(autoHidden[1][0].toBool(), false);

    dock->setFloating(true);
    QVERIFY(!autoHide->isEnabled());
    docking->trigger();
    QVERIFY(!dock->isFloating() && autoHide->isEnabled());

    QSignalSpy closed(dock, &LeftDockWidget::DockTilteCloseSignal);
    hide->trigger();
    QCOMPARE(closed.count(), 1);
    QVERIFY(!dock->isHidden());

    QSignalSpy menuWanted(title, &DockTitleBar::MyCustomContextMenuRequested);
    QMouseEvent left(QEvent::MouseButtonPress, QPointF(5, 5), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(title, &left);
    QCOMPARE(menuWanted.count(), 0);
    QMouseEvent right(QEvent::MouseButtonPress, QPointF(5, 5), Qt::RightButton, Qt::RightButton, Qt::NoModifier);
    QCoreApplication::sendEvent(title, &right);
    QCOMPARE(menuWanted.count(), 1);
    auto* menu = title->findChild<QMenu*>();
    QVERIFY(menu->isVisible());
    QCOMPARE(menu->actions(), QList<QAction*>({docking, autoHide, hide}));
    menu->close();
}

void TestWidgets::DockHidesAtItsEdge()
{
    QMainWindow window;
    auto* dock = new LeftDockWidget("Control Panel", &window);
    window.addDockWidget(Qt::LeftDockWidgetArea, dock);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const auto enter = [dock] {
        QEvent event(QEvent::Enter);
        QCoreApplication::sendEvent(dock, &event);
    };
    const auto leave = [dock] {
        QEvent event(QEvent::Leave);
        QCoreApplication::sendEvent(dock, &event);
    };
    const QPoint docked = dock->pos();
    leave();
    QCOMPARE(dock->pos(), docked);

    FindAction(*dock->titleBarWidget(), "Auto Hide")->trigger();
    const int x = dock->x();
    const int y = dock->y();
    leave();
    QCOMPARE(dock->pos(), QPoint(x - dock->width() + 3, y));
    enter();
    QCOMPARE(dock->pos(), QPoint(x - 3, y));
    dock->LocationChanged(Qt::RightDockWidgetArea);
    leave();
    QCOMPARE(dock->pos(), QPoint(x + dock->width() - 3, y));
    enter();
    QCOMPARE(dock->pos(), QPoint(x + 3, y));
    dock->LocationChanged(Qt::TopDockWidgetArea);
    leave();
    QCOMPARE(dock->pos(), QPoint(x + 3, y));
}

void TestWidgets::ComboFitsItsChild()
{
    customComboBox::CustomComboBox box;
    auto* child = new QWidget;
    box.SetChildWidget(child);
    box.resize(120, 25);
    box.grab();
    QCOMPARE(child->size(), QSize(100, 25));
    box.resize(10, 25);
    box.grab();
    QCOMPARE(child->width(), 0);
}

QTEST_MAIN(TestWidgets)
#include "TestWidgets.moc"
