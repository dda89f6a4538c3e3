// SPDX-License-Identifier: MIT
#include "host/app/DebugLog.h"
#include "host/app/HostOptions.h"
#include "host/app/HostSession.h"

#include <QApplication>
#include <QFont>

#include <cstdio>

namespace {

constexpr int kUsageError = 2;

void Print(FILE* stream, const QString& text)
{
    std::fputs(text.toLocal8Bit().constData(), stream);
    std::fputc('\n', stream);
}

/// Chooses the platform of a headless run; false when there is no display for a window.
bool HavePlatform(bool headless)
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY") ||
        !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        return true;
    }
    if (headless) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    return headless;
#else
    Q_UNUSED(headless)
    return true;
#endif
}

/// The workbench lays its buttons out in fixed pixels, for text of the usual 9 points.
void LimitFont()
{
    constexpr qreal kPoints = 9.0;
    QFont font = QApplication::font();
    if (font.pointSizeF() > kPoints) {
        font.setPointSizeF(kPoints);
        QApplication::setFont(font);
    }
}

} // namespace

int main(int argc, char** argv)
{
    DebugLog::Instance().Install();
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments << QString::fromLocal8Bit(argv[i]);
    }
    const HostOptionsResult command = ParseHostOptions(arguments);

    QCoreApplication::setApplicationName(QStringLiteral("gnss-workbench"));
    QCoreApplication::setApplicationVersion(QStringLiteral(GNSS_VERSION));
    if (!command.error.isEmpty()) {
        Print(stderr, QStringLiteral("gnss-workbench: %1 (--help lists the options)").arg(command.error));
        return kUsageError;
    }
    if (command.options.help || command.options.version) {
        const QCoreApplication app(argc, argv);
        Print(stdout, command.options.help ? HostOptionsHelp() : QStringLiteral("gnss-workbench " GNSS_VERSION));
        return 0;
    }
    if (!HavePlatform(command.options.headlessSeconds > 0)) {
        Print(stderr, QStringLiteral("gnss-workbench: there is no display; --headless SECONDS runs without one"));
        return kUsageError;
    }

    // Nothing here draws with OpenGL, whose libraries would double the memory and the start time.
    if (!qEnvironmentVariableIsSet("QT_XCB_GL_INTEGRATION")) {
        qputenv("QT_XCB_GL_INTEGRATION", "none");
    }
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication app(argc, argv);
    LimitFont();
    // The plug-in has windows of its own beside the host's; only the host's ends the program.
    QApplication::setQuitOnLastWindowClosed(false);
    HostSession session(command.options);
    return session.Run();
}
