// SPDX-License-Identifier: MIT
#include "receiver/NmeaWriter.h"
#include "receiver/Options.h"
#include "receiver/PtyLine.h"

#include "TestReceiver.h"

#include <QElapsedTimer>
#include <QTemporaryFile>
#include <QThread>
#include <QtTest>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

using receiver::PtyLine;

namespace {

const QByteArray stopCommand = QByteArray::fromHex("7e040d0002000000000000007e");
const QByteArray stopAck = QByteArray::fromHex("7e0411000180000000000400020000007e");

const QByteArray everyByte = [] {
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes.append(static_cast<char>(byte));
    }
    return bytes;
}();

QElapsedTimer Started()
{
    QElapsedTimer clock;
    clock.start();
    return clock;
}

/// The host's end.
class Opened {
public:
    explicit Opened(const std::string& path) : m_fd(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK)) {}
    explicit Opened(const QString& path) : Opened(path.toStdString()) {}
    ~Opened() { Close(); }
    Opened& operator=(Opened&& other) noexcept
    {
        std::swap(m_fd, other.m_fd);
        return *this;
    }
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
    /// What comes until `enough` says so about all of it.
    template <typename Enough> QByteArray Read(Enough enough, int limit = 30000) const
    {
        QByteArray all;
        char piece[4096];
        for (QElapsedTimer clock(Started()); !enough(all) && clock.elapsed() < limit; QThread::msleep(1)) {
            for (ssize_t count = 0; (count = ::read(m_fd, piece, sizeof piece)) > 0;) {
                all.append(piece, static_cast<int>(count));
            }
        }
        return all;
    }
    QByteArray Read() const
    {
        int reads = 0;
        return Read([&](const QByteArray&) { return reads++ > 0; });
    }
    bool Gets(const QByteArray& wanted) const
    {
        const auto got = [&](const QByteArray& all) { return all.contains(wanted); };
        return got(Read(got));
    }

private:
    int m_fd;
};

} // namespace

class TestReceiverPtyLine : public QObject {
    Q_OBJECT

private slots:
    void ASlowReaderCostsWholeMessages()
    {
        PtyLine line;
        std::string error;
        QVERIFY2(line.Open({}, error), error.c_str());
        Opened user(line.Path());
        line.Service(0);
        for (int i = 0; i < 20000; ++i) {
            line.Send("$PNSEQ," + std::to_string(100000 + i) + ",padding padding padding padding\r\n");
            line.Service(1);
        }
        QVERIFY(line.DroppedMessages() > 0 && line.Room() < 65536);
        const QByteArray all = user.Read([&](const QByteArray& seen) {
            line.Service(2);
            return seen.contains("119999") && seen.endsWith("\n");
        });
        int previous = 0;
        const QList<QByteArray> lines = all.chopped(1).split('\n');
        for (const QByteArray& text : lines) {
            const int number = text.mid(7, 6).toInt();
            QVERIFY2(text.startsWith("$PNSEQ,") && text.endsWith("padding padding\r") && number > previous,
                     text.constData());
            previous = number;
        }
        QCOMPARE(previous, 119999);
        QCOMPARE(std::uint64_t(lines.size()) + line.DroppedMessages(), std::uint64_t{20000});
    }

    // Who dies while he holds the line for himself alone would lock it for
    // everybody else but root.
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
            line.Open({}, error);
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
        QVERIFY2(WIFEXITED(status) && WEXITSTATUS(status) == 0, qPrintable(QString::number(status)));
    }

    void LinksAreReplacedAndRemoved()
    {
        QTemporaryDir folder;
        const QString link = folder.filePath("line");
        PtyLine first;
        PtyLine second;
        std::string error;
        QVERIFY(first.Open(link.toStdString(), error) && second.Open(link.toStdString(), error));
        QCOMPARE(QFile::symLinkTarget(link).toStdString(), second.Path());
        first.Unplug(); // the link is not its own any more
        QVERIFY(Opened(link).Good());
        second.Unplug();
        QVERIFY(!QFileInfo(link).isSymLink());
        QFile file(link);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(!PtyLine().Open(link.toStdString(), error) && file.exists());
        QVERIFY(!PtyLine().Open("/nonexistent/folder/line", error));
    }

    void OptionsAreJudged()
    {
        receiver::Options options;
        std::string text;
        const auto parse = [&](const QString& words) {
            std::vector<std::string> arguments;
            for (const QString& word : words.split(' ')) {
                arguments.push_back(word.toStdString());
            }
            options = receiver::Options();
            text.clear();
            return receiver::ParseOptions(arguments, options, text);
        };
        const char* const wrong = "--rate 2|--rate|--lat 90.1|--lon x|--time now|--ttff-cold 28|--seed "
                                  "-1|--speed -1|--track /none|"
                                  "--track circle=0,1|--error nan|--what|stray|--product 1e3|--fault "
                                  "|--fault nothing|"
                                  "--fault silence=x|--fault ack-late|--fault ack-late=|--fault "
                                  "ack-late=-1|--fault ack-double=1|"
                                  "--fault garbage=0|--fault unplug=1,2,3|--fault cut-frames=101|--fault "
                                  "refuse=1,2|"
                                  "--fault ack-other=70000|--fault unplug=nan|--fault sleep=inf";
        for (const QString& words : QString(wrong).split('|')) {
            QVERIFY2(parse(words) == receiver::OptionsResult::Bad && !text.empty(), qPrintable(words));
        }
        // The first error is told, and nothing is guessed: no short forms, no values of flags.
        const QPair<const char*, std::string> told[] = {
            {"--link=", "--link: \"\" is not a path"},
            {"--link --seed", "--track: /none cannot be read"},
            {"--idle --seed", "--seed needs a value: a whole number from 0"},
            {"--rate=1e3", "--rate: \"1e3\" is not 1, 5 or 10"},
            {"--idle=true", "unknown option --idle=true (--help shows them all)"},
            {"--lin x", "unknown option --lin (--help shows them all)"},
            {"--what --rate 7", "unknown option --what (--help shows them all)"},
            {"-- --help", "unknown option -- (--help shows them all)"},
            {"--fault", "no fault is named \"\" (--list-faults shows them)"},
        };
        for (const auto& [words, error] : told) {
            const QString line = QString("--track /none ") + words;
            QVERIFY2(parse(line) == receiver::OptionsResult::Bad && text == error, words);
        }
        QCOMPARE(parse("--help"), receiver::OptionsResult::Told);
        QVERIFY(text.find("--transcript") != std::string::npos);
        QCOMPARE(parse("--rate=5 --rate 010 --lat -33.5 --lon 151 --time 2026-01-02T03:04:05 --speed "
                       "max --ttff-hot 2,0.5 "
                       "--fault ack-late=20 --idle --fault garbage --fault unplug=1.5,2"),
                 receiver::OptionsResult::Run);
        const receiver::ReceiverOptions& receiver = options.receiver;
        QVERIFY(receiver.rateHz == 10 && receiver.motion.At(5.0).place.latitude == -33.5);
        QVERIFY(receiver.times.hot.deviation == 0.5 && receiver.faults.ackLateMillis == 20);
        QVERIFY(receiver.faults.unplugAt == 1.5 && receiver.faults.replugAfter == 2.0);
        QVERIFY(receiver.idle && options.timeGiven && options.speed == 0.0);

        QProcess process;
        process.start(GNSS_BUILD_BIN "/gnss-receiver", {"--rate", "7"});
        QVERIFY(process.waitForFinished(30000) && process.exitCode() == 2);
        QVERIFY(process.readAllStandardError().contains("--rate"));
    }

    void ProgramServesTheLine()
    {
        QTemporaryDir folder;
        const QString transcript = folder.filePath("transcript");
        TestReceiver program({"--memory", "kept", "--transcript", transcript, "--rate", "10"});
        QTest::qWait(500);
        // Nothing waits for the next user: what comes are the epochs from now on.
        Opened first(program.link);
        QVERIFY(first.Good());
        const QElapsedTimer clock = Started();
        QVERIFY(first.Read([](const QByteArray& all) { return all.count("$GNRMC") >= 4; }).startsWith("$GNGGA"));
        QVERIFY2(clock.elapsed() > 200, qPrintable(QString::number(clock.elapsed())));
        // Whatever mode the last one left, bytes pass unchanged and are not echoed;
        // a busy machine may see his going late.
        const QByteArray history = QByteArray::fromHex("7e040d0101010000000000017e").insert(12, everyByte);
        const QByteArray refused = QByteArray::fromHex("7e0411000180000000000400010102007e");
        bool raw = false;
        for (int wait = 300; wait <= 20000 && !raw; wait *= 4) {
            termios cooked;
            ::tcgetattr(first.Fd(), &cooked);
            cooked.c_lflag |= ECHO | ICANON;
            cooked.c_iflag |= ICRNL;
            cooked.c_oflag |= OPOST | ONLCR;
            ::tcsetattr(first.Fd(), TCSANOW, &cooked);
            first.Close();
            QTest::qWait(wait);
            first = Opened(program.link);
            first.Write(history);
            const QByteArray all = first.Read(
                [&](const QByteArray& seen) { return seen.contains(refused) && seen.contains("\r\n"); }, wait);
            raw = all.contains(refused) && !all.contains(history) && !all.contains("\r\r\n");
        }
        QVERIFY(raw);
        first.Close();
        // A command counts also when its sender has gone again.
        Opened(program.link).Write(stopCommand);
        Opened last(program.link);
        QTRY_VERIFY_WITH_TIMEOUT((last.Read(), QTest::qWait(300), last.Read().isEmpty()), 30000);
        last.Close();
        program.Process().terminate();
        QVERIFY(program.Process().waitForFinished(20000) && program.Process().exitCode() == 0);
        QVERIFY(!QFileInfo(program.link).isSymLink());
        QFile file(transcript);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray text = file.readAll();
        for (const char* part : {" > 13 7e040d0002000000000000007e |", " < 17 7e0411000180", "|$GNGGA,"}) {
            QVERIFY2(text.contains(part), part);
        }
    }

    void ProgramPlaysACapture()
    {
        QByteArray bytes;
        for (int second = 10; second < 40; ++second) {
            std::string sentence =
                "$GNRMC,1010" + std::to_string(second) + ".00,A,4723.0,N,00832.0,E,0.0,,140326,,,A,V";
            receiver::CloseSentence(sentence);
            bytes += sentence.c_str() + everyByte;
        }
        for (const QString speed : {"30", "max"}) {
            const QByteArray capture = bytes.repeated(speed == "max" ? 100 : 1);
            QTemporaryFile file;
            QVERIFY(file.open() && file.write(capture) == capture.size() && file.flush());
            std::unique_ptr<TestReceiver> program;
            QElapsedTimer clock;
            do {
                program =
                    std::make_unique<TestReceiver>(QStringList{"--capture", file.fileName(), "--speed", speed});
                clock.start();
                // A program that only looks for ports costs no bytes, if this machine
                // lets it be quick.
                Opened(program->link).Close();
            } while (clock.elapsed() > 200);
            QTest::qWait(100);
            Opened user(program->link);
            clock.start();
            const auto complete = [&](const QByteArray& seen) { return seen.size() >= capture.size(); };
            const QByteArray all = user.Read(complete, 60000);
            QVERIFY2(all == capture, qPrintable(QString::number(all.size())));
            // 30 s at 30 times the speed, and the wait for a user who stays.
            QVERIFY2(speed == "max" || clock.elapsed() > 1000, qPrintable(QString::number(clock.elapsed())));
            // Commands are answered all the same.
            user.Write(stopCommand);
            QCOMPARE(user.Read([](const QByteArray& seen) { return seen.size() >= 17; }), stopAck);
        }
    }

    void ProgramUnplugsAndComesBack()
    {
        // A busy machine may be too late to see the line in each of its states, and
        // then gets more time.
        bool seen = false;
        for (int scale = 1; scale <= 16 && !seen; scale *= 4) {
            const QString times = QString("unplug=%1,%2").arg(0.6 * scale).arg(0.4 * scale);
            TestReceiver program({"--fault", times, "--rate", "10"});
            const Opened user(program.link);
            pollfd entry{user.Fd(), 0, 0};
            seen = user.Good() && ::poll(&entry, 1, 60000) == 1 && (entry.revents & POLLHUP) != 0 &&
                   !Opened(program.link).Good();
            QTRY_VERIFY_WITH_TIMEOUT(Opened(program.link).Good(), 60000);
            const Opened again(program.link);
            again.Write(stopCommand);
            QVERIFY(again.Gets(stopAck));
        }
        QVERIFY(seen);
    }

    // Also while nobody has the line open, and it is still awake then.
    void ProgramTakesLittleTime()
    {
        TestReceiver program({"--rate", "1"});
        const auto cpu = [&] {
            QFile stat(QString("/proc/%1/stat").arg(program.Process().processId()));
            stat.open(QIODevice::ReadOnly);
            const QList<QByteArray> fields = stat.readAll().split(' ');
            return (fields[13].toInt() + fields[14].toInt()) * 1000.0 /
                   static_cast<double>(::sysconf(_SC_CLK_TCK));
        };
        const double before = cpu();
        Opened(program.link).Close();
        QTest::qWait(2000);
        // The clock ticks in 10 ms; one per cent of two seconds are two of them.
        QVERIFY2(cpu() - before <= 30.0, qPrintable(QString::number(cpu() - before)));
        Opened user(program.link);
        user.Write(stopCommand);
        QVERIFY(user.Gets(stopAck));
    }
};

QTEST_GUILESS_MAIN(TestReceiverPtyLine)
#include "tst_ptyline.moc"
