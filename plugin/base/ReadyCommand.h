// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/CommandFrames.h"

#include <QByteArray>

/// The bytes of a ready frame.
QByteArray ReadyFrameBytes(protocol::ReadyFrame frame);

/// What a receiver of a product takes for a ready frame: for the AT product its AT text with the line end, where
/// it has one, else the frame.
QByteArray ReadyCommandBytes(protocol::ReadyFrame frame, int product);
