// SPDX-License-Identifier: MIT
// Makes a certificate for the loopback address and its key in the named folder.
#include "service/Certificate.h"

#include <cstdio>

int main(int argc, char** argv)
{
    service::CertificateFiles files;
    const std::string error = argc == 2 ? service::EnsureCertificate(argv[1], files) : "usage: FOLDER";
    if (!error.empty()) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 1;
    }
    return 0;
}
