// SPDX-License-Identifier: MIT
#pragma once

#include "performance/KpiConfig.h"
#include "performance/KpiTestTypes.h"

#include <QMap>

#include <array>

struct RefLocation;

namespace Ui {
class KpiViewWin;
}

/// What is typed, ticked and chosen in the performance test's form: the configuration and the reference place.
class KpiForm {
public:
    explicit KpiForm(const Ui::KpiViewWin& ui) : m_ui(ui) {}

    KpiConfigTexts Config() const;
    void ShowConfig(const KpiConfigTexts& texts) const;
    bool ColdTicked() const;
    bool HotTicked() const;
    void Lock(bool lock) const;

    KpiPlace Reference() const;
    /// Offers the surveyed points of the file.
    void LoadReferences();
    /// Offers one more point and chooses it.
    void AddReference(const RefLocation& location);
    void ChooseReference(int index);

private:
    using Place = std::array<QString, 3>; ///< longitude, latitude, altitude

    void ShowReference(const Place& place) const;

    const Ui::KpiViewWin& m_ui;
    QMap<int, Place> m_references; ///< by index of the combo box
};
