// SPDX-License-Identifier: MIT
#include "host/app/HostWindow.h"

#include "host/app/DebugLogPane.h"
#include "host/app/HostHelp.h"
#include "host/app/StatusDot.h"
#include "host/support/ImageManager.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QStackedWidget>
#include <QStatusBar>
#include <QVBoxLayout>

namespace {

constexpr const char* kSpeeds[] = {"0.5", "1", "2", "5", "10", "50"};

constexpr int kNoteMilliseconds = 10000;
constexpr int kLogHeight = 160;

} // namespace

HostWindow::HostWindow()
    : m_pages(new QStackedWidget), m_container(new QWidget), m_missing(new QLabel),
      m_logDock(new QDockWidget(this)), m_log(new DebugLogPane), m_receiverState(new QLabel)
{
    setWindowIcon(QIcon(ImageManager::GetPixmapObject(QStringLiteral(":/images/images/gnss/workbench.png"))));

    auto* inside = new QVBoxLayout(m_container);
    inside->setContentsMargins(0, 0, 0, 0);
    m_missing->setAlignment(Qt::AlignCenter);
    m_missing->setWordWrap(true);
    m_missing->setMargin(40);
    m_missing->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_pages->addWidget(m_missing);
    m_pages->addWidget(m_container);

    auto* centre = new QWidget;
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_components.Problem());
    layout->addWidget(m_pages, 1);
    setCentralWidget(centre);

    m_logDock->setObjectName(QStringLiteral("debugLogDock"));
    m_logDock->setWidget(m_log);
    addDockWidget(Qt::BottomDockWidgetArea, m_logDock);
    resizeDocks({m_logDock}, {kLogHeight}, Qt::Vertical);
    m_logDock->hide();

    BuildMenus();
    BuildStatusRow();
    Retranslate();
}

QAction* HostWindow::AddAction(QMenu* menu, const char* text)
{
    QAction* action = menu->addAction(QString());
    m_actionTexts.insert(action, text);
    return action;
}

void HostWindow::BuildMenus()
{
    const auto addMenu = [this](QMenu* parent, const char* text) {
        QMenu* menu = parent ? parent->addMenu(QString()) : menuBar()->addMenu(QString());
        m_menuTexts.insert(menu, text);
        return menu;
    };
    const auto addChoice = [this](QMenu* menu, QActionGroup* group, const char* text, const QVariant& value) {
        QAction* action = AddAction(menu, text);
        action->setCheckable(true);
        action->setData(value);
        group->addAction(action);
        return action;
    };

    QMenu* file = addMenu(nullptr, QT_TR_NOOP("&File"));
    QAction* save = AddAction(file, QT_TR_NOOP("&Save Debug Log..."));
    connect(save, &QAction::triggered, m_log, &DebugLogPane::Save);
    file->addSeparator();
    QAction* quit = AddAction(file, QT_TR_NOOP("&Quit"));
    quit->setShortcut(QKeySequence::Quit);
    connect(quit, &QAction::triggered, this, &QWidget::close);

    QMenu* receiver = addMenu(nullptr, QT_TR_NOOP("&Receiver"));
    QMenu* product = addMenu(receiver, QT_TR_NOOP("&Product"));
    m_products = new QActionGroup(this);
    addChoice(product, m_products, QT_TR_NOOP("&Default Product"), 0);
    addChoice(product, m_products, QT_TR_NOOP("Product &27"), 27);
    addChoice(product, m_products, QT_TR_NOOP("Product &31"), 31);
    connect(m_products, &QActionGroup::triggered, this,
            [this](const QAction* action) { emit ProductChosen(action->data().toInt()); });
    receiver->addSeparator();
    m_receiverSwitch = AddAction(receiver, QT_TR_NOOP("&Virtual Receiver"));
    m_receiverSwitch->setCheckable(true);
    connect(m_receiverSwitch, &QAction::triggered, this, &HostWindow::ReceiverSwitched);
    QAction* play = AddAction(receiver, QT_TR_NOOP("Play &Capture..."));
    connect(play, &QAction::triggered, this, &HostWindow::ChooseCapture);
    m_stopCapture = AddAction(receiver, QT_TR_NOOP("&Back to the Simulated Sky"));
    connect(m_stopCapture, &QAction::triggered, this, [this] { emit CaptureChosen(QString()); });
    QMenu* speed = addMenu(receiver, QT_TR_NOOP("Playing &Speed"));
    m_speeds = new QActionGroup(this);
    for (const char* value : kSpeeds) {
        QAction* action = speed->addAction(QLatin1String(value) + QChar(0x00d7));
        action->setCheckable(true);
        action->setData(QLatin1String(value));
        m_speeds->addAction(action);
    }
    connect(m_speeds, &QActionGroup::triggered, this,
            [this](const QAction* action) { emit SpeedChosen(action->data().toString()); });

    QMenu* settings = addMenu(nullptr, QT_TR_NOOP("&Settings"));
    QMenu* language = addMenu(settings, QT_TR_NOOP("&Language"));
    m_languages = new QActionGroup(this);
    addChoice(language, m_languages, nullptr, 2)->setText(QStringLiteral("中文"));
    addChoice(language, m_languages, nullptr, 1)->setText(QStringLiteral("English"));
    connect(m_languages, &QActionGroup::triggered, this,
            [this](const QAction* action) { emit LanguageChosen(action->data().toInt()); });

    QMenu* view = addMenu(nullptr, QT_TR_NOOP("&View"));
    QAction* log = m_logDock->toggleViewAction();
    log->setShortcut(Qt::Key_F12);
    m_actionTexts.insert(log, QT_TR_NOOP("&Debug Log"));
    view->addAction(log);

    QMenu* help = addMenu(nullptr, QT_TR_NOOP("&Help"));
    QAction* contents = AddAction(help, QT_TR_NOOP("&Short Help"));
    contents->setShortcut(QKeySequence::HelpContents);
    connect(contents, &QAction::triggered, this, [this] { ShowShortHelp(this); });
    QAction* about = AddAction(help, QT_TR_NOOP("&About GNSS Workbench"));
    about->setMenuRole(QAction::AboutRole);
    connect(about, &QAction::triggered, this, [this] { ShowAbout(this); });
}

void HostWindow::BuildStatusRow()
{
    m_components.AddTo(statusBar());
    m_receiverState->setContentsMargins(6, 0, 6, 0);
    statusBar()->addPermanentWidget(m_receiverState);
}

void HostWindow::Retranslate()
{
    for (auto it = m_actionTexts.cbegin(); it != m_actionTexts.cend(); ++it) {
        if (it.value()) {
            it.key()->setText(tr(it.value()));
        }
    }
    for (auto it = m_menuTexts.cbegin(); it != m_menuTexts.cend(); ++it) {
        it.key()->setTitle(tr(it.value()));
    }
    m_logDock->setWindowTitle(tr("Debug Log"));
    UpdateTitle();
    m_components.Retranslate();
}

void HostWindow::UpdateTitle()
{
    QString title = QStringLiteral("GNSS Workbench");
    if (!m_capture.isEmpty()) {
        title = QFileInfo(m_capture).fileName() + QStringLiteral(" - ") + title;
    }
    setWindowTitle(title);
}

void HostWindow::ShowPlugin()
{
    m_pages->setCurrentWidget(m_container);
}

void HostWindow::ShowMissingPlugin(const ComponentStatus& plugin)
{
    m_missing->setText(
        tr("<h2>The workbench could not be loaded</h2><p>%1</p><p>%2</p>")
            .arg(QDir::toNativeSeparators(plugin.file).toHtmlEscaped(), plugin.reason.toHtmlEscaped()));
    m_pages->setCurrentWidget(m_missing);
}

void HostWindow::ShowComponents(const ComponentStatus& plugin, const ComponentStatus& codec,
                                const ComponentStatus& archiver)
{
    m_components.Show(plugin, codec, archiver);
}

void HostWindow::ShowProduct(int product)
{
    for (QAction* action : m_products->actions()) {
        const int number = action->data().toInt();
        action->setChecked(number == product || (number == 0 && product != 27 && product != 31));
    }
}

void HostWindow::ShowLanguage(int language)
{
    for (QAction* action : m_languages->actions()) {
        action->setChecked(action->data().toInt() == language);
    }
}

void HostWindow::ShowReceiver(bool running, const QString& text, bool good)
{
    m_receiverSwitch->setChecked(running);
    m_receiverState->setText(StatusDot(good ? kDotGood : running ? kDotBad : kDotOff, text));
}

void HostWindow::ShowCapture(const QString& capture, const QString& speed)
{
    m_capture = capture;
    m_stopCapture->setEnabled(!capture.isEmpty());
    for (QAction* action : m_speeds->actions()) {
        action->setChecked(action->data().toString() == (speed.isEmpty() ? QStringLiteral("1") : speed));
    }
    UpdateTitle();
}

void HostWindow::ShowNote(const QString& text)
{
    statusBar()->showMessage(text, kNoteMilliseconds);
}

void HostWindow::ChooseCapture()
{
    const QPointer<HostWindow> self(this);
    const QString file = QFileDialog::getOpenFileName(this, tr("Play Capture"), m_captureFolder,
                                                      tr("Captures (*.bin *.log *.nmea *.txt);;All files (*)"));
    if (!self || file.isEmpty()) {
        return;
    }
    m_captureFolder = QFileInfo(file).path();
    emit CaptureChosen(file);
}

void HostWindow::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        Retranslate();
    }
    QMainWindow::changeEvent(event);
}

void HostWindow::closeEvent(QCloseEvent* event)
{
    event->accept();
    emit Closing();
}
