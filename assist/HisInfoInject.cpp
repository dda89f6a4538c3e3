#include "assist/HisInfoInject.h"

#include "host/support/ImageManager.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QIcon>
#include <QLineEdit>
#include <QVBoxLayout>

HisInfoInject::HisInfoInject(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(tr("历史信息"));
    setWindowIcon(QIcon(ImageManager::GetPixmapObject(":/images/images/gnss/hisOpened.png")));
    setFixedWidth(400);
    setWindowModality(Qt::ApplicationModal);

    m_pathEdit = new QLineEdit(this);
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_pathEdit);
}

void HisInfoInject::OnHisInfo(const void* buffer, int length)
{
    if (buffer == nullptr || length <= 0)
        return;
}

QString HisInfoInject::FilePath() const
{
    return QCoreApplication::applicationDirPath() + "/HisInfo/HisInfo.bin";
}

void HisInfoInject::ShowFilePath()
{
    m_pathEdit->setText(FilePath());
}

void HisInfoInject::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit CloseSignal();
}
