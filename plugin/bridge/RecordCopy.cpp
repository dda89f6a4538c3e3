// SPDX-License-Identifier: MIT
#include "bridge/RecordCopy.h"

#include "base/BoundsChecked.h"

#include <QDebug>

#include <algorithm>

RecordCopy::RecordCopy(const void* data, int length, std::size_t largest, const char* viewName)
{
    if (data == nullptr || length <= 0) {
        return;
    }
    const std::size_t size = std::min(static_cast<std::size_t>(length), largest);
    m_bytes.resize(static_cast<int>(size));
    m_bytes.fill('\0');
    if (memcpy_s(m_bytes.data(), size, data, size) != 0) {
        qDebug().noquote().nospace() << "memcpy " << viewName << " callback buff error!";
    }
}

std::size_t RecordCopy::HeldEntries(std::size_t count, std::size_t offset, std::size_t entrySize) const
{
    if (Size() <= offset) {
        return 0;
    }
    return std::min(count, (Size() - offset) / entrySize);
}
