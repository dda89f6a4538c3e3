// SPDX-License-Identifier: MIT
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
    void TheLineIsShownAndSet()
    {
        auto* port = new QSerialPort;
        port->setStopBits(QSerialPort::TwoStop);
        port->setFlowControl(QSerialPort::SoftwareControl);
        port->setParity(QSerialPort::EvenParity);
        SerialSetting dialog(port);
        QSignalSpy closed(&dialog, &SerialSetting::CloseSignal);
        const QStringList names = {"dataBits", "stopBits", "parity", "flowControl"};
        // What the boxes show at an opening, which leaves by a button with other choices.
        const auto open = [&](const QStringList& choices, const char* button) {
            dialog.show();
            QStringList shown;
            for (int i = 0; i < 4; ++i) {
                auto* box = dialog.findChild<QComboBox*>(names[i]);
                shown.append(box->currentText());
                box->setCurrentText(choices.value(i, box->currentText()));
            }
            dialog.findChild<QPushButton*>(button)->click();
            return shown.join(' ');
        };
        const auto line = [&] {
            return QList<int>{port->dataBits(), port->stopBits(), port->parity(), port->flowControl()};
        };
        QCOMPARE(open({}, "ok"), QString("8 2 Even Software"));
        QCOMPARE(line(), (QList<int>{8, 2, 2, 2}));
        open({"7", "1.5", "Mark", "Hardware"}, "ok");
        QCOMPARE(line(), (QList<int>{7, 3, 5, 1}));
        QCOMPARE(open({"5", "1", "None", "None"}, "cancel"), QString("7 1.5 Mark Hardware"));
        port->setParity(QSerialPort::SpaceParity);
        QCOMPARE(open({}, "cancel"), QString("7 1.5 Space Hardware"));
        QCOMPARE(line(), (QList<int>{7, 3, 4, 1}));
        QCOMPARE(closed.count(), 4);
        delete port;
        open({}, "ok");
        QVERIFY(!dialog.isVisible());
    }

    void ARateIsTyped()
    {
        const QList<QPair<QString, QString>> rows = {{"921600", "921600"},
                                                     {"24000000", "24000000"},
                                                     {"24000001", "2400000"},
                                                     {"99999999", "9999999"},
                                                     {"0", ""},
                                                     {"00960", "960"},
                                                     {"-9a6 0+0,.0", "96000"},
                                                     {"240000000000000000000", "24000000"}};
        CustomBaudRateWin dialog;
        QCOMPARE(dialog.windowTitle(), QString("Custom BaudRate"));
        auto* edit = dialog.findChild<QLineEdit*>();
        QSignalSpy added(&dialog, &CustomBaudRateWin::addCustomBaudRate);
        const auto leave = [&](int way) {
            way < 2 ? dialog.findChild<QPushButton*>(way == 0 ? "ok" : "cancel")->click()
                    : QTest::keyClick(edit, way == 2 ? Qt::Key_Return : Qt::Key_Enter);
        };
        for (const auto& row : rows) {
            for (const int way : {0, 1, 2, 3}) {
                dialog.show();
                edit->clear();
                QTest::keyClicks(edit, row.first);
                QCOMPARE(edit->text(), row.second);
                added.clear();
                leave(way);
                QVERIFY(!dialog.isVisible());
                QCOMPARE(added.count(), row.second.isEmpty() || way == 1 ? 0 : 1);
                QCOMPARE(added.value(0).value(0).toString(), added.isEmpty() ? QString() : row.second);
            }
        }
        // What is pasted is held to the bound as well.
        edit->clear();
        QGuiApplication::clipboard()->setText("24000001");
        edit->paste();
        QCOMPARE(edit->text(), QString());
    }
};

QTEST_MAIN(TestSerialDialogs)
#include "tst_serialdialogs.moc"
