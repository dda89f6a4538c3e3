// SPDX-License-Identifier: MIT
#include "host/app/Components.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>

#ifdef Q_OS_UNIX
#include <dlfcn.h>
#endif

namespace {

QString Tr(const char* text)
{
    return QCoreApplication::translate("Components", text);
}

} // namespace

QString CodecFile(const QString& applicationDir)
{
    return QDir::cleanPath(applicationDir + QStringLiteral("/Source-Datas/bin/GnssUtils.dll"));
}

QString ArchiverFile(const QString& currentDir)
{
    return QDir::cleanPath(currentDir + QStringLiteral("/Source-Datas/bin/7zr.exe"));
}

bool IsLibraryLoaded(const QString& file)
{
#ifdef Q_OS_UNIX
    void* handle = dlopen(QFile::encodeName(file).constData(), RTLD_LAZY | RTLD_NOLOAD);
    if (handle) {
        dlclose(handle);
    }
    return handle != nullptr;
#else
    return QLibrary(file).isLoaded();
#endif
}

ComponentStatus CheckLibrary(const QString& file)
{
    ComponentStatus status{file, false, QString()};
    if (!QFileInfo::exists(file)) {
        status.reason = Tr(QT_TRANSLATE_NOOP("Components", "the file is missing"));
        return status;
    }
    if (IsLibraryLoaded(file)) {
        status.good = true;
        return status;
    }
    QLibrary library(file);
    if (library.load()) {
        library.unload();
        status.reason = Tr(QT_TRANSLATE_NOOP("Components", "the plug-in has not loaded it"));
    } else {
        status.reason = library.errorString();
    }
    return status;
}

ComponentStatus CheckProgram(const QString& file)
{
    const QFileInfo info(file);
    ComponentStatus status{file, info.isFile() && info.isExecutable(), QString()};
    if (!status.good) {
        status.reason = info.exists() || info.isSymLink()
                            ? Tr(QT_TRANSLATE_NOOP("Components", "the file is not a program"))
                            : Tr(QT_TRANSLATE_NOOP("Components", "the file is missing"));
    }
    return status;
}
