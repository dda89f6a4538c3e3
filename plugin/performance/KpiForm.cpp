// SPDX-License-Identifier: MIT
#include "performance/KpiForm.h"

#include "ui_KpiViewWin.h"

#include "performance/RefLocFile.h"

KpiConfigTexts KpiForm::Config() const
{
    const auto tick = [](const QCheckBox* box) {
        return box->isChecked() ? QStringLiteral("true") : QStringLiteral("false");
    };
    return {tick(m_ui.checkBox_coldStart), tick(m_ui.checkBox_coldAgnss), tick(m_ui.checkBox_coldPgnss),
            m_ui.coldTestNum->text(),      m_ui.coldTestTimeout->text(),  m_ui.coldTestInr->text(),
            m_ui.coldTestTrkTime->text(),  tick(m_ui.checkBox_hotStart),  tick(m_ui.checkBox_hotAgnss),
            tick(m_ui.checkBox_hotPgnss),  m_ui.hotTestNum->text(),       m_ui.hotTestTimeout->text(),
            m_ui.hotTestInr->text(),       m_ui.hotTestTrkTime->text()};
}

void KpiForm::ShowConfig(const KpiConfigTexts& texts) const
{
    const auto tick = [&texts](QCheckBox* box, KpiConfigEntry entry) {
        if (texts[entry] == QLatin1String("true")) {
            box->setChecked(true);
        }
    };
    tick(m_ui.checkBox_coldStart, KpiColdStart);
    tick(m_ui.checkBox_coldAgnss, KpiColdAgnss);
    tick(m_ui.checkBox_coldPgnss, KpiColdPgnss);
    tick(m_ui.checkBox_hotStart, KpiHotStart);
    tick(m_ui.checkBox_hotAgnss, KpiHotAgnss);
    tick(m_ui.checkBox_hotPgnss, KpiHotPgnss);
    m_ui.coldTestNum->setText(texts[KpiColdNum]);
    m_ui.coldTestTimeout->setText(texts[KpiColdTimeout]);
    m_ui.coldTestInr->setText(texts[KpiColdInr]);
    m_ui.coldTestTrkTime->setText(texts[KpiColdTrkTime]);
    m_ui.hotTestNum->setText(texts[KpiHotNum]);
    m_ui.hotTestTimeout->setText(texts[KpiHotTimeout]);
    m_ui.hotTestInr->setText(texts[KpiHotInr]);
    m_ui.hotTestTrkTime->setText(texts[KpiHotTrkTime]);
}

bool KpiForm::ColdTicked() const
{
    return m_ui.checkBox_coldStart->isChecked();
}

bool KpiForm::HotTicked() const
{
    return m_ui.checkBox_hotStart->isChecked();
}

void KpiForm::Lock(bool lock) const
{
    const QList<QLineEdit*> edits = m_ui.stackedWidget->findChildren<QLineEdit*>();
    for (QLineEdit* edit : edits) {
        edit->setReadOnly(lock);
    }
    // Unlocking takes in the boxes that the window disabled: it is meant so.
    const QList<QCheckBox*> boxes = m_ui.stackedWidget->findChildren<QCheckBox*>();
    for (QCheckBox* box : boxes) {
        box->setEnabled(!lock);
    }
    m_ui.AddRefLoc->setEnabled(!lock);
}

KpiPlace KpiForm::Reference() const
{
    return {m_ui.refPosLat->text().toDouble(), m_ui.refPosLon->text().toDouble(),
            m_ui.refPosAlt->text().toDouble()};
}

void KpiForm::ShowReference(const Place& place) const
{
    m_ui.refPosLon->setText(place[0]);
    m_ui.refPosLat->setText(place[1]);
    m_ui.refPosAlt->setText(place[2]);
}

void KpiForm::LoadReferences()
{
    // The combo box stays on the first point while the edits show the last one: it is meant so.
    const QVector<RefLocation> locations = ReadRefLocations();
    for (const RefLocation& location : locations) {
        const Place place = {location.longitude, location.latitude, location.altitude};
        m_ui.comboBox->addItem(location.name);
        ShowReference(place);
        m_references.insert(m_references.size(), place);
    }
}

void KpiForm::AddReference(const RefLocation& location)
{
    const int index = m_ui.comboBox->count();
    const Place place = {location.longitude, location.latitude, location.altitude};
    m_references.insert(index, place);
    m_ui.comboBox->addItem(location.name);
    m_ui.comboBox->setCurrentIndex(index);
    ShowReference(place);
}

void KpiForm::ChooseReference(int index)
{
    m_ui.comboBox->setCurrentIndex(index);
    ShowReference(m_references[index]);
}
