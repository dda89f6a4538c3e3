// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <dlfcn.h>

/// The fake codec as a test sees it: puts a variant into the place of the codec library and presses it.
class FakeCodec {
public:
    static QString CodecPath()
    {
        return QCoreApplication::applicationDirPath() + QStringLiteral("/Source-Datas/bin/GnssUtils.dll");
    }

    /// Installs the codec that lacks `missing`, or the whole one.
    static bool Install(const QString& missing = QStringLiteral("Nothing"))
    {
        Remove();
        QDir().mkpath(QFileInfo(CodecPath()).path());
        return QFile::copy(QStringLiteral(FAKE_CODEC_DIR "/fake_codec_%1.so").arg(missing), CodecPath());
    }

    static void Remove() { QFile::remove(CodecPath()); }

    /// The calls that the loaded codec has noted, a line each.
    static QStringList Calls()
    {
        auto function = Symbol<const char* (*)()>("FakeCalls");
        return QString(function != nullptr ? function() : "").split('\n', Qt::SkipEmptyParts);
    }

    static void SetEncodeResult(int result) { Symbol<void (*)(int)>("FakeSetEncodeResult")(result); }

    static void Emit(quint32 type, const void* data, int length)
    {
        if (auto function = Symbol<void (*)(quint32, const void*, int)>("FakeEmit")) {
            function(type, data, length);
        }
    }

    static void Emit(quint32 type, const QByteArray& bytes) { Emit(type, bytes.constData(), bytes.size()); }

    /// A symbol of the codec that is loaded now; looking it up keeps nothing loaded.
    template <typename Function> static Function Symbol(const char* name)
    {
        void* library = dlopen(QFile::encodeName(CodecPath()).constData(), RTLD_NOLOAD | RTLD_LAZY);
        if (library == nullptr) {
            return nullptr;
        }
        void* symbol = dlsym(library, name);
        dlclose(library);
        return reinterpret_cast<Function>(symbol);
    }
};
