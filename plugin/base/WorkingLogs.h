// SPDX-License-Identifier: MIT
#pragma once

/// Removes the working logs under the current directory but for those that this process writes at the moment,
/// which stay and are written on. Archives stay too.
void ClearWorkingLogs();
