// SPDX-License-Identifier: MIT
#include "production/FetchNmea.h"

#include "base/FileDialogs.h"
#include "base/MessageBoxes.h"
#include "host/support/ImageManager.h"
#include "production/NmeaExtract.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QIcon>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

FetchNmea::FetchNmea(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(tr("提取NMEA"));
    setWindowIcon(QIcon(ImageManager::GetPixmapObject(":/images/images/gnss/fetchNmea.png")));
    setFixedWidth(300);

    auto* selectBtn = new QPushButton(tr("选择文件"), this);
    auto* fetchBtn = new QPushButton(tr("提取NMEA"), this);
    m_statusLabel = new QLabel(this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(selectBtn);
    layout->addWidget(fetchBtn);
    layout->addWidget(m_statusLabel);
    connect(selectBtn, &QPushButton::clicked, this, &FetchNmea::SlotSelectRawFile);
    connect(fetchBtn, &QPushButton::clicked, this, &FetchNmea::ProcessDirectory);
}

void FetchNmea::SlotSelectRawFile()
{
    const QPointer<FetchNmea> guard(this);
    const QStringList files = AskFilesToOpen(this, tr("选择文件"), QCoreApplication::applicationFilePath(),
                                             QStringLiteral("Bin file(*.bin)"));
    if (guard.isNull()) {
        return;
    }
    m_files = files;
    if (m_files.contains(QString())) {
        ShowCriticalBox(nullptr, tr("提示"), tr("选择路径不存在"));
        return;
    }
    m_statusLabel->clear();
}

void FetchNmea::ProcessDirectory()
{
    QElapsedTimer clock;
    clock.start();
    // The label shows its last text only: nothing is painted before control returns to the event loop.
    for (const QString& file : qAsConst(m_files)) {
        m_statusLabel->setText(tr("正在解析") + QFileInfo(file).fileName());
        ExtractNmea(file);
    }
    const double seconds = static_cast<double>(clock.elapsed()) / 1000.0;
    m_statusLabel->setText(tr("解析完成，耗时") + QString::number(seconds, 'f', 2) + "s");
}
