// SPDX-License-Identifier: MIT
// The HMAC functions are deprecated since OpenSSL 3.
#define OPENSSL_API_COMPAT 10100

#include "assist/AssistRequest.h"

#include "base/BoundsChecked.h"

#include <QDebug>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

namespace {

constexpr std::size_t rawStringSize = 128;
constexpr int signatureSize = 256;
constexpr int zoneSeconds = 28800;
constexpr quint32 maxConstellation = 31;

void Log(const char* text)
{
    qDebug().nospace().noquote() << text;
}

/// HMAC-SHA256 of a text; -1 after a line in the debug log when it failed.
int CalcHmac(const AuthInfo& auth, const char* text, int length, QByteArray& digest)
{
    const std::unique_ptr<HMAC_CTX, void (*)(HMAC_CTX*)> context(HMAC_CTX_new(), HMAC_CTX_free);
    if (context == nullptr) {
        Log("HMAC_CTX_new failed");
        return -1;
    }
    const int keyLength = std::min(static_cast<int>(auth.keyLen), auth.key.size());
    if (HMAC_Init_ex(context.get(), auth.key.constData(), keyLength, EVP_sha256(), nullptr) != 1) {
        Log("HMAC_Init_ex failed");
        return -1;
    }
    if (HMAC_Update(context.get(), reinterpret_cast<const unsigned char*>(text),
                    static_cast<std::size_t>(length)) != 1) {
        Log("HMAC_Update failed");
        return -1;
    }
    unsigned char value[EVP_MAX_MD_SIZE];
    unsigned int valueLength = 0;
    if (HMAC_Final(context.get(), value, &valueLength) != 1) {
        Log("HMAC_Final failed");
        return -1;
    }
    digest = QByteArray(reinterpret_cast<const char*>(value), static_cast<int>(valueLength));
    return 0;
}

/// The signature of a text in Base64 without line feeds, or an empty text.
QByteArray Signature(const AuthInfo& auth, const char* text, int length)
{
    QByteArray digest;
    if (CalcHmac(auth, text, length, digest) != 0) {
        return {};
    }
    QByteArray signature = digest.toBase64();
    if (signature.size() >= signatureSize) {
        return {};
    }
    signature.replace('\n', QByteArray());
    return signature;
}

} // namespace

bool IsValidPeriod(quint32 days)
{
    constexpr quint32 periods[] = {1, 3, 7, 14, 28};
    return std::find(std::begin(periods), std::end(periods), days) != std::end(periods);
}

bool IsValid(const AgnssRequestPara& para)
{
    return para.constellation >= 1 && para.constellation <= maxConstellation && para.datatype != 0;
}

qint64 AssistTimestamp(const QDateTime& now)
{
    const QDateTime localEpoch(QDate(1970, 1, 1), QTime(0, 0));
    return now.addSecs(-zoneSeconds).toMSecsSinceEpoch() - localEpoch.toMSecsSinceEpoch();
}

int FormatPgnssReqStr(char* query, std::size_t size, quint32 period)
{
    const int length = period == kDefaultPeriod ? sprintf_s(query, size, "%s", "")
                                                : sprintf_s(query, size, "period=%d", static_cast<int>(period));
    if (length < 0) {
        qDebug().nospace().noquote() << "FormatPgnssReqStr: join period failed: " << length;
        return AssistQueryFailed;
    }
    return AssistDone;
}

int FormatAgnssReqStr(char* query, std::size_t size, const AgnssRequestPara& para)
{
    if (sprintf_s(query, size, "%s", "") < 0) {
        return AssistQueryFailed;
    }
    int used = 0;
    if (para.constellation != kAllConstellations) {
        used = sprintf_s(query, size, "constellation=%d", static_cast<int>(para.constellation));
        if (used < 0) {
            return AssistQueryFailed;
        }
    }
    if (para.datatype != kAllDataTypes &&
        sprintf_s(query + used, size - static_cast<std::size_t>(used), "%sdatatype=%d", used > 0 ? "&" : "",
                  static_cast<int>(para.datatype)) < 0) {
        return AssistQueryFailed;
    }
    return AssistDone;
}

QString PgnssUrlQuery(quint32 period)
{
    return period == kDefaultPeriod ? QString() : QLatin1String("?period=") + QString::number(period);
}

QString AgnssUrlQuery(const AgnssRequestPara& para)
{
    const QString constellation = QLatin1String("constellation=") + QString::number(para.constellation);
    const QString dataType = QLatin1String("datatype=") + QString::number(para.datatype);
    if (para.datatype == kAllDataTypes) {
        return para.constellation == kAllConstellations ? QString() : QLatin1Char('?') + constellation;
    }
    return para.constellation == kAllConstellations
               ? QLatin1Char('?') + dataType
               : QLatin1Char('?') + constellation + QLatin1Char('&') + dataType;
}

int GenAuthStr(char* authString, std::size_t size, const ServerInfo& server, const AuthInfo& auth,
               const char* query)
{
    char raw[rawStringSize] = {};
    const auto timestamp = static_cast<long long>(auth.timestamp);
    const int rawLength = sprintf_s(raw, sizeof(raw), "GET&%s&%s&&appid=%s&timestamp=%lld",
                                    server.path.constData(), query, auth.appid.constData(), timestamp);
    if (rawLength < 1) {
        Log("GenAuthStr: join raw str failed");
        return AssistRawStringFailed;
    }
    const QByteArray signature = Signature(auth, raw, rawLength);
    if (signature.isEmpty()) {
        Log("GenAuthStr: calc hmac value failed");
        return AssistSignatureFailed;
    }
    if (static_cast<std::size_t>(signature.size()) >= size) {
        qDebug().nospace().noquote() << "GenAuthStr: signLen too long " << signature.size();
        return AssistTextFailed;
    }
    // The line end belongs to the value.
    if (sprintf_s(authString, size, "HMAC-SHA256 appid=%s,timestamp=%lld,signature=%s\r\n", auth.appid.constData(),
                  timestamp, signature.constData()) < 0) {
        Log("GenAuthStr: sprintf_s fail");
        return AssistTextFailed;
    }
    return AssistDone;
}

int GenHttpRequest(char* text, std::size_t size, const ServerInfo& server, const char* query,
                   const char* authString)
{
    const std::size_t urlSize = std::strlen(server.path.constData()) + std::strlen(query) + 2;
    const std::unique_ptr<char[]> url(new (std::nothrow) char[urlSize]);
    if (url == nullptr) {
        Log("GenHttpRequest: malloc url fail");
        return AssistNoMemory;
    }
    if (sprintf_s(url.get(), urlSize, "%s?%s", server.path.constData(), query) < 0) {
        Log("GenHttpRequest: gen url fail");
        return AssistTextFailed;
    }
    if (sprintf_s(text, size, "GET %s HTTP/1.1\r\nHOST: %s\r\n%s\r\n", url.get(), server.host.constData(),
                  authString) < 0) {
        Log("GenHttpRequest: sprintf_s fail");
        return AssistTextFailed;
    }
    qDebug().nospace().noquote() << "Request:\r\n" << text;
    return AssistDone;
}

QNetworkReply* SendSignedRequest(QNetworkAccessManager* manager, const ServerInfo& server, const AuthInfo& auth,
                                 const char* query, const QString& urlQuery)
{
    char authString[kAuthSize] = {};
    char text[kRequestSize] = {};
    if (GenAuthStr(authString, sizeof(authString), server, auth, query) != AssistDone ||
        GenHttpRequest(text, sizeof(text), server, query, authString) != AssistDone || manager == nullptr) {
        return nullptr;
    }
    const QString url =
        QLatin1String("https://") + QString::fromUtf8(server.host) + QString::fromUtf8(server.path) + urlQuery;
    QNetworkRequest request(QUrl(url, QUrl::TolerantMode));
    request.setHeader(QNetworkRequest::ContentDispositionHeader, QStringLiteral("attachment;filename=EE.dat"));
    request.setRawHeader(QByteArrayLiteral("X-Requset-ID"), auth.uniqID);
    request.setRawHeader(QByteArrayLiteral("Authorization"), authString);
    return manager->get(request);
}
