// SPDX-License-Identifier: MIT
#include "production/StationViews.h"

#include "base/FixedFont.h"

#include "ui_ProductTest.h"

#include <QStandardItemModel>
#include <QTime>

namespace {

constexpr char passColour[] = "green";
constexpr char failColour[] = "red";

/// A station runs for days; the raw logs keep everything.
constexpr int mostShownSentences = 50000;
constexpr int productNumberWidth = 230;

QString GroupText(const SignalGroup& group)
{
    return QString::number(group.count) + QLatin1Char('/') + QString::number(group.strongest);
}

const SignalGroup& GroupOf(const EpochSignals& sums, char letter)
{
    return sums.each[protocol::PlaceIn(kEpochOrder, letter)];
}

} // namespace

void StationViews::SetUp(QObject* owner)
{
    ui.showNmea->setMaximumBlockCount(mostShownSentences);
    ui.showNmea->setFont(FixedFont());
    m_rows = new QStandardItemModel(owner);
    m_rows->setHorizontalHeaderLabels(UnitReport::TableHeaders());
    ui.testRltTable->setModel(m_rows);
    ui.testRltTable->setColumnWidth(0, productNumberWidth);
    ShowEpoch(EpochSignals());
}

void StationViews::OfferStart(bool offered)
{
    ui.startTestBtn->setEnabled(offered);
}

void StationViews::ClearSentences()
{
    if (ui.clearHisNmeaLog->isChecked()) {
        ui.showNmea->clear();
    }
}

void StationViews::ShowSentences(const QStringList& sentences)
{
    ui.showNmea->appendPlainText(sentences.join(QLatin1Char('\n')));
}

void StationViews::ShowEpoch(const EpochSignals& sums)
{
    ui.cn0PaintWidget->SetBars(sums.bars);
    ui.totalSatInfo->setText(GroupText({sums.total.count, std::max(sums.gps.strongest, sums.nonGps.strongest)}));
    ui.gpsSatInfo->setText(GroupText(sums.gps));
    ui.bdsSatInfo->setText(GroupText(GroupOf(sums, 'C')));
    ui.gloSatInfo->setText(GroupText(GroupOf(sums, 'R')));
    ui.galSatInfo->setText(GroupText(GroupOf(sums, 'E')));
    ui.qzsSatInfo->setText(GroupText(GroupOf(sums, 'J')));
}

void StationViews::ShowResult(UnitVerdict verdict, const QString& text)
{
    const char* colour = verdict == UnitVerdict::Passed ? passColour : failColour;
    ui.signalTestRltLbl->setStyleSheet(verdict == UnitVerdict::None
                                           ? QString()
                                           : QStringLiteral("QLabel { color: %1; }").arg(QLatin1String(colour)));
    ui.signalTestRltLbl->setText(text);
}

void StationViews::ShowCounts(quint32 tests, quint32 passes)
{
    ui.testNum->setText(QString::number(tests) + tr("次"));
    ui.passNum->setText(QString::number(passes) + tr("次"));
    ui.passNumRatio->setText(QString::number(passes * 100.0 / tests, 'f', 2) + QLatin1Char('%'));
}

void StationViews::ShowRow(const UnitRecord& unit)
{
    QList<QStandardItem*> row;
    const QStringList texts = UnitReport::TableRow(unit);
    for (const QString& text : texts) {
        row.append(new QStandardItem(text));
    }
    m_rows->appendRow(row);
    ui.testRltTable->scrollToBottom();
}

void StationViews::ShowResultPath(const QString& path)
{
    ui.TestRsltPath->setText(path);
}

void StationViews::Log(const QString& text)
{
    ui.SysStatus->appendPlainText(QLatin1Char('[') + QTime::currentTime().toString(QStringLiteral("hh:mm:ss")) +
                                  QLatin1String("] ") + text);
}
