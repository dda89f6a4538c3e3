// SPDX-License-Identifier: MIT
#include "window/ToolWindows.h"

#include "base/StatusLog.h"
#include "production/ProductTest.h"
#include "widgets/CustomBaudRateWin.h"
#include "widgets/MyButton.h"
#include "widgets/SerialSetting.h"
#include "window/MainToolBar.h"
#include "window/ToolPictures.h"
#include "window/WindowText.h"

#include <QFileInfo>

namespace {

struct Pictures {
    const char* closed; ///< null for a tool whose button keeps its picture
    const char* shown;
};

// In the order of the tools.
constexpr Pictures kPictures[] = {
    {"serialSettingC.png", "serialSettingO.png"},
    {"online_unlink.png", "online_link.png"},
    {"offline_unlink.png", "offline_link.png"},
    {"versionUnload.png", "versionLoading.png"},
    {"hisNotOpen.png", "hisOpened.png"},
    {nullptr, nullptr},
    {nullptr, nullptr},
};
static_assert(sizeof(kPictures) / sizeof(kPictures[0]) == ToolWindows::kTools);

/// The reduced tool bars lack some of the buttons.
void ShowPicture(QPushButton* button, const char* picture)
{
    if (button != nullptr && picture != nullptr) {
        button->setIcon(ToolPicture(picture));
    }
}

void ShowInFront(QWidget& window)
{
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

ToolWindows::ToolWindows(QSerialPort* port) : m_serialSetting(std::make_unique<SerialSetting>(port))
{
    const ClosingWidget* closing[] = {m_serialSetting.get(), &m_assistOnline, &m_assistOffline, &m_versionLoad,
                                      &m_hisInfoInject};
    for (int i = SerialSettings; i <= History; ++i) {
        connect(closing[i], &ClosingWidget::CloseSignal, this, [this, i] { ShowClosed(static_cast<Tool>(i)); });
    }
    connect(&m_assistOnline, &AssistOnline::SendMsg, this, &ToolWindows::SendMsg, Qt::DirectConnection);
    connect(&m_assistOffline, &AssistOffline::SendMsg, this, &ToolWindows::SendMsg, Qt::DirectConnection);
    connect(&m_hisInfoInject, &HisInfoInject::SendMsg, this, &ToolWindows::SendMsg, Qt::DirectConnection);
    connect(&m_senceReplay, &SenceReplay::SendMsg, this, &ToolWindows::SendMsg, Qt::DirectConnection);
}

ToolWindows::~ToolWindows()
{
    DropProductTests();
    delete m_customBaudWin;
}

void ToolWindows::Join(const MainToolBar& bar)
{
    m_bar = &bar;
    m_buttons = {bar.serialSettingBtn, bar.onlineBtn,      bar.offlineBtn, bar.versionBtn,
                 bar.hisInfoBtn,       bar.senceReplayBtn, nullptr};
    for (int i = 0; i < kTools; ++i) {
        if (m_buttons[i] != nullptr) {
            connect(m_buttons[i], &QPushButton::clicked, this, [this, i] { Show(static_cast<Tool>(i)); });
        }
    }
    connect(bar.fetchNmea, &QAction::triggered, this, [this] { Show(Extraction); });
    if (bar.productTestBtn != nullptr) {
        connect(bar.productTestBtn, &QPushButton::clicked, this, &ToolWindows::NewProductTest);
    }
}

QWidget& ToolWindows::Window(Tool tool)
{
    QWidget* windows[] = {m_serialSetting.get(), &m_assistOnline, &m_assistOffline, &m_versionLoad,
                          &m_hisInfoInject,      &m_senceReplay,  &m_fetchNmea};
    static_assert(sizeof(windows) / sizeof(windows[0]) == kTools);
    return *windows[tool];
}

void ToolWindows::Show(Tool tool)
{
    if (tool == Firmware) {
        m_versionLoad.Prepare();
    }
    ShowInFront(Window(tool));
    ShowPicture(m_buttons[tool], kPictures[tool].shown);
    if (tool == History) {
        ShowHistoryState();
    }
}

void ToolWindows::ShowHistoryState()
{
    if (QFileInfo::exists(m_hisInfoInject.FilePath())) {
        AppendStatus(WindowText::tr("已有历史数据文件，可直接注入"));
        m_hisInfoInject.ShowFilePath();
    } else {
        AppendStatus(WindowText::tr("暂无历史数据，请先保存"));
    }
}

void ToolWindows::ShowClosed(Tool tool)
{
    ShowPicture(m_buttons[tool], kPictures[tool].closed);
}

void ToolWindows::NewProductTest()
{
    auto* window = new ProductTest;
    const QString title = WindowText::tr("产测视图") + QString::number(m_productTestCount);
    window->setWindowTitle(title);
    m_productTests.insert(title, window);
    connect(window, &ProductTest::CloseSignal, this, &ToolWindows::CloseProductTest);
    ShowInFront(*window);
    ShowPicture(m_bar->productTestBtn, "ProductTestOn.png");
    AppendStatus(WindowText::tr("打开第") + QString::number(m_productTestCount) + WindowText::tr("个产测视图"));
    ++m_productTestCount;
}

void ToolWindows::CloseProductTest(const QString& title)
{
    // This runs inside that window's own close event.
    if (ProductTest* window = m_productTests.take(title)) {
        window->deleteLater();
    }
    if (m_productTests.isEmpty()) {
        ShowPicture(m_bar->productTestBtn, "ProductTestOff.png");
    }
}

void ToolWindows::DropProductTests()
{
    const QList<ProductTest*> tests = m_productTests.values();
    m_productTests.clear();
    qDeleteAll(tests);
}

void ToolWindows::AskBaudRate()
{
    delete m_customBaudWin;
    m_customBaudWin = new CustomBaudRateWin;
    m_customBaudWin->setAttribute(Qt::WA_DeleteOnClose);
    connect(m_customBaudWin, &CustomBaudRateWin::addCustomBaudRate, m_bar->baudBtn, &MyButton::SlotMenuAddAction);
    m_customBaudWin->show();
}
