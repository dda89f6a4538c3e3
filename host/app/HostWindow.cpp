// SPDX-License-Identifier: MIT
#include "host/app/HostWindow.h"

#include "host/app/DebugLogPane.h"
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
#include <QMessageBox>
#include <QPointer>
#include <QStackedWidget>
#include <QStatusBar>
#include <QVBoxLayout>

namespace {

constexpr const char* kSpeeds[] = {"0.5", "1", "2", "5", "10", "50"};

constexpr int kNoteMilliseconds = 10000;
constexpr int kLogHeight = 160;

constexpr char kGood[] = "#2e9e5b";
constexpr char kBad[] = "#d64545";
constexpr char kOff[] = "#8a96a3";

QString Dot(const char* colour, const QString& text)
{
    return QStringLiteral("<span style=\"color:%1\">&#9679;</span> %2")
        .arg(QLatin1String(colour), text.toHtmlEscaped());
}

} // namespace

HostWindow::HostWindow()
    : m_pages(new QStackedWidget), m_container(new QWidget), m_missing(new QLabel), m_problem(new QLabel),
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

    m_problem->setWordWrap(true);
    m_problem->setMargin(6);
    m_problem->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_problem->setStyleSheet(
        QStringLiteral("background:#fff3cd; color:#664d03; border-bottom:1px solid #e6d9a8;"));
    m_problem->hide();

    auto* centre = new QWidget;
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_problem);
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
    connect(contents, &QAction::triggered, this, &HostWindow::ShowHelp);
    QAction* about = AddAction(help, QT_TR_NOOP("&About GNSS Workbench"));
    about->setMenuRole(QAction::AboutRole);
    connect(about, &QAction::triggered, this, &HostWindow::ShowAbout);
}

void HostWindow::BuildStatusRow()
{
    m_archiver.optional = true;
    for (Chip* chip : {&m_plugin, &m_codec, &m_archiver}) {
        chip->label = new QLabel;
        chip->label->setContentsMargins(6, 0, 6, 0);
        statusBar()->addWidget(chip->label);
    }
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
    UpdateRow();
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
    m_plugin.status = plugin;
    m_codec.status = codec;
    m_archiver.status = archiver;
    m_rowFilled = true;
    UpdateRow();
}

void HostWindow::UpdateRow()
{
    if (!m_rowFilled) {
        return;
    }
    const auto show = [](const Chip& chip, const QString& name) {
        const ComponentStatus& status = chip.status;
        const char* colour = status.good ? kGood : chip.optional ? kOff : kBad;
        chip.label->setText(Dot(colour, name));
        chip.label->setToolTip(status.good ? status.file : status.file + QLatin1Char('\n') + status.reason);
    };
    show(m_plugin, tr("Plug-in"));
    show(m_codec, tr("Codec"));
    show(m_archiver, tr("Archiver"));

    QStringList problems;
    if (!m_codec.status.good) {
        problems << tr("The codec is not in use, so nothing will be decoded: %1 (%2)")
                        .arg(m_codec.status.file, m_codec.status.reason);
    }
    if (!m_archiver.status.good) {
        problems << tr("The archiver is not in use, so full logs stay uncompressed: %1 (%2)")
                        .arg(m_archiver.status.file, m_archiver.status.reason);
    }
    m_problem->setText(problems.join(QLatin1Char('\n')));
    m_problem->setVisible(!problems.isEmpty());
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
    m_receiverState->setText(Dot(good ? kGood : running ? kBad : kOff, text));
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

void HostWindow::ShowAbout()
{
    QMessageBox::about(this, tr("About GNSS Workbench"),
                       tr("<h3>GNSS Workbench %1</h3>"
                          "<p>Watch, configure, test and replay a GNSS receiver on a serial line.</p>"
                          "<p>Built with Qt %2.</p>")
                           .arg(QCoreApplication::applicationVersion(), QLatin1String(qVersion())));
}

void HostWindow::ShowHelp()
{
    QMessageBox box(this);
    box.setWindowTitle(tr("Short Help"));
    box.setTextFormat(Qt::RichText);
    box.setText(tr("<h3>First steps</h3>"
                   "<ul>"
                   "<li>The first button of the tool bar opens and closes the port; its arrow offers the ports. "
                   "At the start the virtual receiver's port is open already.</li>"
                   "<li>A click on an entry of the control panel opens that view or brings it to the front.</li>"
                   "<li>The start button sends the start or stop command to the receiver.</li>"
                   "<li>Every byte received is kept in the folder GnssData beside the program.</li>"
                   "<li><b>Receiver</b> chooses the product, switches the virtual receiver and lets it play a "
                   "recorded capture.</li>"
                   "<li><b>View &gt; Debug Log</b> (F12) shows what happens inside.</li>"
                   "</ul>"));
    box.exec();
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
