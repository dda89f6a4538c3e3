#include "production/VersionLoad.h"

#include "host/support/ImageManager.h"

#include <QCloseEvent>
#include <QIcon>
#include <QLabel>
#include <QTextEdit>
#include <QVBoxLayout>

VersionLoad::VersionLoad(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(tr("固件加载"));
    setWindowIcon(QIcon(ImageManager::GetPixmapObject(":/images/images/gnss/versionLoading.png")));
    setFixedSize(400, 400);
    setWindowModality(Qt::ApplicationModal);

    m_progress = new QLabel(this);
    m_log = new QTextEdit(this);
    m_log->setReadOnly(true);
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_progress);
    column->addWidget(m_log);
    Prepare();
}

void VersionLoad::Prepare()
{
    m_progress->setText(tr("加载进度：0%"));
    m_log->clear();
}

void VersionLoad::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit CloseSignal();
}
