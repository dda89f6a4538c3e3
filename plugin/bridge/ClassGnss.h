// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/LinkFrame.h"

#include <QtGlobal>

#include <cstddef>

/// The codec library, loaded at run time. Each wrapper looks its symbol up by name at every call; a missing
/// one is a line in the debug log and the call has no effect. After UnloadCodec every wrapper fails so.
namespace ClassGnss {

/// Size of every sender's frame buffer, and the longest frame.
constexpr quint32 maxFrameLength = protocol::kMaxFrameLength;

/// Id with which a ready frame passes through the codec.
constexpr quint32 passThroughId = protocol::CmdPassThrough;

/// Loads <application directory>/Source-Datas/bin/GnssUtils.dll and initialises it.
void InitGnssUtils();

/// Unloads the library.
void UnloadCodec();

/// Whether the library is loaded.
bool CodecLoaded();

/// Registers the callback of one GnssCbType; `length` in bytes.
void RegGnssCallbacks(quint32 type, void (*callback)(const void* data, int length));

/// Registers void (const char* file, int line, const char* function, const char* format, va_list arguments).
void RegLogHandle(void* handler);

/// The library's version, or 0 when it cannot be asked.
int GetLibVersion();

void SetChipType(quint32 productNumber);

/// Hands received bytes over, cut anywhere; the callbacks come from inside this call.
void GnssDecode(const quint8* bytes, quint32 count);

/// Builds the frame of a command in `out` and gives its length. For the AT product the frame is replaced by
/// its AT text, unless it is passed through. A negative result means that nothing may be sent; 0 is an
/// empty send.
int GnssEncode(quint32 commandId, const void* payload, quint32 payloadLength, void* out, quint32 outSize);

/// 0 before a series of injections, 1 after it: whether the codec lets the receiver sleep.
void GnssSleepSwitch(quint32 flag);

/// East, north and up in metres of `position` seen from `reference`. The order of the elements is the
/// caller's. `enu` stays as it was when the codec is missing.
void Lla2Enu(const double reference[3], const double position[3], double enu[3]);

/// Lla2Enu of `count` positions seen from one reference, with one look-up of the symbol. `enus` is zeroed first.
/// False, after one line in the debug log, when the codec is missing.
bool Lla2EnuMany(const double reference[3], const double (*positions)[3], double (*enus)[3], std::size_t count);

/// Nothing calls it; the library is unloaded without it.
void DeinitGnss(quint32 flag);

/// Replaces the frame of `length` bytes in `out` by its AT text. Returns that text's length, or 0 when it
/// would be longer than a frame may be.
int WrapAtCommand(void* out, int length);

} // namespace ClassGnss
