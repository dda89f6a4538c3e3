// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>
#include <QTcpServer>

/// An HTTPS service on loopback that keeps each request and gives one answer. The workbench is pointed at it while
/// it lives.
class StandInService : public QTcpServer {
public:
    StandInService()
    {
        listen(QHostAddress::LocalHost);
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setCaCertificates(QSslCertificate::fromPath(QStringLiteral(SERVICE_CERTIFICATE)));
        QSslConfiguration::setDefaultConfiguration(configuration);
        QDir().mkpath(QFileInfo(IniPath()).path());
        QFile ini(IniPath());
        if (ini.open(QIODevice::WriteOnly)) {
            ini.write("[Service]\nhost=127.0.0.1:" + QByteArray::number(serverPort()) +
                      "\nappid=qfixdemo1\nkey=" + Key() + "\n");
        }
    }
    ~StandInService() override { QFile::remove(IniPath()); }

    static QByteArray Key() { return "7C21E9B04F6A3D58A1B7C6E02D94F83B5E1076DA3C8F42B9D06E7A15F3C2984B"; }

    /// The answer to the next requests.
    void AnswerWith(const QByteArray& status, const QByteArray& body)
    {
        m_answer = "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) +
                   "\r\nConnection: close\r\n\r\n" + body;
    }

    QList<QByteArray> requests; ///< up to their first empty line

protected:
    void incomingConnection(qintptr handle) override
    {
        auto* socket = new QSslSocket(this);
        socket->setSocketDescriptor(handle);
        socket->setLocalCertificate(QStringLiteral(SERVICE_CERTIFICATE));
        socket->setPrivateKey(QStringLiteral(SERVICE_KEY), QSsl::Ec);
        connect(socket, &QSslSocket::readyRead, this, [this, socket] {
            const QByteArray text = socket->peek(socket->bytesAvailable());
            const int end = text.indexOf("\r\n\r\n");
            if (end < 0) {
                return;
            }
            socket->readAll();
            // What follows the empty line that the authorisation value makes is no request of its own.
            if (!socket->property("answered").toBool()) {
                socket->setProperty("answered", true);
                requests.append(text.left(end));
                socket->write(m_answer);
                socket->disconnectFromHost();
            }
        });
        socket->startServerEncryption();
    }

private:
    static QString IniPath()
    {
        return QCoreApplication::applicationDirPath() + QStringLiteral("/Source-Datas/bin/config/assist.ini");
    }

    QByteArray m_answer;
};
