// SPDX-License-Identifier: MIT
#include "bridge/ClassGnss.h"

#include "base/BoundsChecked.h"
#include "protocol/LinkFrame.h"

#include "host/support/CProductVersion.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDebug>
#include <QLibrary>

#include <algorithm>

namespace ClassGnss {
namespace {

// Created once by each InitGnssUtils and never deleted.
QLibrary* library = nullptr;

void Log(const char* text)
{
    qDebug().nospace().noquote() << text;
}

/// Resolves a symbol. QLibrary::resolve would load the library again after an unload, so that is tested first.
template <typename Function> Function Resolve(const char* symbol)
{
    if (library == nullptr || !library->isLoaded()) {
        return nullptr;
    }
    return reinterpret_cast<Function>(library->resolve(symbol));
}

/// Calls an export without result, or logs its failure text.
template <typename... Types, typename... Arguments>
void Call(const char* symbol, const char* failureText, Arguments... arguments)
{
    auto function = Resolve<void (*)(Types...)>(symbol);
    if (function == nullptr) {
        Log(failureText);
        return;
    }
    function(arguments...);
}

} // namespace

void InitGnssUtils()
{
    const QString path = QCoreApplication::applicationDirPath() + QLatin1String("/Source-Datas/bin/GnssUtils.dll");
    library = new QLibrary(path);
    if (!library->load()) {
        Log("Load Gnss Dll fail!");
        return;
    }
    auto function = Resolve<int (*)()>("InitGnssUtils");
    if (function == nullptr || function() != 0) {
        Log("InitGnssTool fail!");
    }
}

void UnloadCodec()
{
    if (library != nullptr) {
        library->unload();
    }
}

bool CodecLoaded()
{
    return library != nullptr && library->isLoaded();
}

void RegGnssCallbacks(quint32 type, void (*callback)(const void* data, int length))
{
    Call<quint32, void*>("RegGnssCallbacks", "GnssRegCallBack fail!", type, reinterpret_cast<void*>(callback));
}

void RegLogHandle(void* handler)
{
    Call<void*>("RegLogHandle", "RegLogHandle fail!", handler);
}

int GetLibVersion()
{
    auto function = Resolve<int (*)()>("GetLibVersion");
    if (function == nullptr) {
        Log("GnssUtilsVersion fail!");
        return 0;
    }
    return function();
}

void SetChipType(quint32 productNumber)
{
    Call<quint32>("SetChipType", "SetChipSet failed!", productNumber);
}

// The failure texts of GnssDecode and GnssEncode name another function; they are known by that name.
void GnssDecode(const quint8* bytes, quint32 count)
{
    Call<const quint8*, quint32>("GnssDecode", "GnssRegCallBack fail!", bytes, count);
}

int GnssEncode(quint32 commandId, const void* payload, quint32 payloadLength, void* out, quint32 outSize)
{
    auto function = Resolve<int (*)(quint32, const void*, quint32, void*, quint32)>("GnssEncode");
    if (function == nullptr) {
        Log("GnssRegCallBack fail!");
        return -1;
    }
    Log("ClassGnss::GnssEncode --- ret:");
    int length = function(commandId, payload, payloadLength, out, outSize);
    if (length > 0 && static_cast<quint32>(length) > outSize) {
        qWarning().nospace() << "GnssEncode gives " << length << " bytes for a buffer of " << outSize;
        length = -1;
    }
    if (commandId != passThroughId && length >= 0 && CProductVersion::GetVersion() == protocol::kAtProduct) {
        length = WrapAtCommand(out, length);
    }
    qDebug().nospace().noquote() << "ClassGnss::GnssEncode --- ret:" << length;
    return length;
}

void GnssSleepSwitch(quint32 flag)
{
    Call<quint32>("GnssSleepSwitch", "GnssUiSleepSwitch failed!", flag);
}

void Lla2Enu(const double reference[3], const double position[3], double enu[3])
{
    Call<const double*, const double*, double*>("Lla2Enu", "GnssLla2Enu fail!", reference, position, enu);
}

bool Lla2EnuMany(const double reference[3], const double (*positions)[3], double (*enus)[3], std::size_t count)
{
    std::fill(&enus[0][0], &enus[0][0] + 3 * count, 0.0);
    auto function = Resolve<void (*)(const double*, const double*, double*)>("Lla2Enu");
    if (function == nullptr) {
        Log("GnssLla2Enu fail!");
        return false;
    }
    for (std::size_t i = 0; i < count; ++i) {
        function(reference, positions[i], enus[i]);
    }
    return true;
}

void DeinitGnss(quint32 flag)
{
    Call<quint32>("DeinitGnss", "UnregCallBack fail!", flag);
}

int WrapAtCommand(void* out, int length)
{
    const QByteArray digits = QByteArray(static_cast<const char*>(out), length).toHex();
    QByteArray text = (QLatin1String(protocol::kAtHexCommand) + QString::fromLatin1(digits)).toLocal8Bit();
    text.append('\r');
    text.append('\n');
    if (static_cast<quint32>(text.size()) > maxFrameLength) {
        Log("AtCmdStr len error");
        return 0;
    }
    if (memcpy_s(out, static_cast<std::size_t>(text.size()), text.constData(),
                 static_cast<std::size_t>(text.size())) != 0) {
        Log("memcpy AtCmdStr failed");
        return 0;
    }
    return text.size();
}

} // namespace ClassGnss
