// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

/// The library that checks and expands a seed file, loaded once for the process. Its entry points are looked up by
/// name at every call.
namespace SeedDecoder {

/// <application directory>/Source-Datas/bin/libpgnss_decoder.dll
QString LibraryPath();

/// Loads the library, if it isn't yet. False when that fails.
bool Load();

void Unload();

/// Asks for the span of a seed in Unix seconds. The library's error code, 0 for success; nothing when the entry
/// point cannot be resolved.
std::optional<int> GetPgnssDataValidTime(const QString& seedPath, quint32& validStart, quint32& validEnd);

/// Expands a seed for a time in Unix seconds into files in `folder`. Result as above.
std::optional<int> ParsePgnssData(const QString& seedPath, const QString& folder, quint32 time);

} // namespace SeedDecoder
