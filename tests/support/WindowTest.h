// SPDX-License-Identifier: MIT
#pragma once

#include "BoxAnswerer.h"
#include "FakeCodec.h"
#include "Files.h"
#include "Pty.h"

#include "base/ProcessState.h"
#include "window/GnssWindow.h"

#include "host/support/HostSupportConfig.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QTextEdit>
#include <QTreeWidget>
#include <QtTest>

#include <algorithm>
#include <memory>

/// A window over the fake codec or the test's own one, in a current and an application directory of the test's
/// own.
class WindowTest {
public:
    enum class Codec { Fake, Own };

    explicit WindowTest(int product = 0, int language = 2, const QString& ports = QString(),
                        Codec codec = Codec::Fake)
        : m_codec(codec)
    {
        const auto filter = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
        for (const QFileInfo& entry : QDir().entryInfoList(filter)) {
            entry.isDir() ? QDir(entry.filePath()).removeRecursively() : QFile::remove(entry.filePath());
        }
        QDir(captures).removeRecursively();
        if (m_codec == Codec::Fake) {
            FakeCodec::Install();
        }
        // A library without the entry points: the window would tell in a box that there is none.
        WriteFile(decoder, Content(QStringLiteral(FAKE_CODEC_DIR "/fake_codec_Nothing.so")));
        for (const char* name : {"/GnssTree.xml", "/GnssTree_en.xml"}) {
            WriteFile(trees + name, Content(QStringLiteral(GNSS_SOURCE_DIR "/host/config") + name));
        }
        WriteFile("Source-Datas/bin/config/language.ini",
                  "[LanguageSetting]\nLanguage=" + QByteArray::number(language) + "\n");
        HostSupportConfig::SetProduct(product);
        qputenv("GNSS_SERIAL_PORTS", ports.toLocal8Bit());
        Reopen();
    }
    ~WindowTest()
    {
        window.reset();
        if (m_codec == Codec::Fake) {
            FakeCodec::Remove();
        }
        QFile::remove(decoder);
        HostSupportConfig::SetProduct(0);
    }
    WindowTest(const WindowTest&) = delete;
    WindowTest& operator=(const WindowTest&) = delete;

    /// Another window in the place of this one, which goes after the new one has come.
    void Reopen() { window = std::make_unique<GnssWindow>(QStringLiteral("Gnss"), 0, nullptr); }

    void OpenPort(const QString& port) const
    {
        window->SlotChangePort(port);
        window->SlotSwitchPort();
    }

    QMdiArea* Area() const { return qobject_cast<QMdiArea*>(window->centralWidget()); }

    /// Class names of the open views, oldest first.
    QStringList Views() const
    {
        QStringList names;
        for (const QMdiSubWindow* subWindow : Area()->subWindowList(QMdiArea::CreationOrder)) {
            names.append(subWindow->widget()->metaObject()->className());
        }
        return names;
    }
    QMdiSubWindow* SubWindow(const char* className) const
    {
        for (QMdiSubWindow* subWindow : Area()->subWindowList()) {
            if (subWindow->widget() != nullptr && subWindow->widget()->inherits(className)) {
                return subWindow;
            }
        }
        return nullptr;
    }

    QTreeWidgetItem* TreeItem(const QString& label) const
    {
        auto* tree = window->findChild<QTreeWidget*>();
        return tree->findItems(label, Qt::MatchExactly | Qt::MatchRecursive).value(0);
    }
    void Click(const QString& label) const { window->SlotCtrlPanelItemClicked(TreeItem(label), 0); }

    /// The tool-bar button with this tool tip.
    QPushButton* Button(const QString& toolTip) const
    {
        for (QPushButton* button : window->findChildren<QPushButton*>()) {
            if (button->toolTip() == toolTip) {
                return button;
            }
        }
        return nullptr;
    }

    /// The status log without the times.
    QStringList Status() const
    {
        QStringList lines = window->findChild<QTextEdit*>()->toPlainText().split('\n', Qt::SkipEmptyParts);
        return lines.replaceInStrings(QRegularExpression("^\\[\\d\\d:\\d\\d:\\d\\d\\] "), QString());
    }

    /// Raw captures under the application directory, oldest first.
    QStringList RawCaptures() const
    {
        QStringList names = QDir(captures).entryList(QDir::Files);
        // By the time in the name: the port's number comes before it.
        std::sort(names.begin(), names.end(), [](const QString& left, const QString& right) {
            return left.mid(left.indexOf('_')) < right.mid(right.indexOf('_'));
        });
        return names.replaceInStrings(QRegularExpression("^"), captures);
    }

    const QString application = QCoreApplication::applicationDirPath();
    const QString captures = application + "/GnssData/";
    const QString decoder = application + "/Source-Datas/bin/libpgnss_decoder.dll";
    const QString trees = application + "/Source-Datas/config/1";
    std::unique_ptr<GnssWindow> window;

private:
    Codec m_codec;
};

/// A window with its port open on a pseudo-terminal.
class LineTest : public Pty, public WindowTest {
public:
    explicit LineTest(int product = 0) : WindowTest(product, 2, path) { OpenPort(path); }
};
