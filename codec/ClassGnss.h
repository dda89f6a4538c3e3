#pragma once

#include <QtGlobal>

/// The codec library, loaded at run time. Each wrapper looks its symbol up by name at every call; a missing
/// one is a line in the debug log and the call has no effect. After UnloadCodec every wrapper fails so.
namespace ClassGnss {

/// Size of every sender's frame buffer, and the longest frame.
constexpr quint32 maxFrameLength = 15000;

/// Id with which a ready frame passes through the codec.
constexpr quint32 passThroughId = 512;

/// Loads <application directory>/Source-Datas/bin/GnssUtils.dll and initialises it.
void InitGnssUtils();

/// Unloads the library.
void UnloadCodec();

/// Whether the library is loaded.
bool CodecLoaded();

void RegGnssCallbacks(quint32 type, void (*callback)(const void* data, int length));
void RegLogHandle(void* handler);

/// The library's version, or 0 when it cannot be asked.
int GetLibVersion();

void SetChipType(quint32 productNumber);
void GnssDecode(const quint8* bytes, quint32 count);

/// Builds the frame of a command in `out` and gives its length. For the AT product the frame is replaced by
/// its AT text, unless it is passed through. A negative result means that nothing may be sent; 0 is an
/// empty send.
int GnssEncode(quint32 commandId, const void* payload, quint32 payloadLength, void* out, quint32 outSize);

void GnssSleepSwitch(quint32 flag);

/// East, north and up in metres of `position` seen from `reference`. The order of the elements is the
/// caller's. `enu` stays as it was when the codec is missing.
void Lla2Enu(const double reference[3], const double position[3], double enu[3]);

void DeinitGnss(quint32 flag);

/// Replaces the frame of `length` bytes in `out` by its AT text. Returns that text's length, or 0 when it
/// would be longer than a frame may be.
int WrapAtCommand(void* out, int length);

} // namespace ClassGnss
