#pragma once

#include "BoxAnswerer.h"
#include "FakeCodec.h"

#include "main/GnssWindow.h"
#include "main/ProcessState.h"

#include "HostSupportConfig.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QTextEdit>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QtTest>

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
        CleanFolders();
        if (m_codec == Codec::Fake) {
            FakeCodec::Install();
        }
        InstallDecoder();
        InstallTree();
        WriteLanguage(language);
        HostSupportConfig::SetProduct(product);
        qputenv("GNSS_SERIAL_PORTS", ports.toLocal8Bit());
        window = std::make_unique<GnssWindow>(QStringLiteral("Gnss"), 0, nullptr);
    }
    ~WindowTest()
    {
        window.reset();
        if (m_codec == Codec::Fake) {
            FakeCodec::Remove();
        }
        QFile::remove(DecoderPath());
        HostSupportConfig::SetProduct(0);
    }
    WindowTest(const WindowTest&) = delete;
    WindowTest& operator=(const WindowTest&) = delete;

    static void CleanFolders()
    {
        const QStringList entries = QDir().entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        for (const QString& entry : entries) {
            QFileInfo(entry).isDir() ? QDir(entry).removeRecursively() : QFile::remove(entry);
        }
        QDir(QCoreApplication::applicationDirPath() + "/GnssData").removeRecursively();
    }

    static QString DecoderPath()
    {
        return QCoreApplication::applicationDirPath() + "/Source-Datas/bin/libpgnss_decoder.dll";
    }

    /// Puts a library without the entry points into the seed decoder's place: the window would tell in a box
    /// that there is none.
    static void InstallDecoder()
    {
        QDir().mkpath(QFileInfo(DecoderPath()).path());
        QFile::copy(QStringLiteral(FAKE_CODEC_DIR "/fake_codec_Nothing.so"), DecoderPath());
    }

    static void InstallTree()
    {
        const QString folder = QCoreApplication::applicationDirPath() + "/Source-Datas/config/1";
        QDir().mkpath(folder);
        for (const char* name : {"/GnssTree.xml", "/GnssTree_en.xml"}) {
            QFile::remove(folder + name);
            QFile::copy(QStringLiteral(GNSS_SOURCE_DIR "/host/config") + name, folder + name);
        }
    }

    static void WriteLanguage(int language)
    {
        QDir().mkpath("Source-Datas/bin/config");
        QFile file("Source-Datas/bin/config/language.ini");
        if (file.open(QIODevice::WriteOnly)) {
            file.write("[LanguageSetting]\nLanguage=" + QByteArray::number(language) + "\n");
        }
    }

    QMdiArea* Area() const { return qobject_cast<QMdiArea*>(window->centralWidget()); }

    /// Class names of the open views, oldest first.
    QStringList Views() const
    {
        QStringList names;
        const QList<QMdiSubWindow*> subWindows = Area()->subWindowList(QMdiArea::CreationOrder);
        for (const QMdiSubWindow* subWindow : subWindows) {
            names.append(subWindow->widget()->metaObject()->className());
        }
        return names;
    }

    QMdiSubWindow* SubWindow(const char* className) const
    {
        const QList<QMdiSubWindow*> subWindows = Area()->subWindowList();
        for (QMdiSubWindow* subWindow : subWindows) {
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
        const QList<QPushButton*> buttons = window->findChildren<QPushButton*>();
        for (QPushButton* button : buttons) {
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
        lines.replaceInStrings(QRegularExpression("^\\[\\d\\d:\\d\\d:\\d\\d\\] "), QString());
        return lines;
    }

    /// Raw captures under the application directory, oldest first.
    static QStringList RawCaptures()
    {
        QDir folder(QCoreApplication::applicationDirPath() + "/GnssData");
        QStringList paths;
        const QStringList names = folder.entryList(QDir::Files, QDir::Name);
        for (const QString& name : names) {
            paths.append(folder.filePath(name));
        }
        return paths;
    }

    static QByteArray Content(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<GnssWindow> window;

private:
    Codec m_codec;
};
