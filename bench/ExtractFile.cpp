// SPDX-License-Identifier: MIT
// Extracts the sentences of a file the way the window does: its own reads, its own output file.

#include "production/NmeaExtract.h"

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: ExtractFile FILE\n", stderr);
        return 2;
    }
    ExtractNmea(QString::fromLocal8Bit(argv[1]));
    return 0;
}
