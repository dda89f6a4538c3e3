// SPDX-License-Identifier: MIT
#include "base/ReadyCommand.h"

QByteArray ReadyFrameBytes(protocol::ReadyFrame frame)
{
    const protocol::ReadyFrameRow& row = protocol::RowOf(frame);
    return QByteArray(reinterpret_cast<const char*>(row.bytes), static_cast<int>(row.Size()));
}

QByteArray ReadyCommandBytes(protocol::ReadyFrame frame, int product)
{
    const char* atText = protocol::RowOf(frame).atText;
    return product == protocol::kAtProduct && atText != nullptr ? QByteArray(atText) + "\r\n"
                                                                : ReadyFrameBytes(frame);
}
