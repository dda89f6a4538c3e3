#include "LogCatcher.h"
#include "WindowTest.h"

#include "codec/RecordTarget.h"
#include "codec/Records.h"

#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QToolBar>

namespace {

const QList<QPair<const char*, const char*>> viewTable = {{"NMEA视图", "NMEAViewWin"},
                                                          {"十六进制视图", "HexViewWin"},
                                                          {"定位轨迹视图", "PositioningViewWin"},
                                                          {"信号强度视图", "Cn0ViewWin"},
                                                          {"定位数据视图", "DataViewWin"},
                                                          {"消息数据视图", "MessageViewWin"},
                                                          {"航向方位视图", "CompassViewWin"},
                                                          {"卫星分布视图", "SatellitesPosViewWin"},
                                                          {"数据传输视图", "PackageViewWin"},
                                                          {"命令配置视图", "CmdConfig"},
                                                          {"自定义命令视图", "ConfigViewWin"},
                                                          {"性能测试视图", "KpiViewWin"}};

const QStringList defaultViews = {"NMEAViewWin", "CmdConfig", "PositioningViewWin", "Cn0ViewWin"};

QByteArray Sentences(const QByteArray& text)
{
    gnss::NmeaText record = {};
    memcpy(record.slot[0], text.constData(), static_cast<size_t>(text.size()));
    record.count = 1;
    return QByteArray(reinterpret_cast<const char*>(&record), sizeof(record));
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
    void FourViewsOpenAndAreTiled()
    {
        WindowTest test;
        QCOMPARE(test.Views(), defaultViews);
        test.window->resize(1200, 800);
        test.window->show();
        QVERIFY(QTest::qWaitForWindowExposed(test.window.get()));
        QCoreApplication::processEvents();
        // Tiled: none maximised, all of a sensible size, none over another.
        QRegion covered;
        const QList<QMdiSubWindow*> subWindows = test.Area()->subWindowList();
        for (const QMdiSubWindow* subWindow : subWindows) {
            QVERIFY(!subWindow->isMaximized());
            QVERIFY2(subWindow->width() > 300 && subWindow->height() > 200,
                     subWindow->widget()->metaObject()->className());
            QVERIFY(!covered.intersects(subWindow->geometry()));
            covered += subWindow->geometry();
        }
    }

    void CodecIsSetUpInOrder()
    {
        const LogCatcher log;
        WindowTest test(27);
        QVERIFY(log.Lines().contains("GnssUtils.dll version is: 4711"));
        const QStringList calls = FakeCodec::Calls();
        QCOMPARE(calls.first(), QStringLiteral("InitGnssUtils 0"));
        QCOMPARE(calls.filter("RegGnssCallbacks").size(), 15);
        QCOMPARE(calls.last(), QStringLiteral("SetChipType 27"));
    }

    void WithoutACodecTheWindowWorks()
    {
        WindowTest first;
        first.window.reset();
        FakeCodec::Remove();
        const LogCatcher log;
        const GnssWindow window("Gnss", 0, nullptr);
        QVERIFY(log.Lines().contains("Load Gnss Dll fail!"));
        QVERIFY(log.Lines().filter("GnssUtils.dll version is:").isEmpty());
        QVERIFY(window.findChild<QTextEdit*>()->toPlainText().isEmpty());
        QCOMPARE(qobject_cast<QMdiArea*>(window.centralWidget())->subWindowList().size(), 4);
    }

    void WithoutATreeFileTheDefaultViewsOpen()
    {
        WindowTest first;
        first.window.reset();
        QVERIFY(QFile::remove(QCoreApplication::applicationDirPath() + "/Source-Datas/config/1/GnssTree.xml"));
        const GnssWindow window("Gnss", 0, nullptr);
        QCOMPARE(window.findChild<QTreeWidget*>()->topLevelItemCount(), 0);
        QCOMPARE(qobject_cast<QMdiArea*>(window.centralWidget())->subWindowList().size(), 4);
    }

    void EveryLabelOpensItsViewOnce()
    {
        WindowTest test;
        test.window->show();
        for (const auto& row : viewTable) {
            QVERIFY2(test.TreeItem(row.first) != nullptr, row.first);
            test.Click(row.first);
            QCOMPARE(test.Area()->currentSubWindow(), test.SubWindow(row.second));
        }
        QCOMPARE(test.Views().size(), viewTable.size());
        QVERIFY(!test.SubWindow("HexViewWin")->windowIcon().isNull());
        test.Click("NMEA视图");
        QCOMPARE(test.Views().size(), viewTable.size());
        QCOMPARE(test.Area()->currentSubWindow(), test.SubWindow("NMEAViewWin"));
    }

    void GroupsAndAttributeLeavesOpenNothing()
    {
        WindowTest test;
        auto* tree = test.window->findChild<QTreeWidget*>();
        for (QTreeWidgetItemIterator it(tree); *it != nullptr; ++it) {
            if ((*it)->childCount() > 0) {
                test.window->SlotCtrlPanelItemClicked(*it, 0);
            }
        }
        auto* leaf = new QTreeWidgetItem(tree->topLevelItem(0), {"attribute"});
        test.window->SlotCtrlPanelItemClicked(leaf, 0);
        QCOMPARE(test.Views(), defaultViews);
    }

    void AClosedViewDropsItsRecordsAndOpensAfresh()
    {
        WindowTest test;
        FakeCodec::Emit(0, Sentences("$GPGGA,1*00\r\n"));
        auto text = [&test] { return test.SubWindow("NMEAViewWin")->findChild<QPlainTextEdit*>()->toPlainText(); };
        QCOMPARE(text(), QStringLiteral("$GPGGA,1*00"));
        QPointer<QWidget> old = test.SubWindow("NMEAViewWin")->widget();
        test.SubWindow("NMEAViewWin")->close();
        // The view is not deleted yet, but nothing reaches it any more.
        FakeCodec::Emit(0, Sentences("$GPGGA,2*00\r\n"));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(old.isNull());
        FakeCodec::Emit(0, Sentences("$GPGGA,3*00\r\n"));
        test.Click("NMEA视图");
        FakeCodec::Emit(0, Sentences("$GPGGA,4*00\r\n"));
        QCOMPARE(text(), QStringLiteral("$GPGGA,4*00"));
    }

    void LyingRecordsReachNoOneHarmfully()
    {
        WindowTest test;
        for (const auto& row : viewTable) {
            test.Click(row.first);
        }
        for (const quint32 type :
             {0U, 3U, 100U, 101U, 102U, 103U, 200U, 300U, 400U, 500U, 501U, 600U, 601U, 700U, 701U}) {
            FakeCodec::Emit(type, nullptr, 0);
            FakeCodec::Emit(type, nullptr, 100);
            FakeCodec::Emit(type, "\xff", -1);
            // One byte that counts 255 entries.
            const std::unique_ptr<char[]> byte(new char[1]{'\xff'});
            FakeCodec::Emit(type, byte.get(), 1);
            const std::unique_ptr<char[]> five(new char[5]{'\xff', '\xff', '\xff', '\xff', '\xff'});
            FakeCodec::Emit(type, five.get(), 5);
        }
        QCOMPARE(test.Views().size(), viewTable.size());
    }

    void CloseAllClosesAll()
    {
        WindowTest test;
        test.Click("十六进制视图");
        // Every sub-window has got the entry once, the hex view and the default ones.
        for (const char* view : {"NMEAViewWin", "CmdConfig", "PositioningViewWin", "Cn0ViewWin", "HexViewWin"}) {
            int entries = 0;
            const QList<QAction*> actions = test.SubWindow(view)->systemMenu()->actions();
            for (const QAction* action : actions) {
                entries += action->text() == "Close All" ? 1 : 0;
            }
            QCOMPARE(entries, 1);
        }
        test.SubWindow("HexViewWin")->systemMenu()->actions().last()->trigger();
        FakeCodec::Emit(0, Sentences("$GPGGA,1*00\r\n"));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(test.Views().isEmpty());
        FakeCodec::Emit(0, Sentences("$GPGGA,1*00\r\n"));
        FakeCodec::Emit(100, QByteArray(9, 'G'));
        test.Click("NMEA视图");
        QCOMPARE(test.Views(), QStringList{"NMEAViewWin"});
    }

    void TileAndCascadeTakeTurns()
    {
        WindowTest test;
        test.window->resize(1200, 800);
        test.window->show();
        QVERIFY(QTest::qWaitForWindowExposed(test.window.get()));
        QCoreApplication::processEvents();
        auto overlapping = [&test] {
            const QList<QMdiSubWindow*> all = test.Area()->subWindowList();
            return all.at(0)->geometry().intersects(all.at(1)->geometry());
        };
        QVERIFY(!overlapping());
        // The construction has tiled, so the first click cascades.
        test.Button("平铺")->click();
        QVERIFY(overlapping());
        test.Button("平铺")->click();
        QVERIFY(!overlapping());
        test.Button("平铺")->click();
        QVERIFY(overlapping());
    }

    void TheToolBarGoesByTheProduct_data()
    {
        QTest::addColumn<int>("product");
        QTest::addColumn<QStringList>("toolTips");
        const QStringList head = {"选择串口号",   "选择波特率",  "串口设置", "|",
                                  "选择回放速度", "(暂停/继续)", "|",        "平铺",
                                  "保存数据路径", "启动定位"};
        const QStringList assist = {"在线辅助定位", "离线辅助定位", "固件加载"};
        QTest::newRow("default") << 0 << head + assist + QStringList{"历史信息", "产品测试", "|", "常用工具"};
        QTest::newRow("27") << 27 << head + QStringList{"历史信息", "场景库回放", "常用工具"};
        QTest::newRow("31") << 31
                            << head + assist + QStringList{"历史信息", "场景库回放", "产品测试", "|", "常用工具"};
    }

    void TheToolBarGoesByTheProduct()
    {
        QFETCH(int, product);
        QFETCH(QStringList, toolTips);
        WindowTest test(product);
        auto* bar = test.window->findChild<QToolBar*>();
        QCOMPARE(bar->iconSize(), QSize(18, 18));
        QStringList found;
        const QList<QAction*> actions = bar->actions();
        for (QAction* action : actions) {
            if (action->isSeparator()) {
                found.append("|");
                continue;
            }
            const QString toolTip = bar->widgetForAction(action)->toolTip();
            if (!toolTip.isEmpty()) {
                found.append(action->isVisible() ? toolTip : '(' + toolTip + ')');
            }
        }
        QCOMPARE(found, toolTips);
    }

    void LanguageChoosesTheTree()
    {
        {
            const LogCatcher log;
            WindowTest test(0, 1);
            QVERIFY(test.TreeItem("NMEAView") != nullptr);
            QCOMPARE(Global::language, 1);
            QVERIFY(log.Lines().filter("language has error").isEmpty());
        }
        const LogCatcher log;
        WindowTest test(0, 7);
        QVERIFY(test.TreeItem("NMEA视图") != nullptr);
        QVERIFY(log.Lines().contains("Global::language has error setting, it is: 7"));
    }

    void TimeButtonAndClearingOfTheLog()
    {
        WindowTest test;
        test.Button("产品测试")->click();
        QCOMPARE(test.Status(), QStringList{"打开第1个产测视图"});
        auto* log = test.window->findChild<QTextEdit*>();
        QVERIFY(log->toPlainText().startsWith('['));
        test.window->SlotClearTextEdit();
        test.window->SlotAddTimestamp();
        QVERIFY(!Global::showTimestamp);
        test.Button("产品测试")->click();
        QCOMPARE(log->toPlainText(), QStringLiteral("打开第2个产测视图"));
        test.window->SlotAddTimestamp();
        QVERIFY(Global::showTimestamp);
    }

    void ToolWindowsChangeTheirPicture_data()
    {
        QTest::addColumn<QString>("toolTip");
        QTest::addColumn<QByteArray>("className");
        QTest::newRow("serial settings") << "串口设置" << QByteArray("SerialSetting");
        QTest::newRow("online") << "在线辅助定位" << QByteArray("AssistOnline");
        QTest::newRow("offline") << "离线辅助定位" << QByteArray("AssistOffline");
        QTest::newRow("firmware") << "固件加载" << QByteArray("VersionLoad");
        QTest::newRow("history") << "历史信息" << QByteArray("HisInfoInject");
    }

    void ToolWindowsChangeTheirPicture()
    {
        QFETCH(QString, toolTip);
        QFETCH(QByteArray, className);
        WindowTest test;
        QWidget* tool = nullptr;
        const QWidgetList widgets = QApplication::topLevelWidgets();
        for (QWidget* widget : widgets) {
            tool = widget->inherits(className.constData()) ? widget : tool;
        }
        QVERIFY(tool != nullptr && !tool->isVisible());
        auto picture = [&] { return test.Button(toolTip)->icon().pixmap(18).toImage(); };
        const QImage idle = picture();
        // Twice: a closed tool window is not gone.
        for (int i = 0; i < 2; ++i) {
            test.Button(toolTip)->click();
            QVERIFY(tool->isVisible());
            QVERIFY(picture() != idle);
            tool->close();
            QVERIFY(!tool->isVisible());
            QVERIFY(picture() == idle);
        }
    }

    void TheHistoryButtonTellsWhetherThereIsABlock()
    {
        WindowTest test;
        const QString path = QCoreApplication::applicationDirPath() + "/HisInfo/HisInfo.bin";
        QFile::remove(path);
        test.window->ShowHisInfoInjectWin();
        QCOMPARE(test.Status().last(), QStringLiteral("暂无历史数据，请先保存"));
        FakeCodec::Emit(701, "block");
        QCOMPARE(test.Content(path), QByteArray("block"));
        test.window->ShowHisInfoInjectWin();
        QCOMPARE(test.Status().last(), QStringLiteral("已有历史数据文件，可直接注入"));
        QFile::remove(path);
    }

    void ProductionWindowsCountUpAndGoOneByOne()
    {
        WindowTest test;
        auto windows = [] {
            QStringList titles;
            const QWidgetList widgets = QApplication::topLevelWidgets();
            for (const QWidget* widget : widgets) {
                if (widget->inherits("ProductTest")) {
                    titles.append(widget->windowTitle());
                }
            }
            titles.sort();
            return titles;
        };
        auto close = [](const QString& title) {
            const QWidgetList widgets = QApplication::topLevelWidgets();
            for (QWidget* widget : widgets) {
                if (widget->windowTitle() == title) {
                    widget->close();
                }
            }
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        };
        const qint64 idle = test.Button("产品测试")->icon().cacheKey();
        test.window->ShowProductTestWin();
        test.window->ShowProductTestWin();
        QVERIFY(test.Button("产品测试")->icon().cacheKey() != idle);
        QCOMPARE(windows(), (QStringList{"产测视图1", "产测视图2"}));
        close("产测视图1");
        QCOMPARE(windows(), QStringList{"产测视图2"});
        test.window->ShowProductTestWin();
        QCOMPARE(windows(), (QStringList{"产测视图2", "产测视图3"}));
        test.window.reset();
        QVERIFY(windows().isEmpty());
    }

    void TheEndIsTold()
    {
        WindowTest test;
        QSignalSpy closed(test.window.get(), &GnssWindow::closeGnssSignal);
        Global::positioningStarted = true;
        test.window.reset();
        QCOMPARE(closed.size(), 1);
        QVERIFY(!Global::positioningStarted);
    }

    void AParentKeepsTheWindowInsideAndTellsOfItsLink()
    {
        WindowTest first;
        first.window.reset();
        NotifyingParent parent;
        auto* window = new GnssWindow("Gnss", 0, &parent);
        QVERIFY(!window->isWindow());
        QCOMPARE(window->windowTitle(), QStringLiteral("Gnss"));
        QVERIFY(!Global::pluginConnected);
        emit parent.NotifyPluginConnectSignal(true);
        QVERIFY(Global::pluginConnected);
    }
};

QTEST_MAIN(TestWindowWorkspace)
#include "tst_window_workspace.moc"
