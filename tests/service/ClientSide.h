// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QMessageAuthenticationCode>

#include "service/RequestCheck.h"

// What a client does, made by other means than the service's own.

constexpr char kTestAppid[] = "qfixdemo1";
constexpr char kTestKey[] = "7C21E9B04F6A3D58A1B7C6E02D94F83B5E1076DA3C8F42B9D06E7A15F3C2984B";

inline service::Credentials TestCredentials()
{
    return {kTestAppid, kTestKey};
}

/// The authorization as the workbench sends it, without the line end at its end.
inline QByteArray Authorization(const QByteArray& path, const QByteArray& query, qint64 timestamp,
                                const QByteArray& appid = kTestAppid, const QByteArray& key = kTestKey)
{
    const QByteArray stamp = QByteArray::number(timestamp);
    const QByteArray raw = "GET&" + path + '&' + query + "&&appid=" + appid + "&timestamp=" + stamp;
    const QByteArray signature = QMessageAuthenticationCode::hash(raw, key, QCryptographicHash::Sha256).toBase64();
    return "HMAC-SHA256 appid=" + appid + ",timestamp=" + stamp + ",signature=" + signature;
}
