// SPDX-License-Identifier: MIT
#pragma once

#include "assist/Injector.h"
#include "assist/SceneLibrary.h"

#include <QWidget>

#include <cstdint>
#include <memory>

namespace Ui {
class SenceReplay;
}

/// Sends time, position, ionosphere and ephemerides of a recorded scene to the receiver. Each item stands between
/// two calls of the codec's sleep switch.
class SenceReplay : public QWidget {
    Q_OBJECT

public:
    explicit SenceReplay(QWidget* parent = nullptr);
    ~SenceReplay() override;

signals:
    void SendMsg(uint8_t* buffer, int len);

public slots:
    void SlotInjectTime();
    void SlotInjectPos();
    void SlotInjectIon();
    void SlotInjectEph();
    void SlotSelectSencePath();
    void SlotChangeSenceName(int index);

private:
    void LoadLibrary();
    void ShowRecord(const SceneRecord& record);
    SceneRecord CurrentRecord() const;
    QString CurrentFolder() const;
    Injector MakeInjector();

    std::unique_ptr<Ui::SenceReplay> ui;
    QString m_libraryPath;
    QMap<int, SceneRecord> m_scenes; ///< by index of the combo box
};
