// SPDX-License-Identifier: MIT
#pragma once

#include "assist/AssistRequest.h"

// The deployment's own values: group Service of Source-Datas/bin/config/assist.ini under the application
// directory, read anew at each call. Without the file they are empty and a request ends in a network error.

/// The service's host with the given path.
ServerInfo DeployedServer(const char* path);

/// Application id and key with the timestamp of `now`.
AuthInfo DeployedAuth(const QDateTime& now);
