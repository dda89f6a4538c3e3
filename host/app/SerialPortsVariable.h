// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The environment variable that names ports which the system does not list; paths, ':' between them.
namespace SerialPortsVariable {

/// `value` with `path` in front, and once only.
QString With(const QString& value, const QString& path);

/// `value` without `path`.
QString Without(const QString& value, const QString& path);

/// Put `path` into the variable of this process, or take it out; the user's own entries stay.
void Add(const QString& path);
void Remove(const QString& path);

} // namespace SerialPortsVariable
