// SPDX-License-Identifier: MIT
#include "assist/SeedDecoder.h"

#include <QCoreApplication>
#include <QLibrary>

namespace SeedDecoder {
namespace {

QLibrary* library = nullptr;

template <typename Function> Function Resolve(const char* symbol)
{
    // QLibrary::resolve would load a library that isn't.
    if (library == nullptr || !library->isLoaded()) {
        return nullptr;
    }
    return reinterpret_cast<Function>(library->resolve(symbol));
}

} // namespace

QString LibraryPath()
{
    return QCoreApplication::applicationDirPath() + QLatin1String("/Source-Datas/bin/libpgnss_decoder.dll");
}

bool Load()
{
    if (library == nullptr) {
        library = new QLibrary(LibraryPath());
    }
    return library->isLoaded() || library->load();
}

void Unload()
{
    if (library != nullptr) {
        library->unload();
        delete library;
        library = nullptr;
    }
}

std::optional<int> GetPgnssDataValidTime(const QString& seedPath, quint32& validStart, quint32& validEnd)
{
    auto function = Resolve<int (*)(const char*, quint32*, quint32*)>("GetPgnssDataValidTime");
    if (function == nullptr) {
        return std::nullopt;
    }
    return function(seedPath.toUtf8().constData(), &validStart, &validEnd);
}

std::optional<int> ParsePgnssData(const QString& seedPath, const QString& folder, quint32 time)
{
    auto function = Resolve<int (*)(const char*, const char*, quint32, int)>("ParsePgnssData");
    if (function == nullptr) {
        return std::nullopt;
    }
    return function(seedPath.toUtf8().constData(), folder.toUtf8().constData(), time, 1);
}

} // namespace SeedDecoder
