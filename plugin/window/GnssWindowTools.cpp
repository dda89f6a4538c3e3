// SPDX-License-Identifier: MIT
#include "window/GnssWindow.h"

#include "base/StatusLog.h"
#include "production/ProductTest.h"
#include "widgets/SerialSetting.h"

#include "host/support/ImageManager.h"

#include <QFileInfo>
#include <QPushButton>

namespace {

/// Sets the picture of a tool window's button; the reduced tool bars lack some of them.
void ShowPicture(QPushButton* button, const char* picture)
{
    if (button != nullptr) {
        button->setIcon(
            QIcon(ImageManager::GetPixmapObject(QLatin1String(":/images/images/gnss/") + QLatin1String(picture))));
    }
}

/// Shows a tool window in front, and its button's picture of the shown state.
void ShowToolWindow(QWidget& window, QPushButton* button, const char* picture)
{
    window.show();
    window.raise();
    window.activateWindow();
    ShowPicture(button, picture);
}

} // namespace

void GnssWindow::ConnectToolWindows()
{
    connect(serialSetting, &SerialSetting::CloseSignal, this, &GnssWindow::SlotCloseSerialSetting);
    connect(&assistOnline, &AssistOnline::CloseSignal, this, &GnssWindow::SlotCloseOnline);
    connect(&assistOffline, &AssistOffline::CloseSignal, this, &GnssWindow::SlotCloseOffline);
    connect(&versionLoad, &VersionLoad::CloseSignal, this, &GnssWindow::SlotCloseVersionLoad);
    connect(&hisInfoInject, &HisInfoInject::CloseSignal, this, &GnssWindow::SlotCloseHisInfoInject);
    connect(&assistOnline, &AssistOnline::SendMsg, this, &GnssWindow::SlotSendPackets, Qt::DirectConnection);
    connect(&assistOffline, &AssistOffline::SendMsg, this, &GnssWindow::SlotSendPackets, Qt::DirectConnection);
    connect(&hisInfoInject, &HisInfoInject::SendMsg, this, &GnssWindow::SlotSendPackets, Qt::DirectConnection);
    connect(&senceReplay, &SenceReplay::SendMsg, this, &GnssWindow::SlotSendPackets, Qt::DirectConnection);
}

void GnssWindow::SlotShowSerialSetting()
{
    ShowToolWindow(*serialSetting, m_serialSettingBtn, "serialSettingO.png");
}

void GnssWindow::SlotCloseSerialSetting()
{
    ShowPicture(m_serialSettingBtn, "serialSettingC.png");
}

void GnssWindow::ShowOnlineAsstWin()
{
    ShowToolWindow(assistOnline, m_onlineBtn, "online_link.png");
}

void GnssWindow::SlotCloseOnline()
{
    ShowPicture(m_onlineBtn, "online_unlink.png");
}

void GnssWindow::ShowOfflineAsstWin()
{
    ShowToolWindow(assistOffline, m_offlineBtn, "offline_link.png");
}

void GnssWindow::SlotCloseOffline()
{
    ShowPicture(m_offlineBtn, "offline_unlink.png");
}

void GnssWindow::ShowVersionLoadWin()
{
    versionLoad.Prepare();
    ShowToolWindow(versionLoad, m_versionBtn, "versionLoading.png");
}

void GnssWindow::SlotCloseVersionLoad()
{
    ShowPicture(m_versionBtn, "versionUnload.png");
}

void GnssWindow::ShowHisInfoInjectWin()
{
    ShowToolWindow(hisInfoInject, m_hisInfoBtn, "hisOpened.png");
    if (QFileInfo::exists(hisInfoInject.FilePath())) {
        AppendStatus(tr("已有历史数据文件，可直接注入"));
        hisInfoInject.ShowFilePath();
    } else {
        AppendStatus(tr("暂无历史数据，请先保存"));
    }
}

void GnssWindow::SlotCloseHisInfoInject()
{
    ShowPicture(m_hisInfoBtn, "hisNotOpen.png");
}

void GnssWindow::ShowSenceReplayWin()
{
    ShowToolWindow(senceReplay, nullptr, "");
}

void GnssWindow::ShowFetchNmeaWin()
{
    ShowToolWindow(fetchNmea, nullptr, "");
}

void GnssWindow::ShowProductTestWin()
{
    auto* window = new ProductTest;
    const QString title = tr("产测视图") + QString::number(productTestCount);
    window->setWindowTitle(title);
    productTests.insert(title, window);
    connect(window, &ProductTest::CloseSignal, this, &GnssWindow::SlotCloseProductTestView);
    ShowToolWindow(*window, m_productTestBtn, "ProductTestOn.png");
    AppendStatus(tr("打开第") + QString::number(productTestCount) + tr("个产测视图"));
    ++productTestCount;
}

void GnssWindow::SlotCloseProductTestView(QString title)
{
    // This runs inside that window's own close event.
    if (ProductTest* window = productTests.take(title)) {
        window->deleteLater();
    }
    if (productTests.isEmpty()) {
        ShowPicture(m_productTestBtn, "ProductTestOff.png");
    }
}
