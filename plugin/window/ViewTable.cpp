// SPDX-License-Identifier: MIT
#include "window/ViewTable.h"

#include "commands/CmdConfig.h"
#include "commands/ConfigViewWin.h"
#include "performance/KpiViewWin.h"
#include "views/CompassViewWin.h"
#include "views/DataViewWin.h"
#include "views/PackageViewWin.h"
#include "views/log/HexViewWin.h"
#include "views/log/NMEAViewWin.h"
#include "views/message/MessageViewWin.h"
#include "views/signal/Cn0ViewWin.h"
#include "views/sky/SatellitesPosViewWin.h"
#include "views/track/PositioningViewWin.h"
#include "window/ViewEntryOf.h"

using namespace protocol;

namespace {

QWidget* MakeConfigView(ViewHost& host, QWidget* parent)
{
    QWidget* view = MakeView<ConfigViewWin>(host, parent);
    // The view has no such signal; the connection is asked for all the same and fails with Qt's warning.
    QObject::connect(view, SIGNAL(ChangeStartFlagSignal()), parent, SLOT(SlotChangeSwitchImage()));
    return view;
}

constexpr ViewEntry kViews[] = {
    ShowsRecord<NMEAViewWin, CB_NMEA>(QT_TRANSLATE_NOOP("GnssWindow", "NMEA视图"), "NmeaView.png"),
    WithoutRecord<HexViewWin>(QT_TRANSLATE_NOOP("GnssWindow", "十六进制视图"), "HexView.png"),
    ShowsRecord<PositioningViewWin, CB_POSITION>(QT_TRANSLATE_NOOP("GnssWindow", "定位轨迹视图"),
                                                 "Positioning.png"),
    ShowsRecord<Cn0ViewWin, CB_CN0>(QT_TRANSLATE_NOOP("GnssWindow", "信号强度视图"), "Cn0 View.png"),
    ShowsRecord<DataViewWin, CB_DATA>(QT_TRANSLATE_NOOP("GnssWindow", "定位数据视图"), "Data.png"),
    ShowsRecord<MessageViewWin, CB_MESSAGE>(QT_TRANSLATE_NOOP("GnssWindow", "消息数据视图"), "MessageView.png"),
    ShowsRecord<CompassViewWin, CB_COMPASS>(QT_TRANSLATE_NOOP("GnssWindow", "航向方位视图"), "CompassView.png"),
    ShowsRecord<SatellitesPosViewWin, CB_SAT_POS>(QT_TRANSLATE_NOOP("GnssWindow", "卫星分布视图"),
                                                  "SatPosView.png"),
    ShowsRecord<PackageViewWin, CB_PACKAGE>(QT_TRANSLATE_NOOP("GnssWindow", "数据传输视图"), "PackageView.png"),
    WithoutRecord<CmdConfig>(QT_TRANSLATE_NOOP("GnssWindow", "命令配置视图"), "CmdcfgView.png"),
    {QT_TRANSLATE_NOOP("GnssWindow", "自定义命令视图"), "CustomerView.png", MakeConfigView, {}},
    {QT_TRANSLATE_NOOP("GnssWindow", "性能测试视图"),
     "TestView.png",
     MakeView<KpiViewWin>,
     {Record<CB_KPI_POSITION, &KpiViewWin::OnKpiFix>(), Record<CB_KPI_SATELLITE, &KpiViewWin::OnKpiCn0>()}},
};

} // namespace

const char* const kDefaultViewLabels[] = {"NMEA视图", "命令配置视图", "定位轨迹视图", "信号强度视图", nullptr};

ViewEntries WorkbenchViews()
{
    return {kViews, static_cast<int>(sizeof(kViews) / sizeof(kViews[0]))};
}
