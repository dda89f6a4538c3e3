#include "codec/Protocol.h"
#include "receiver/NmeaWriter.h"
#include "receiver/Options.h"
#include "receiver/PtyLine.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <memory>

using vrx::PtyLine;

namespace {

/// The host's end.
class Opened {
public:
    explicit Opened(const std::string& path) : m_fd(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK)) {}
    ~Opened() { Close(); }
    void Close()
    {
        if (m_fd >= 0) {
            ::close(m_fd);
        }
        m_fd = -1;
    }
    bool Good() const { return m_fd >= 0; }
    int Fd() const { return m_fd; }
    void Write(const QByteArray& bytes) const
    {
        QCOMPARE(::write(m_fd, bytes.constData(), static_cast<std::size_t>(bytes.size())), ssize_t{bytes.size()});
    }
    QByteArray Read() const
    {
        QByteArray all;
        char piece[4096];
        for (ssize_t count = 0; (count = ::read(m_fd, piece, sizeof piece)) > 0;) {
            all.append(piece, static_cast<int>(count));
        }
        return all;
    }
    /// Until `done` says so about all that came.
    QByteArray ReadUntil(const std::function<bool(const QByteArray&)>& done, int limit = 30000) const
    {
        QByteArray all;
        QElapsedTimer clock;
        clock.start();
        while (!done(all) && clock.elapsed() < limit) {
            pollfd entry{m_fd, POLLIN, 0};
            ::poll(&entry, 1, 20);
            all += Read();
        }
        return all;
    }

private:
    int m_fd;
};

double CpuMillis()
{
    rusage usage;
    ::getrusage(RUSAGE_SELF, &usage);
    return (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000.0 +
           (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000.0;
}

/// What the program's own loop does with a line, for so long.
int Turn(PtyLine& line, int millis)
{
    QElapsedTimer clock;
    clock.start();
    int turns = 0;
    while (clock.elapsed() < millis) {
        line.Service(clock.elapsed());
        pollfd entries[2];
        const std::size_t count = line.FillPoll(entries);
        // Never negative, which would be for ever.
        const int left = std::max(millis - static_cast<int>(clock.elapsed()) + 1, 0);
        ::poll(entries, count, std::min(line.LongestPoll(), left));
        ++turns;
    }
    line.Service(clock.elapsed());
    return turns;
}

QString Program()
{
    return QStringLiteral(GNSS_BUILD_BIN "/gnss-receiver");
}

/// The program, ended with the test.
class Running {
public:
    explicit Running(const QStringList& arguments)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(Program(), QStringList{"--die-with-parent"} + arguments);
        QElapsedTimer clock;
        clock.start();
        while (!m_process.canReadLine() && clock.elapsed() < 30000 && m_process.state() != QProcess::NotRunning) {
            m_process.waitForReadyRead(50);
        }
        const QByteArray line = m_process.readLine().trimmed();
        if (line.startsWith("ready ")) {
            path = line.mid(6).toStdString();
        }
    }
    ~Running()
    {
        m_process.terminate();
        if (!m_process.waitForFinished(3000)) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }
    QProcess& Process() { return m_process; }
    std::string path;

private:
    QProcess m_process;
};

} // namespace

class TestReceiverPtyLine : public QObject {
    Q_OBJECT

private slots:
    void NothingWaitsForTheNextUser()
    {
        PtyLine line;
        std::string error;
        QVERIFY2(line.Open({}, error), error.c_str());
        line.Service(0);
        QVERIFY(!line.InUse());
        line.Send("lost\r\n");
        for (int scan = 0; scan < 20; ++scan) {
            Opened probe(line.Path());
            QVERIFY(probe.Good());
            line.Service(scan);
            QVERIFY(line.InUse());
            QVERIFY(probe.Read().isEmpty());
            line.Send("not read by the probe\r\n");
            line.Service(scan);
            probe.Close();
            line.Service(scan);
            QVERIFY(!line.InUse());
        }
        Opened user(line.Path());
        line.Service(100);
        line.Send("hello\r\n");
        line.Service(100);
        QCOMPARE(user.ReadUntil([](const QByteArray& all) { return all.endsWith("\n"); }),
                 QByteArray("hello\r\n"));
    }

    void BytesPassUnchangedAndAreNotEchoed()
    {
        PtyLine line;
        std::string error;
        QVERIFY(line.Open({}, error));
        std::string received;
        line.onReceived = [&](std::string_view bytes) { received.append(bytes); };
        Opened user(line.Path());
        line.Service(0);
        QByteArray every;
        for (int i = 0; i < 256; ++i) {
            every.append(static_cast<char>(i));
        }
        user.Write(every);
        line.Send(every.toStdString());
        QCOMPARE(user.ReadUntil([&](const QByteArray& all) {
            line.Service(1);
            return all.size() >= 256;
        }),
                 every);
        const auto hasReceived = [&](std::size_t count) {
            return QTest::qWaitFor([&] { return Turn(line, 10) > 0 && received.size() >= count; });
        };
        QVERIFY(hasReceived(256));
        QCOMPARE(QByteArray::fromStdString(received), every);

        // A command counts also when its sender has gone again, and whatever mode the last one left.
        termios cooked;
        ::tcgetattr(user.Fd(), &cooked);
        cooked.c_lflag |= ECHO | ICANON;
        cooked.c_iflag |= ICRNL;
        cooked.c_oflag |= OPOST | ONLCR;
        ::tcsetattr(user.Fd(), TCSANOW, &cooked);
        user.Close();
        Turn(line, 20);
        received.clear();
        Opened brief(line.Path());
        brief.Write("\x7e\x04\r\n");
        brief.Close();
        QVERIFY(hasReceived(4));
        QCOMPARE(received, std::string("\x7e\x04\r\n"));
        Opened after(line.Path());
        line.Service(1);
        line.Send("a\r\nb\n");
        QCOMPARE(after.ReadUntil([&](const QByteArray& all) { return Turn(line, 10) > 0 && all.size() >= 5; }),
                 QByteArray("a\r\nb\n"));
        Turn(line, 30);
        QCOMPARE(received, std::string("\x7e\x04\r\n"));
    }

    void ASlowReaderCostsWholeMessages()
    {
        PtyLine line;
        std::string error;
        QVERIFY(line.Open({}, error));
        Opened user(line.Path());
        line.Service(0);
        const double before = CpuMillis();
        for (int i = 0; i < 20000; ++i) {
            line.Send("$PNSEQ," + std::to_string(100000 + i) + ",padding padding padding padding\r\n");
            line.Service(1);
        }
        QVERIFY(CpuMillis() - before < 3000);
        QVERIFY(line.DroppedMessages() > 0);
        QVERIFY(line.Room() < 65536);
        const QByteArray all = user.ReadUntil([&](const QByteArray& seen) {
            line.Service(2);
            return seen.contains("119999") && seen.endsWith("\n");
        });
        int previous = 0;
        int lines = 0;
        for (const QByteArray& text : all.split('\n')) {
            if (text.isEmpty()) {
                continue;
            }
            QVERIFY2(text.startsWith("$PNSEQ,") && text.endsWith("padding padding\r"), text.constData());
            QVERIFY(text.mid(7, 6).toInt() > previous);
            previous = text.mid(7, 6).toInt();
            ++lines;
        }
        QCOMPARE(previous, 119999);
        QCOMPARE(std::uint64_t(lines) + line.DroppedMessages(), std::uint64_t{20000});
    }

    void AHangUpCostsNoTime()
    {
        PtyLine line;
        std::string error;
        QVERIFY(line.Open({}, error));
        {
            Opened user(line.Path());
            Turn(line, 50);
            QVERIFY(line.InUse());
        }
        Turn(line, 50);
        const double before = CpuMillis();
        const int turns = Turn(line, 1000);
        const double used = CpuMillis() - before;
        QVERIFY2(used < 20.0, qPrintable(QString::number(used)));
        QVERIFY2(turns < 40, qPrintable(QString::number(turns)));
        // And it is still awake: an opening is seen at once.
        QElapsedTimer clock;
        clock.start();
        Opened user(line.Path());
        while (!line.InUse() && clock.elapsed() < 10000) {
            Turn(line, 1);
        }
        QVERIFY(line.InUse());
    }

    // Who dies while he holds the line for himself alone would lock it for everybody else but root.
    void AnExclusiveUserMayDie()
    {
        const pid_t child = ::fork();
        QVERIFY(child >= 0);
        if (child == 0) {
            if (::geteuid() == 0 && ::setuid(65534) != 0) {
                ::_exit(1);
            }
            PtyLine line;
            std::string error;
            if (!line.Open({}, error)) {
                ::_exit(2);
            }
            const int user = ::open(line.Path().c_str(), O_RDWR | O_NOCTTY);
            line.Service(0);
            ::ioctl(user, TIOCEXCL);
            ::close(user);
            line.Service(1);
            const int next = ::open(line.Path().c_str(), O_RDWR | O_NOCTTY);
            line.Service(2);
            ::_exit(next < 0 ? 3 : line.InUse() ? 0 : 4);
        }
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QVERIFY(WIFEXITED(status));
        QCOMPARE(WEXITSTATUS(status), 0);
    }

    void LinksAreReplacedAndRemoved()
    {
        QTemporaryDir folder;
        const std::string link = folder.filePath("line").toStdString();
        PtyLine first;
        PtyLine second;
        std::string error;
        QVERIFY(first.Open(link, error));
        QCOMPARE(QFile::symLinkTarget(QString::fromStdString(link)).toStdString(), first.Path());
        QVERIFY(second.Open(link, error));
        QCOMPARE(QFile::symLinkTarget(QString::fromStdString(link)).toStdString(), second.Path());
        first.Unplug(); // the link is not its own any more
        QVERIFY(Opened(link).Good());
        second.Unplug();
        QVERIFY(!QFileInfo(QString::fromStdString(link)).isSymLink());

        const QString plain = folder.filePath("file");
        QFile file(plain);
        QVERIFY(file.open(QIODevice::WriteOnly));
        PtyLine third;
        QVERIFY(!third.Open(plain.toStdString(), error));
        QVERIFY(QFile::exists(plain));
        QVERIFY(!PtyLine().Open("/nonexistent/folder/line", error));
    }

    void UnplugHangsUp()
    {
        PtyLine line;
        std::string error;
        QVERIFY(line.Open({}, error));
        Opened user(line.Path());
        line.Service(0);
        line.Unplug();
        QVERIFY(!line.Plugged());
        pollfd entry{user.Fd(), POLLIN, 0};
        ::poll(&entry, 1, 1000);
        QVERIFY((entry.revents & POLLHUP) != 0);
        line.Service(1);
        line.Send("into the void");
        QVERIFY(line.Open({}, error));
        Opened again(line.Path());
        line.Service(2);
        QVERIFY(line.InUse());
    }

    void OptionsAreJudged()
    {
        const auto parse = [](const QStringList& words, vrx::Options& options, std::string& text) {
            std::vector<std::string> arguments;
            for (const QString& word : words) {
                arguments.push_back(word.toStdString());
            }
            return vrx::ParseOptions(arguments, options, text);
        };
        const QStringList wrong[] = {{"--rate", "2"},
                                     {"--rate"},
                                     {"--lat", "90.1"},
                                     {"--lon", "x"},
                                     {"--time", "now"},
                                     {"--ttff-cold", "28"},
                                     {"--seed", "-1"},
                                     {"--speed", "-1"},
                                     {"--fault", "what"},
                                     {"--track", "/none"},
                                     {"--error", "nan"},
                                     {"--what"},
                                     {"stray"},
                                     {"--product", "1e3"},
                                     {"--track", "circle=0,1"}};
        for (const QStringList& words : wrong) {
            vrx::Options options;
            std::string text;
            QVERIFY2(parse(words, options, text) == vrx::OptionsResult::Bad && !text.empty(),
                     qPrintable(words.join(' ')));
        }
        vrx::Options options;
        std::string text;
        QCOMPARE(parse({"--rate=5", "--lat", "-33.5", "--lon", "151", "--time", "2026-01-02T03:04:05", "--speed",
                        "max", "--ttff-hot", "2,0.5", "--fault", "ack-late=20", "--idle", "--fault", "garbage"},
                       options, text),
                 vrx::OptionsResult::Run);
        QCOMPARE(options.receiver.rateHz, 5);
        QCOMPARE(options.receiver.motion.At(5.0).place.latitude, -33.5);
        QCOMPARE(options.receiver.times.hot.deviation, 0.5);
        QCOMPARE(options.receiver.faults.ackLateMillis, std::int64_t{20});
        QCOMPARE(options.speed, 0.0);
        QVERIFY(options.receiver.idle && options.timeGiven);
        QCOMPARE(parse({"--help"}, options, text), vrx::OptionsResult::Told);
        QVERIFY(text.find("--transcript") != std::string::npos);
    }

    void ProgramServesTheLine()
    {
        QTemporaryDir folder;
        const QString link = folder.filePath("line");
        const QString transcript = folder.filePath("transcript");
        {
            Running program({"--link", link, "--memory", "kept", "--transcript", transcript, "--rate", "10"});
            QCOMPARE(program.path, link.toStdString());
            Opened user(program.path);
            QVERIFY(user.Good());
            const QByteArray seen = user.ReadUntil([](const QByteArray& all) { return all.count("$GNRMC") >= 3; });
            QVERIFY(seen.startsWith("$GNGGA"));
            user.Write(QByteArray::fromHex("7e040d0002000000000000007e"));
            const QByteArray ack = QByteArray::fromHex("7e0411000180000000000400020000007e");
            QVERIFY(user.ReadUntil([&](const QByteArray& all) { return all.contains(ack); }).contains(ack));
            user.Read();
            QTest::qWait(300);
            QVERIFY(user.Read().isEmpty());
            user.Close();
            program.Process().terminate();
            QVERIFY(program.Process().waitForFinished(20000));
            QCOMPARE(program.Process().exitCode(), 0);
        }
        QVERIFY(!QFileInfo(link).isSymLink());
        QFile file(transcript);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray text = file.readAll();
        QVERIFY(text.contains(" > 13 7e040d0002000000000000007e |"));
        QVERIFY(text.contains(" < 17 7e0411000180"));
        QVERIFY(text.contains("|$GNGGA,"));
    }

    void ProgramPlaysACapture()
    {
        std::string bytes;
        for (int second = 10; second < 40; ++second) {
            std::string sentence =
                "$GNRMC,1010" + std::to_string(second) + ".00,A,4723.0,N,00832.0,E,0.0,,140326,,,A,V";
            vrx::CloseSentence(sentence);
            bytes += sentence + std::string("\x00\x7e\x04\xff\n", 5);
        }
        for (const char* speed : {"30", "max"}) {
            QTemporaryDir folder;
            const QString capture = folder.filePath("capture");
            QFile file(capture);
            QVERIFY(file.open(QIODevice::WriteOnly));
            for (int i = 0; i < (qstrcmp(speed, "max") == 0 ? 100 : 1); ++i) {
                file.write(bytes.data(), static_cast<qint64>(bytes.size()));
            }
            file.close();
            const qint64 size = QFileInfo(capture).size();
            std::unique_ptr<Running> program;
            QElapsedTimer clock;
            do {
                program = std::make_unique<Running>(QStringList{"--capture", capture, "--speed", speed});
                clock.start();
                // A program that only looks for ports costs no bytes, if this machine lets it be quick.
                Opened probe(program->path);
                QTest::qWait(30);
            } while (clock.elapsed() > 200);
            QTest::qWait(100);
            Opened user(program->path);
            clock.start();
            const QByteArray all =
                user.ReadUntil([&](const QByteArray& seen) { return seen.size() >= size; }, 60000);
            QVERIFY(file.open(QIODevice::ReadOnly));
            QVERIFY2(all == file.readAll(), qPrintable(QString("%1 of %2").arg(all.size()).arg(size)));
            if (qstrcmp(speed, "max") != 0) {
                // 30 s at 30 times the speed, and the wait for a user who stays.
                QVERIFY2(clock.elapsed() > 1000, qPrintable(QString::number(clock.elapsed())));
            }
            // Commands are answered all the same.
            user.Write(QByteArray::fromHex("7e040e00050000000000010000 7e"));
            QVERIFY(user.ReadUntil([](const QByteArray& seen) { return seen.size() >= 17; }).size() == 17);
        }
    }

    void ProgramUnplugsAndComesBack()
    {
        // A busy machine may be too late to see the line in each of its states, and then gets more time.
        bool seen = false;
        for (int scale = 1; scale <= 16 && !seen; scale *= 4) {
            const QTemporaryDir folder;
            const QString times = QString("unplug=%1,%2").arg(0.6 * scale).arg(0.4 * scale);
            Running program({"--link", folder.filePath("line"), "--fault", times});
            const Opened user(program.path);
            pollfd entry{user.Fd(), 0, 0};
            seen = user.Good() && ::poll(&entry, 1, 60000) == 1 && (entry.revents & POLLHUP) != 0 &&
                   !Opened(program.path).Good();
            QTRY_VERIFY_WITH_TIMEOUT(Opened(program.path).Good(), 60000);
            QCOMPARE(program.Process().state(), QProcess::Running);
        }
        QVERIFY(seen);
    }

    void ProgramTakesLittleTime()
    {
        Running program({"--rate", "1"});
        const auto cpu = [&] {
            QFile stat(QString("/proc/%1/stat").arg(program.Process().processId()));
            stat.open(QIODevice::ReadOnly);
            const QList<QByteArray> fields = stat.readAll().split(' ');
            return (fields[13].toInt() + fields[14].toInt()) * 1000.0 /
                   static_cast<double>(::sysconf(_SC_CLK_TCK));
        };
        const double before = cpu();
        {
            Opened probe(program.path);
        }
        QTest::qWait(2000);
        // The clock ticks in 10 ms; one per cent of two seconds are two of them.
        QVERIFY2(cpu() - before <= 30.0, qPrintable(QString::number(cpu() - before)));
    }

    void ProgramJudgesItsOptions()
    {
        QProcess process;
        process.start(Program(), {"--rate", "7"});
        QVERIFY(process.waitForFinished(30000));
        QCOMPARE(process.exitCode(), 2);
        QVERIFY(process.readAllStandardError().contains("--rate"));
        process.start(Program(), {"--list-faults"});
        QVERIFY(process.waitForFinished(30000));
        QCOMPARE(process.exitCode(), 0);
        QVERIFY(process.readAllStandardOutput().contains("unplug=SECONDS"));
    }
};

QTEST_GUILESS_MAIN(TestReceiverPtyLine)
#include "tst_receiver_ptyline.moc"
