// SPDX-License-Identifier: MIT
#include "performance/RefLocWin.h"

#include "base/MessageBoxes.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

RefLocWin::RefLocWin(QWidget* parent)
    : QWidget(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint), m_count(CountRefLocations())
{
    setWindowTitle(QStringLiteral("Add RefLoc"));
    setMinimumSize(300, 250);

    auto* grid = new QGridLayout;
    auto row = [this, grid](int number, const QString& text, const char* name) {
        constexpr int labelWidth = 50;
        auto* label = new QLabel(text, this);
        label->setFixedWidth(labelWidth);
        auto* edit = new QLineEdit(this);
        edit->setObjectName(QLatin1String(name));
        grid->addWidget(label, number, 0);
        grid->addWidget(edit, number, 1);
        return edit;
    };
    m_nameEdit = row(0, tr("点位名:"), "refLocName");
    m_lonEdit = row(1, tr("经度:"), "refLocLon");
    m_latEdit = row(2, tr("纬度:"), "refLocLat");
    m_altEdit = row(3, tr("高度:"), "refLocAlt");

    auto* confirm = new QPushButton(tr("确定"), this);
    auto* cancel = new QPushButton(tr("取消"), this);
    connect(confirm, &QPushButton::clicked, this, &RefLocWin::SlotConfirmBtnClicked);
    connect(cancel, &QPushButton::clicked, this, &RefLocWin::SlotCancleBtnClicked);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(confirm);
    buttons->addWidget(cancel);

    auto* column = new QVBoxLayout(this);
    column->addLayout(grid);
    column->addLayout(buttons);
}

void RefLocWin::SlotConfirmBtnClicked()
{
    const QPointer<RefLocWin> guard(this);
    const RefLocation typed = {m_nameEdit->text(), m_lonEdit->text(), m_latEdit->text(), m_altEdit->text()};
    m_added.append(WithZeros(typed));
    ++m_count;
    SaveRefLocation(m_count, m_added.last());
    emit RefLocSaved(typed);
    ShowInformationBox(this, tr("提示"), tr("参考点位保存成功"));
    if (!guard.isNull()) {
        close();
    }
}

void RefLocWin::SlotCancleBtnClicked()
{
    close();
}
