// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace service {

/// The service's certificate and private key as PEM files.
struct CertificateFiles {
    std::string certificate; ///< self-signed, so it is the authority as well
    std::string key;
};

/// The files of a folder; made on first use, and anew when they are damaged, do not belong together or expire
/// within a week. They name localhost, 127.0.0.1 and ::1. Empty on success, else what is wrong.
std::string EnsureCertificate(const std::string& folder, CertificateFiles& files);

} // namespace service
