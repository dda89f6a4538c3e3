// SPDX-License-Identifier: MIT
#include "LogCatcher.h"
#include "WindowTest.h"

#include "bridge/RecordTarget.h"
#include "protocol/Records.h"
#include "window/ViewTable.h"

#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QToolBar>
#include <QTranslator>
#include <QTreeWidgetItemIterator>

namespace {

/// The label of each view and its class.
const QStringList viewTable = {"NMEA视图",       "NMEAViewWin",        "十六进制视图", "HexViewWin",
                               "定位轨迹视图",   "PositioningViewWin", "信号强度视图", "Cn0ViewWin",
                               "定位数据视图",   "DataViewWin",        "消息数据视图", "MessageViewWin",
                               "航向方位视图",   "CompassViewWin",     "卫星分布视图", "SatellitesPosViewWin",
                               "数据传输视图",   "PackageViewWin",     "命令配置视图", "CmdConfig",
                               "自定义命令视图", "ConfigViewWin",      "性能测试视图", "KpiViewWin"};

const QStringList defaultViews = {"NMEAViewWin", "CmdConfig", "PositioningViewWin", "Cn0ViewWin"};

QByteArray Sentences(const QByteArray& text)
{
    protocol::NmeaText record = {};
    memcpy(record.slot[0], text.constData(), static_cast<size_t>(text.size()));
    record.count = 1;
    return QByteArray(reinterpret_cast<const char*>(&record), sizeof(record));
}

void DeleteLater()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// The windows beside the main one.
QWidgetList Tools(const char* className)
{
    QWidgetList tools = QApplication::topLevelWidgets();
    const auto other = [className](const QWidget* widget) { return !widget->inherits(className); };
    tools.erase(std::remove_if(tools.begin(), tools.end(), other), tools.end());
    return tools;
}

} // namespace

/// A host's parent widget.
class NotifyingParent : public QWidget {
    Q_OBJECT

Q_SIGNALS:
    void NotifyPluginConnectSignal(bool connected);
};

class TestWindowWorkspace : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void FourViewsAreTiledThenTileAndCascadeTakeTurns()
    {
        const WindowTest test;
        QCOMPARE(test.Views(), defaultViews);
        test.window->resize(1200, 800);
        test.window->show();
        QVERIFY(QTest::qWaitForWindowExposed(test.window.get()));
        QCoreApplication::processEvents();
        // The construction has tiled, so the first click cascades.
        for (const bool tiled : {true, false, true, false}) {
            QRegion covered;
            for (const QMdiSubWindow* subWindow : test.Area()->subWindowList()) {
                QVERIFY(!subWindow->isMaximized());
                QVERIFY(!tiled || (subWindow->width() > 300 && subWindow->height() > 200));
                QVERIFY(covered.isEmpty() || covered.intersects(subWindow->geometry()) == !tiled);
                covered += subWindow->geometry();
            }
            test.Button("平铺")->click();
        }
    }

    void WithoutACodecAndATreeFileTheWindowWorks()
    {
        WindowTest test;
        test.window.reset();
        FakeCodec::Remove();
        QVERIFY(QFile::remove(test.trees + "/GnssTree.xml"));
        const LogCatcher log;
        test.Reopen();
        QVERIFY(log.Lines().contains("Load Gnss Dll fail!"));
        QVERIFY(log.Lines().filter("GnssUtils.dll version is:").isEmpty());
        QVERIFY(test.Status().isEmpty());
        QCOMPARE(test.window->findChild<QTreeWidget*>()->topLevelItemCount(), 0);
        QCOMPARE(test.Views(), defaultViews);
    }

    /// A view whose label stands in no tree, or whose translation is not the English tree's, could never be
    /// opened.
    void EveryViewStandsInBothTrees()
    {
        QTranslator english;
        QVERIFY(english.load(QStringLiteral(GNSS_BUILD_BIN "/translations/gnss_en.qm")));
        const QByteArray chineseTree = Content(QStringLiteral(GNSS_SOURCE_DIR "/host/config/GnssTree.xml"));
        const QByteArray englishTree = Content(QStringLiteral(GNSS_SOURCE_DIR "/host/config/GnssTree_en.xml"));
        for (const ViewEntry& entry : WorkbenchViews()) {
            QVERIFY2(chineseTree.contains('<' + QByteArray(entry.label) + "/>"), entry.label);
            const QString label = english.translate("GnssWindow", entry.label);
            QVERIFY2(!label.isEmpty() && englishTree.contains('<' + label.toUtf8() + "/>"), entry.label);
        }
    }

    void EveryLabelOpensItsViewOnceAndNoOtherItemDoes()
    {
        const WindowTest test;
        QStringList labels;
        for (const ViewEntry& entry : WorkbenchViews()) {
            labels.append(entry.label);
        }
        test.window->show();
        auto* tree = test.window->findChild<QTreeWidget*>();
        new QTreeWidgetItem(tree->topLevelItem(0), {"attribute"});
        for (QTreeWidgetItemIterator it(tree); *it != nullptr; ++it) {
            if (!labels.contains((*it)->text(0))) {
                test.window->SlotCtrlPanelItemClicked(*it, 0);
            }
        }
        QCOMPARE(test.Views(), defaultViews);
        for (int i = 0; i < 2 * viewTable.size(); i += 2) {
            const int at = i % viewTable.size();
            QVERIFY2(test.TreeItem(viewTable[at]) != nullptr, qPrintable(viewTable[at]));
            test.Click(viewTable[at]);
            QCOMPARE(test.Area()->currentSubWindow(), test.SubWindow(qPrintable(viewTable[at + 1])));
        }
        QCOMPARE(test.Views().size(), viewTable.size() / 2);
        QVERIFY(!test.SubWindow("HexViewWin")->windowIcon().isNull());

        // A cascade leaves no view but its title bar, and twelve tiles ask for no more room than there is.
        test.window->resize(800, 600);
        test.window->SlotTileWindows();
        for (const QMdiSubWindow* subWindow : test.Area()->subWindowList()) {
            QVERIFY2(subWindow->height() > 100, subWindow->widget()->metaObject()->className());
        }
        test.window->SlotTileWindows();
        QCOMPARE(test.window->size(), QSize(800, 600));

        // Records that lie harm no one; what the views do with theirs is tested with them.
        for (const quint32 type : {400, 501, 600, 601, 701}) {
            FakeCodec::Emit(type, nullptr, 100);
            FakeCodec::Emit(type, "\xff", -1);
            FakeCodec::Emit(type, "\xff", 1);
        }
        QVERIFY(Global::ackState == 4 && test.Views().size() == viewTable.size() / 2);
        QFile::remove(test.application + "/HisInfo/HisInfo.bin");
    }

    void AClosedViewDropsItsRecordsAndOpensAfresh()
    {
        const WindowTest test;
        const auto text = [&test] {
            return test.SubWindow("NMEAViewWin")->findChild<QPlainTextEdit*>()->toPlainText();
        };
        FakeCodec::Emit(0, Sentences("$GPGGA,1*00\r\n"));
        QCOMPARE(text(), QStringLiteral("$GPGGA,1*00"));
        const QPointer<QWidget> old = test.SubWindow("NMEAViewWin")->widget();
        test.SubWindow("NMEAViewWin")->close();
        // The view is not deleted yet, but nothing reaches it any more.
        FakeCodec::Emit(0, Sentences("$GPGGA,2*00\r\n"));
        DeleteLater();
        QVERIFY(old.isNull());
        FakeCodec::Emit(0, Sentences("$GPGGA,3*00\r\n"));
        test.Click("NMEA视图");
        FakeCodec::Emit(0, Sentences("$GPGGA,4*00\r\n"));
        QCOMPARE(text(), QStringLiteral("$GPGGA,4*00"));
    }

    void CloseAllClosesAll()
    {
        const WindowTest test;
        for (const char* label : {"十六进制视图", "NMEA视图", "十六进制视图"}) {
            test.Click(label);
        }
        // Every sub-window has got the entry once.
        for (QMdiSubWindow* subWindow : test.Area()->subWindowList()) {
            const QList<QAction*> actions = subWindow->systemMenu()->actions();
            QCOMPARE(actions.last()->text(), QStringLiteral("Close All"));
            QVERIFY(actions.at(actions.size() - 2)->text() != "Close All");
        }
        test.SubWindow("HexViewWin")->systemMenu()->actions().last()->trigger();
        for (int i = 0; i < 2; ++i) {
            FakeCodec::Emit(0, Sentences("$GPGGA,1*00\r\n"));
            DeleteLater();
            QVERIFY(test.Views().isEmpty());
        }
        test.Click("NMEA视图");
        QCOMPARE(test.Views(), QStringList{"NMEAViewWin"});
    }

    void TheToolBarAndTheCodecGoByTheProduct()
    {
        const QString head =
            "选择串口号,选择波特率,串口设置,|,选择回放速度,(暂停/继续),|,平铺,保存数据路径,启动定位,";
        const QString assist = "在线辅助定位,离线辅助定位,固件加载,历史信息,";
        const QMap<int, QString> bars = {{0, head + assist + "产品测试,|,常用工具"},
                                         {27, head + "历史信息,场景库回放,常用工具"},
                                         {31, head + assist + "场景库回放,产品测试,|,常用工具"}};
        for (const int product : bars.keys()) {
            const LogCatcher log;
            const WindowTest test(product);
            auto* bar = test.window->findChild<QToolBar*>();
            QCOMPARE(bar->iconSize(), QSize(18, 18));
            QStringList found;
            for (QAction* action : bar->actions()) {
                const QString toolTip = action->isSeparator() ? "|" : bar->widgetForAction(action)->toolTip();
                if (!toolTip.isEmpty()) {
                    found.append(action->isVisible() ? toolTip : '(' + toolTip + ')');
                }
            }
            QCOMPARE(found.join(','), bars[product]);
            const QStringList calls = FakeCodec::Calls();
            QCOMPARE(calls.first(), QStringLiteral("InitGnssUtils 0"));
            QCOMPARE(calls.filter("RegGnssCallbacks").size(), 15);
            QCOMPARE(calls.last(), QStringLiteral("SetChipType %1").arg(product));
            QCOMPARE(log.Lines().count("GnssUtils.dll version is: 4711"), 1);
        }
    }

    void TheLanguageChoosesTheTree()
    {
        for (const int language : {1, 7}) {
            const LogCatcher log;
            const WindowTest test(0, language);
            QVERIFY(test.TreeItem(language == 1 ? "NMEAView" : "NMEA视图") != nullptr);
            QCOMPARE(log.Lines().count("Global::language has error setting, it is: 7"), language == 1 ? 0 : 1);
        }
    }

    void ToolWindowsChangeTheirPicture()
    {
        const QList<QPair<const char*, const char*>> tools = {{"串口设置", "SerialSetting"},
                                                              {"在线辅助定位", "AssistOnline"},
                                                              {"离线辅助定位", "AssistOffline"},
                                                              {"固件加载", "VersionLoad"},
                                                              {"历史信息", "HisInfoInject"}};
        const WindowTest test;
        const QString block = test.application + "/HisInfo/HisInfo.bin";
        QFile::remove(block);
        for (const auto& row : tools) {
            QWidget* tool = Tools(row.second).value(0);
            const auto picture = [&] { return test.Button(row.first)->icon().pixmap(18).toImage(); };
            if (tool == nullptr) {
                QFAIL("no such tool window");
            }
            QVERIFY(!tool->isVisible());
            const QImage idle = picture();
            // Twice: a closed tool window is not gone.
            for (int i = 0; i < 2; ++i) {
                test.Button(row.first)->click();
                QVERIFY(tool->isVisible());
                QVERIFY(picture() != idle);
                tool->close();
                QVERIFY(!tool->isVisible() && picture() == idle);
            }
        }
        // The last one tells whether there is a block.
        QCOMPARE(test.Status().last(), QStringLiteral("暂无历史数据，请先保存"));
        FakeCodec::Emit(701, "block");
        test.Button("历史信息")->click();
        QCOMPARE(test.Status().last(), QStringLiteral("已有历史数据文件，可直接注入"));
        QCOMPARE(Content(block), QByteArray("block"));
        QFile::remove(block);
    }

    void ProductionWindowsCountUpAreToldAndGoOneByOne()
    {
        WindowTest test;
        const auto windows = [](const QString& closed = QString()) {
            QStringList titles;
            for (QWidget* widget : Tools("ProductTest")) {
                widget->windowTitle() == closed ? void(widget->close()) : titles.append(widget->windowTitle());
            }
            DeleteLater();
            titles.sort();
            return titles.join(',');
        };
        const qint64 idle = test.Button("产品测试")->icon().cacheKey();
        auto* log = test.window->findChild<QTextEdit*>();
        const QRegularExpression withTime("^\\[\\d\\d:\\d\\d:\\d\\d\\] 打开第1个产测视图$");
        test.Button("产品测试")->click();
        QVERIFY2(withTime.match(log->toPlainText()).hasMatch(), qPrintable(log->toPlainText()));
        test.window->SlotClearTextEdit();
        test.window->SlotAddTimestamp();
        test.Button("产品测试")->click();
        QCOMPARE(log->toPlainText(), QStringLiteral("打开第2个产测视图"));
        test.window->SlotAddTimestamp();
        QVERIFY(Global::showTimestamp);
        QVERIFY(test.Button("产品测试")->icon().cacheKey() != idle);
        QCOMPARE(windows(), QStringLiteral("产测视图1,产测视图2"));
        windows("产测视图1");
        test.window->ShowProductTestWin();
        QCOMPARE(windows(), QStringLiteral("产测视图2,产测视图3"));
        test.window.reset();
        QCOMPARE(windows(), QString());
    }

    void AParentKeepsTheWindowInsideAndIsToldOfItsEnd()
    {
        WindowTest test;
        test.window.reset();
        NotifyingParent parent;
        auto* window = new GnssWindow("Gnss", 0, &parent);
        QSignalSpy closed(window, &GnssWindow::closeGnssSignal);
        QVERIFY(!window->isWindow());
        QCOMPARE(window->windowTitle(), QStringLiteral("Gnss"));
        QVERIFY(!Global::pluginConnected);
        emit parent.NotifyPluginConnectSignal(true);
        QVERIFY(Global::pluginConnected);
        Global::positioningStarted = true;
        delete window;
        QCOMPARE(closed.size(), 1);
        QVERIFY(!Global::positioningStarted);
    }
};

QTEST_MAIN(TestWindowWorkspace)
#include "tst_workspace.moc"
