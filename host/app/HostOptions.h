// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

/// What the command line asks of the host. Values that are not given leave the stored setting as it is.
struct HostOptions {
    std::optional<int> product;  ///< 27, 31; every other number is the default product
    std::optional<int> language; ///< 1 English, 2 Chinese
    bool noReceiver = false;
    bool idle = false;   ///< the virtual receiver waits for a start command
    bool timing = false; ///< print the start time and the memory in use
    bool help = false;
    bool version = false;
    QString receiver; ///< program of the virtual receiver; empty for the one beside the host
    QString port;     ///< port to open in place of the virtual receiver's
    QString capture;  ///< file that the virtual receiver plays
    QString speed;    ///< playing speed, a positive decimal number; empty when not given
    QStringList receiverArguments;
    int station = 0; ///< virtual receivers for the production windows
    bool noService = false;
    QString service; ///< program of the assistance service; empty for the one beside the host
    QStringList serviceArguments;
    int headlessSeconds = 0; ///< 0: with a user
    QString output;          ///< folder for what a headless run leaves; empty for one named by the time
    QString plugin;          ///< library to load; empty for the one beside the host
    QSize size;              ///< size of the window; invalid when not given
};

struct HostOptionsResult {
    HostOptions options;
    QString error; ///< empty when the command line is good
};

/// Reads the command line; `arguments` begins with the program's name. Needs no application object.
HostOptionsResult ParseHostOptions(const QStringList& arguments);

/// The text of `--help`. Needs an application object.
QString HostOptionsHelp();
