// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/AgnssTags.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <cstddef>

class QNetworkAccessManager;
class QNetworkReply;

// The signed request that both assistance windows send to the assistance service. The texts below are UTF-8.

/// Result codes of the functions that format and sign.
enum AssistResult {
    AssistDone = 0,
    AssistNoMemory = 1001,        ///< no memory for the URL text
    AssistQueryFailed = 1004,     ///< the query string could not be formatted
    AssistRawStringFailed = 1005, ///< the string to sign could not be formatted
    AssistSignatureFailed = 1006, ///< the HMAC or its Base64 form failed
    AssistTextFailed = 1007,      ///< a text did not fit or could not be formatted
};

struct ServerInfo {
    QByteArray host;    ///< may hold a port
    quint16 port = 443; ///< stored, and not used to build the URL
    QByteArray path;
    quint64 reserved = 0;
};

struct AuthInfo {
    QByteArray appid;
    QByteArray key;     ///< used as it stands, not decoded from hexadecimal; never logged
    quint32 keyLen = 0; ///< bytes of the key, at most its length
    QByteArray uniqID = QByteArrayLiteral("uniqID");
    qint64 timestamp = 0;
};

/// Data of the online request.
struct AgnssRequestPara {
    quint32 constellation = 0; ///< bit mask, valid from 1 to 31
    quint32 datatype = 0;      ///< bit mask, valid when not 0
};

constexpr std::size_t kQuerySize = 64;
constexpr std::size_t kAuthSize = 256;
constexpr std::size_t kRequestSize = 1024;

constexpr quint32 kDefaultPeriod = 7;                       ///< days; left out of the query
constexpr quint32 kAllConstellations = protocol::kAllAgnss; ///< left out of the query
constexpr quint32 kAllDataTypes = protocol::kAllAgnssData;  ///< left out of the query

/// Whether the service knows seeds of so many days: 1, 3, 7, 14 or 28.
bool IsValidPeriod(quint32 days);
bool IsValid(const AgnssRequestPara& para);

/// The request's time in milliseconds. It is true UTC on a machine in the zone UTC+8 and off by the zone's
/// difference from it elsewhere: the service counts with that.
qint64 AssistTimestamp(const QDateTime& now);

/// Writes the query that is signed. 0 or AssistQueryFailed.
int FormatPgnssReqStr(char* query, std::size_t size, quint32 period);
int FormatAgnssReqStr(char* query, std::size_t size, const AgnssRequestPara& para);

/// The query of the URL with its question mark, or nothing. It is written separately from the signed one.
QString PgnssUrlQuery(quint32 period);
QString AgnssUrlQuery(const AgnssRequestPara& para);

/// Writes the value of the authorisation header, with the CR LF that belongs to it. 0, AssistRawStringFailed,
/// AssistSignatureFailed or AssistTextFailed.
int GenAuthStr(char* authString, std::size_t size, const ServerInfo& server, const AuthInfo& auth,
               const char* query);

/// Writes the request as text for the debug log; it is never sent. 0, AssistNoMemory or AssistTextFailed.
int GenHttpRequest(char* text, std::size_t size, const ServerInfo& server, const char* query,
                   const char* authString);

/// Signs and sends a request. Null when it could not be formatted or signed, or when `manager` is null.
QNetworkReply* SendSignedRequest(QNetworkAccessManager* manager, const ServerInfo& server, const AuthInfo& auth,
                                 const char* query, const QString& urlQuery);
