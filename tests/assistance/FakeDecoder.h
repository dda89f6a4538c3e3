#pragma once

#include "assist/SeedDecoder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <dlfcn.h>

#include <cstdint>

/// The fake seed decoder as a test sees it: in the decoder's place while it lives.
class FakeDecoder {
public:
    explicit FakeDecoder(const QString& missing = QStringLiteral("Nothing"))
    {
        const QString path = SeedDecoder::LibraryPath();
        SeedDecoder::Unload();
        QFile::remove(path);
        QDir().mkpath(QFileInfo(path).path());
        QFile::copy(QStringLiteral(FAKE_DECODER_DIR "/fake_decoder_") + missing + QStringLiteral(".so"), path);
    }
    ~FakeDecoder()
    {
        SeedDecoder::Unload();
        QFile::remove(SeedDecoder::LibraryPath());
    }
    FakeDecoder(const FakeDecoder&) = delete;
    FakeDecoder& operator=(const FakeDecoder&) = delete;

    static QStringList Calls()
    {
        auto function = Symbol<const char* (*)()>("FakeDecoderCalls");
        return QString::fromUtf8(function != nullptr ? function() : "").split('\n', Qt::SkipEmptyParts);
    }

    static void SetSpan(std::uint32_t start, std::uint32_t end)
    {
        if (auto function = Symbol<void (*)(std::uint32_t, std::uint32_t)>("FakeDecoderSpan")) {
            function(start, end);
        }
    }

    static void SetResults(int valid, int parse)
    {
        if (auto function = Symbol<void (*)(int, int)>("FakeDecoderResults")) {
            function(valid, parse);
        }
    }

private:
    template <typename Function> static Function Symbol(const char* name)
    {
        void* library = dlopen(QFile::encodeName(SeedDecoder::LibraryPath()).constData(), RTLD_NOLOAD | RTLD_LAZY);
        if (library == nullptr) {
            return nullptr;
        }
        void* symbol = dlsym(library, name);
        dlclose(library);
        return reinterpret_cast<Function>(symbol);
    }
};
