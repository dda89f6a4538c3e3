// SPDX-License-Identifier: MIT
#include "ClientSide.h"

#include "service/AssistServer.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslSocket>
#include <QTemporaryDir>
#include <QtTest>

#include <thread>

using namespace service;

namespace {

/// A service on a thread of its own.
class RunningService {
public:
    RunningService(const QString& folder, const std::vector<const char*>& faults)
    {
        ServerSettings settings;
        std::string error = EnsureCertificate(folder.toStdString(), settings.certificate);
        settings.credentials = TestCredentials();
        for (const char* fault : faults) {
            settings.faults.Add(fault, error);
        }
        m_server = std::make_unique<AssistServer>(settings);
        if (error.empty()) {
            error = m_server->Listen();
        }
        if (!error.empty()) {
            qFatal("%s", error.c_str());
        }
        m_thread = std::thread([this] { m_server->Run(); });
    }
    ~RunningService()
    {
        m_server->Stop();
        m_thread.join();
    }
    RunningService(const RunningService&) = delete;
    RunningService& operator=(const RunningService&) = delete;
    quint16 Port() const { return static_cast<quint16>(m_server->Port()); }

private:
    std::unique_ptr<AssistServer> m_server;
    std::thread m_thread;
};

struct Answer {
    QNetworkReply::NetworkError error = QNetworkReply::NoError;
    int status = 0;
    QByteArray body;
    int finished = 0;
};

} // namespace

class ServiceHttpsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(QSslSocket::supportsSsl(), "this Qt has no TLS");
        Serve({});
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setCaCertificates(QSslCertificate::fromPath(m_folder.filePath("certificate.pem")));
        QSslConfiguration::setDefaultConfiguration(configuration);
    }

    void RefusalsHaveABody()
    {
        Serve({});
        const auto refused = [](const Answer& answer, int status) {
            return answer.status == status && answer.error != QNetworkReply::NoError && answer.body.size() > 5;
        };
        QVERIFY(refused(Get(kSeedPath, "", "wrong key"), 403));
        QVERIFY(refused(Get(kSeedPath, "period=5"), 400));
        QVERIFY(refused(Get("/other", ""), 404));
        QVERIFY(Raw(QByteArray("GET ") + kSeedPath + " HTTP/1.1\r\nHost: localhost\r\n\r\n")
                    .startsWith("HTTP/1.1 401 "));
    }

    // The authorization's own line end makes the headers behind it a second request, which nobody answers.
    void OnTheWire()
    {
        Serve({});
        const QByteArray head = QByteArray("GET ") + kRecordsPath +
                                " HTTP/1.1\r\nHost: localhost\r\nAuthorization: " +
                                Authorization(kRecordsPath, "", QDateTime::currentMSecsSinceEpoch()) + "\r\n\r\n";
        const QByteArray rest = "Connection: Keep-Alive\r\nAccept-Encoding: gzip, deflate\r\n"
                                "Accept-Language: en,*\r\nUser-Agent: Mozilla/5.0\r\n\r\n";
        for (const QByteArray& sent : {head + rest, head, head + head}) {
            const QByteArray answer = Raw(sent);
            QVERIFY2(answer.startsWith("HTTP/1.1 200 "), answer.left(100));
            QCOMPARE(answer.count("HTTP/1."), 1);
            const int end = answer.indexOf("\r\n\r\n");
            const QByteArray headers = answer.left(end).toLower();
            QVERIFY(headers.contains("\r\nconnection: close"));
            QVERIFY(headers.contains("\r\ncontent-length: " + QByteArray::number(answer.size() - end - 4)));
        }
    }

    void Faults()
    {
        Serve({"cut=1000"});
        Answer answer = Get(kSeedPath, "");
        QCOMPARE(answer.error, QNetworkReply::RemoteHostClosedError);
        QVERIFY(answer.body.size() <= 1000);
        // A request that is refused anyway gets its refusal and not the fault.
        Serve({"empty"});
        QCOMPARE(Get(kSeedPath, "", "wrong").status, 403);
        QVERIFY(Get(kSeedPath, "").body.isEmpty());
        Serve({"slow=300", "drip=8000", "truncated=4000"});
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(Get(kRecordsPath, "").body.size(), 4000);
        QVERIFY(timer.elapsed() >= 800);
    }

    void SilenceEndsWithTheService()
    {
        Serve({"silent"});
        QNetworkReply* reply = Ask(kRecordsPath, "");
        QTest::qWait(500);
        QVERIFY(!reply->isFinished());
        m_service.reset(); // does not wait for the silence to end
        QTRY_VERIFY(reply->isFinished());
        QVERIFY(reply->error() != QNetworkReply::NoError || reply->readAll().isEmpty());
        reply->deleteLater();
        Serve({});
    }

    void ManyAtOnce()
    {
        Serve({"slow=100"});
        QList<QNetworkReply*> replies;
        for (int i = 0; i < 12; ++i) {
            replies << Ask(i % 2 == 0 ? kRecordsPath : kSeedPath, "");
        }
        for (QNetworkReply* reply : replies) {
            QTRY_VERIFY_WITH_TIMEOUT(reply->isFinished(), 20000);
            QCOMPARE(reply->error(), QNetworkReply::NoError);
            QVERIFY(reply->bytesAvailable() > 1000);
            reply->deleteLater();
        }
    }

    void NoiseOnThePort()
    {
        Serve({});
        QTcpSocket plain;
        plain.connectToHost("127.0.0.1", m_service->Port());
        QVERIFY(plain.waitForConnected(5000));
        plain.write(QByteArray(5000, 'x'));
        plain.waitForDisconnected(10000);
        Raw(QByteArray("\0\xff\r\n\r\n", 6));
        Raw("GET " + QByteArray(200000, 'a') + " HTTP/1.1\r\n\r\n");
        Raw(QByteArray("GET ") + kSeedPath + "%zz?%00 HTTP/1.1\r\nContent-Length: -5\r\n\r\n");
        QCOMPARE(Get(kSeedPath, "").status, 200);
    }

    void TheCertificateIsKeptAndRenewed()
    {
        QTemporaryDir folder;
        CertificateFiles files;
        const auto read = [](const std::string& path) {
            QFile file(QString::fromStdString(path));
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        const std::string where = folder.path().toStdString();
        QVERIFY(EnsureCertificate(where, files).empty());
        const QByteArray first = read(files.certificate);
        QVERIFY(EnsureCertificate(where, files).empty());
        QCOMPARE(read(files.certificate), first);
        const QSslCertificate certificate(first);
        QVERIFY(certificate.subjectAlternativeNames().values(QSsl::DnsEntry).contains("localhost"));
        QVERIFY(certificate.expiryDate() > QDateTime::currentDateTime().addDays(3000));
        QVERIFY((QFile::permissions(QString::fromStdString(files.key)) & (QFile::ReadOther | QFile::ReadGroup)) ==
                0);
        // Damaged, or with another's key.
        for (const QByteArray& text :
             {QByteArray("nothing"), first.left(300), read(m_folder.filePath("certificate.pem").toStdString())}) {
            QFile file(QString::fromStdString(files.certificate));
            QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(text) == text.size());
            file.close();
            QVERIFY(EnsureCertificate(where, files).empty());
            QVERIFY(read(files.certificate).startsWith("-----BEGIN CERTIFICATE") &&
                    read(files.certificate) != text);
        }
        QVERIFY(!EnsureCertificate(where + "/none", files).empty());

        Credentials made;
        Credentials again;
        QVERIFY(LoadCredentials(where, made).empty() && LoadCredentials(where, again).empty());
        QVERIFY(made.appid.size() == 9 && made.key.size() == 64 && made.key == again.key);
        QFile file(folder.filePath("client.conf"));
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write("appid=x\nkey=abc\n") > 0);
        file.close();
        QVERIFY(!LoadCredentials(where, again).empty());
    }

private:
    void Serve(const std::vector<const char*>& faults)
    {
        m_service.reset();
        m_service = std::make_unique<RunningService>(m_folder.path(), faults);
    }
    /// The request as the workbench sends it, with the line end in the authorization.
    QNetworkReply* Ask(const QByteArray& path, const QByteArray& query, const QByteArray& key = kTestKey)
    {
        QNetworkRequest request(QUrl("https://127.0.0.1:" + QString::number(m_service->Port()) + path +
                                     (query.isEmpty() ? QByteArray() : '?' + query)));
        request.setHeader(QNetworkRequest::ContentDispositionHeader, "attachment;filename=EE.dat");
        request.setRawHeader("X-Requset-ID", "uniqID");
        request.setRawHeader("Authorization",
                             Authorization(path, query, QDateTime::currentMSecsSinceEpoch(), kTestAppid, key) +
                                 "\r\n");
        return m_manager.get(request);
    }
    Answer Get(const QByteArray& path, const QByteArray& query, const QByteArray& key = kTestKey)
    {
        Answer answer;
        QNetworkReply* reply = Ask(path, query, key);
        connect(reply, &QNetworkReply::finished, this, [&answer] { ++answer.finished; });
        if (!QTest::qWaitFor([&answer] { return answer.finished > 0; }, 20000)) {
            reply->abort();
            answer.status = -1;
            return answer;
        }
        answer.error = reply->error();
        answer.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        answer.body = reply->readAll();
        reply->deleteLater();
        return answer;
    }
    /// Sends bytes through TLS and returns all that comes until the service closes.
    QByteArray Raw(const QByteArray& bytes)
    {
        QSslSocket socket;
        socket.connectToHostEncrypted("127.0.0.1", m_service->Port());
        if (!socket.waitForEncrypted(10000)) {
            return "no connection: " + socket.errorString().toUtf8();
        }
        socket.write(bytes);
        socket.flush();
        while (socket.state() == QAbstractSocket::ConnectedState && socket.waitForReadyRead(10000)) {
        }
        return socket.readAll();
    }

    QTemporaryDir m_folder;
    std::unique_ptr<RunningService> m_service;
    QNetworkAccessManager m_manager;
};

QTEST_GUILESS_MAIN(ServiceHttpsTest)
#include "tst_https.moc"
