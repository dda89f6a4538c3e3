#include "widgets/CustomBaudRateWin.h"
#include "widgets/SerialSetting.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QSerialPort>
#include <QSignalSpy>
#include <QTest>

class TestSerialDialogs : public QObject {
    Q_OBJECT

private slots:
    void ShowsAndSetsTheLine();
    void UntouchedOkChangesNothing();
    void EveryWayOutTellsOnce();
    void OutlivesThePort();
    void TypesARate_data();
    void TypesARate();
    void ReturnAndButtonsClose();
};

void TestSerialDialogs::ShowsAndSetsTheLine()
{
    QSerialPort port;
    SerialSetting dialog(&port);
    const auto box = [&dialog](const char* name) { return dialog.findChild<QComboBox*>(name); };
    dialog.show();
    QCOMPARE(box("dataBits")->currentText(), QString("8"));
    QCOMPARE(box("stopBits")->currentText(), QString("1"));
    QCOMPARE(box("parity")->currentText(), QString("None"));
    QCOMPARE(box("flowControl")->currentText(), QString("None"));
    box("dataBits")->setCurrentText("7");
    box("stopBits")->setCurrentText("1.5");
    box("parity")->setCurrentText("Mark");
    box("flowControl")->setCurrentText("Hardware");
    dialog.SlotOkClick();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(port.dataBits(), QSerialPort::Data7);
    QCOMPARE(int(port.stopBits()), 3);
    QCOMPARE(port.parity(), QSerialPort::MarkParity);
    QCOMPARE(port.flowControl(), QSerialPort::HardwareControl);

    // What is chosen and cancelled is gone at the next opening.
    dialog.show();
    box("dataBits")->setCurrentText("5");
    dialog.SlotCancelClick();
    QCOMPARE(port.dataBits(), QSerialPort::Data7);
    port.setParity(QSerialPort::SpaceParity);
    dialog.show();
    QCOMPARE(box("dataBits")->currentText(), QString("7"));
    QCOMPARE(box("stopBits")->currentText(), QString("1.5"));
    QCOMPARE(box("parity")->currentText(), QString("Space"));
    QCOMPARE(box("flowControl")->currentText(), QString("Hardware"));
}

void TestSerialDialogs::UntouchedOkChangesNothing()
{
    QSerialPort port;
    port.setStopBits(QSerialPort::TwoStop);
    port.setFlowControl(QSerialPort::SoftwareControl);
    port.setParity(QSerialPort::EvenParity);
    SerialSetting dialog(&port);
    dialog.show();
    dialog.findChild<QPushButton*>("ok")->click();
    QCOMPARE(port.dataBits(), QSerialPort::Data8);
    QCOMPARE(port.stopBits(), QSerialPort::TwoStop);
    QCOMPARE(port.flowControl(), QSerialPort::SoftwareControl);
    QCOMPARE(port.parity(), QSerialPort::EvenParity);
}

void TestSerialDialogs::EveryWayOutTellsOnce()
{
    QSerialPort port;
    SerialSetting dialog(&port);
    QSignalSpy closed(&dialog, &SerialSetting::CloseSignal);
    dialog.show();
    dialog.findChild<QPushButton*>("ok")->click();
    QCOMPARE(closed.count(), 1);
    dialog.show();
    dialog.findChild<QPushButton*>("cancel")->click();
    QCOMPARE(closed.count(), 2);
    dialog.show();
    dialog.close();
    QCOMPARE(closed.count(), 3);
}

void TestSerialDialogs::OutlivesThePort()
{
    auto* port = new QSerialPort;
    SerialSetting dialog(port);
    delete port;
    dialog.show();
    dialog.SlotOkClick();
    QVERIFY(!dialog.isVisible());
}

void TestSerialDialogs::TypesARate_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");
    QTest::newRow("usual") << "921600"
                           << "921600";
    QTest::newRow("highest") << "24000000"
                             << "24000000";
    QTest::newRow("one above") << "24000001"
                               << "2400000";
    QTest::newRow("as many digits") << "99999999"
                                    << "9999999";
    QTest::newRow("more digits") << "240000000000000000000"
                                 << "24000000";
    QTest::newRow("zero") << "0"
                          << "";
    QTest::newRow("zeros first") << "00960"
                                 << "960";
    QTest::newRow("no digits") << "-9a6 0+0,.0"
                               << "96000";
}

void TestSerialDialogs::TypesARate()
{
    QFETCH(QString, typed);
    QFETCH(QString, text);
    CustomBaudRateWin dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    auto* edit = dialog.findChild<QLineEdit*>();
    QSignalSpy added(&dialog, &CustomBaudRateWin::addCustomBaudRate);
    QTest::keyClicks(edit, typed);
    QCOMPARE(edit->text(), text);
    dialog.findChild<QPushButton*>("ok")->click();
    QCOMPARE(added.count(), text.isEmpty() ? 0 : 1);
    if (!text.isEmpty())
        QCOMPARE(added[0][0].toString(), text);
    QVERIFY(!dialog.isVisible());
}

void TestSerialDialogs::ReturnAndButtonsClose()
{
    CustomBaudRateWin dialog;
    QCOMPARE(dialog.windowTitle(), QString("Custom BaudRate"));
    auto* edit = dialog.findChild<QLineEdit*>();
    QSignalSpy added(&dialog, &CustomBaudRateWin::addCustomBaudRate);
    dialog.show();
    QTest::keyClick(edit, Qt::Key_Return);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(added.count(), 0);

    dialog.show();
    QTest::keyClicks(edit, "460800");
    QTest::keyClick(edit, Qt::Key_Enter);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(added.count(), 1);

    dialog.show();
    dialog.findChild<QPushButton*>("cancel")->click();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(added.count(), 1);

    // What is pasted is held to the bound as well.
    edit->clear();
    QGuiApplication::clipboard()->setText("24000001");
    edit->paste();
    QCOMPARE(edit->text(), QString());
}

QTEST_MAIN(TestSerialDialogs)
#include "TestSerialDialogs.moc"
