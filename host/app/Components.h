// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A file that the workbench takes up at run time, and what became of it.
struct ComponentStatus {
    QString file;
    bool good = false;
    QString reason; ///< why it is not in use; empty when it is
};

/// Where the codec lies for a program in `applicationDir`.
QString CodecFile(const QString& applicationDir);

/// Where the archiver lies for a process in `currentDir`.
QString ArchiverFile(const QString& currentDir);

/// Whether the library at `file` is mapped into this process; does not load it.
bool IsLibraryLoaded(const QString& file);

/// State of a library that the plug-in should have loaded by now. One that is not loaded is tried once, to learn
/// the reason, and let go again.
ComponentStatus CheckLibrary(const QString& file);

/// State of a program that is started when it is needed.
ComponentStatus CheckProgram(const QString& file);
