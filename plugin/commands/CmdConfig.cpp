// SPDX-License-Identifier: MIT
#include "commands/CmdConfig.h"

#include "ui_CmdConfig.h"

#include "base/AckWait.h"
#include "base/BoundsChecked.h"
#include "base/StatusLog.h"
#include "bridge/CommandFrame.h"
#include "protocol/LinkFrame.h"

#include "host/support/CProductVersion.h"

#include <QDebug>
#include <QPointer>
#include <QScrollArea>
#include <QStringListModel>

namespace {

constexpr int ackLimitMs = 1500;
constexpr int constellationPage = 0;
constexpr int indexBeyondThePages = 11;
constexpr int listMargin = 16; ///< frame and item margins of the list, pixels

/// The font, made smaller until the longest text is no wider than `width`.
QFont FontThatFits(const QStringList& texts, QFont font, int width)
{
    constexpr qreal smallest = 6;
    auto widest = [&texts](const QFont& candidate) {
        const QFontMetrics metrics(candidate);
        int most = 0;
        for (const QString& text : texts) {
            most = qMax(most, metrics.horizontalAdvance(text));
        }
        return most;
    };
    while (widest(font) > width && font.pointSizeF() > smallest) {
        font.setPointSizeF(font.pointSizeF() - 0.5);
    }
    return font;
}

} // namespace

CmdConfig::CmdConfig(QWidget* parent) : ClosingWidget(parent), ui(std::make_unique<Ui::CmdConfig>())
{
    ui->setupUi(this);
    LetPagesScroll();
    FillList();
    ConnectControls();
    // Asks for a page that does not exist: the form stays on the sentences, with no row selected.
    ui->stackedWidget->setCurrentIndex(indexBeyondThePages);
    ui->page_11_sub->setText(tr("配置NMEA输出语句类型"));
}

CmdConfig::~CmdConfig() = default;

/// In a small window a page scrolls. Only the page that is shown counts for what is small.
void CmdConfig::LetPagesScroll()
{
    auto* area = new QScrollArea(this);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    ui->body->replaceWidget(ui->stackedWidget, area);
    area->setWidget(ui->stackedWidget);
    const auto countOnly = [this](int shown) {
        for (int i = 0; i < ui->stackedWidget->count(); ++i) {
            const auto policy = i == shown ? QSizePolicy::Preferred : QSizePolicy::Ignored;
            ui->stackedWidget->widget(i)->setSizePolicy(policy, policy);
        }
    };
    connect(ui->stackedWidget, &QStackedWidget::currentChanged, this, countOnly);
    countOnly(ui->stackedWidget->currentIndex());
}

void CmdConfig::FillList()
{
    QStringList rows;
    if (CProductVersion::GetVersion() == protocol::kReducedProduct) {
        // The stack is not reduced with the list: rows 2 and 3 open the pages at 2 and 3, which are others than
        // the names say. It is meant so.
        rows = QStringList{QStringLiteral("CFG-FIX-GNSS"), QStringLiteral("CFG-START-MODE"),
                           QStringLiteral("CFG-PPS"), QStringLiteral("CFG-RPT-MSG")};
    } else {
        rows = QStringList{QStringLiteral("CFG-FIX-GNSS"),    QStringLiteral("CFG-START-MODE"),
                           QStringLiteral("CFG-NMEA"),        QStringLiteral("CFG-ACQ-LPW"),
                           QStringLiteral("CFG-TRK-LPW"),     QStringLiteral("CFG-ANTIJAM"),
                           QStringLiteral("CFG-UPDATE-RATE"), QStringLiteral("CFG-PPS"),
                           QStringLiteral("CFG-RPT-MSG"),     QStringLiteral("CFG-FIX-PRIO")};
    }
    m_listModel = new QStringListModel(rows, this);
    ui->listView->setModel(m_listModel);
    ui->listView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    ui->listView->setFont(FontThatFits(rows, ui->listView->font(), ui->listView->maximumWidth() - listMargin));
    ui->listView->setMinimumWidth(ui->listView->maximumWidth());
}

void CmdConfig::ConnectControls()
{
    connect(ui->listView, &QAbstractItemView::clicked, this,
            [this](const QModelIndex& index) { ui->stackedWidget->setCurrentIndex(index.row()); });
    connect(ui->send, &QPushButton::clicked, this, &CmdConfig::SlotSendClicked);

    // The radio that goes off signals first and the one that goes on last, so the state follows the checked one.
    auto enableScan = [this](bool enable) {
        ui->periodWork->setEnabled(enable);
        ui->weakScan->setEnabled(enable);
    };
    connect(ui->disable_ant, &QRadioButton::toggled, this, [enableScan] { enableScan(false); });
    connect(ui->enable_ant, &QRadioButton::toggled, this, [enableScan] { enableScan(true); });
    connect(ui->pps_disable, &QRadioButton::toggled, this, [this] { ui->pps_width->setReadOnly(true); });
    connect(ui->pps_enable, &QRadioButton::toggled, this, [this] { ui->pps_width->setReadOnly(false); });
}

ConfigForm CmdConfig::Form() const
{
    ConfigForm form;
    form.gps = ui->gps->isChecked();
    form.bds = ui->bds->isChecked();
    form.glo = ui->glo->isChecked();
    form.gal = ui->gal->isChecked();
    form.qzss = ui->qzss->isChecked();
    form.coldStart = ui->ColdStart->isChecked();
    form.gga = ui->GGA->isChecked();
    form.rmc = ui->RMC->isChecked();
    form.gll = ui->GLL->isChecked();
    form.vtg = ui->VTG->isChecked();
    form.gsa = ui->GSA->isChecked();
    form.zda = ui->ZDA->isChecked();
    form.gsv = ui->GSV->isChecked();
    form.pn = ui->PN->isChecked();
    form.acqDisable = ui->acq_disable->isChecked();
    form.trkDisable = ui->trk_disable->isChecked();
    form.antDisable = ui->disable_ant->isChecked();
    form.periodWork = ui->periodWork->isChecked();
    form.weakScan = ui->weakScan->isChecked();
    form.rate1Hz = ui->update_rate_1hz->isChecked();
    form.rate5Hz = ui->update_rate_5hz->isChecked();
    form.ppsDisable = ui->pps_disable->isChecked();
    form.ppsWidth = ui->pps_width->value();
    form.meas = ui->meas->isChecked();
    form.nav = ui->nav->isChecked();
    form.prioAuto = ui->prio_auto->isChecked();
    form.prioTtff = ui->prio_ttff->isChecked();
    return form;
}

void CmdConfig::SlotSendClicked()
{
    const int index = ui->stackedWidget->currentIndex();
    if (index < 0 || index >= kConfigPages) {
        return;
    }
    const ConfigPage& page = ConfigPageAt(index);
    const QByteArray payload = ConfigPayload(index, Form());
    QByteArray buffer(payload.size(), Qt::Uninitialized);
    if (memcpy_s(buffer.data(), static_cast<std::size_t>(buffer.size()), payload.constData(),
                 static_cast<std::size_t>(payload.size())) != 0) {
        qDebug().noquote() << page.copyFailureText;
        return;
    }
    const CommandFrame frame(page.commandId, buffer);
    if (!frame.IsEncoded()) {
        return;
    }

    const QPointer<QObject> guard(this);
    // The constellations go out before their state is set, the other pages after it.
    if (index == constellationPage) {
        emit SendMsg(frame.Data(), frame.Length());
    }
    const AckWait wait;
    if (index != constellationPage) {
        emit SendMsg(frame.Data(), frame.Length());
    }
    const AckResult result = wait.Run(guard, ackLimitMs);
    if (result.outcome == AckOutcome::SenderGone) {
        return;
    }
    AppendStatus(result.outcome == AckOutcome::Answered ? ConfigPageText(page.label) + result.message
                                                        : ConfigPageText(page.timeoutText));
    HighlightStatus();
    AckWait::Finish();
}
