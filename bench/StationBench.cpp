// SPDX-License-Identifier: MIT
// Figures of the production test:
//
//   StationBench scan <FILE                            the sentences of a capture through scan and epoch store
//   StationBench units RECEIVER IMAGE WINDOWS UNITS    units an hour, each window on a receiver of its own
//   StationBench time RECEIVER IMAGE WINDOWS SECONDS   units for so long, with CPU time and memory
//
// station-scan.sh beside this file times the first. The receivers fix within a second and report ten times a
// second, so that the fixed waits show. The files that the units leave lie beside the program.

#include "production/EpochSignals.h"
#include "production/FirmwareLoad.h"
#include "production/ProductTest.h"
#include "protocol/FirmwareImage.h"
#include "protocol/NmeaScan.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string_view>
#include <vector>

namespace {

constexpr int changeUnitMs = 200;
constexpr int startWaitMs = 100;
constexpr int reportEveryMs = 60000;

double CpuSeconds()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

double ResidentMegabytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    constexpr double pageBytes = 4096.0;
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toDouble() * pageBytes / 1048576.0
                                          : 0.0;
}

int OpenDescriptors()
{
    return QDir(QStringLiteral("/proc/self/fd"))
        .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)
        .size();
}

int Scan()
{
    // As much as a poll of a fast line finds.
    char chunk[1000];
    long sentences = 0;
    long epochs = 0;
    unsigned strongest = 0;
    protocol::NmeaBuff buff = {};
    EpochStore store;
    for (std::size_t count = 0; (count = std::fread(chunk, 1, sizeof chunk, stdin)) > 0;) {
        const char* position = chunk;
        protocol::NmeaSentence sentence;
        while (protocol::NextNmeaSentence(buff, position, chunk + count, protocol::EndsInLine, sentence)) {
            ++sentences;
            const std::string_view text(sentence.text, sentence.length);
            if (HoldsGga(text)) {
                ++epochs;
                bool anyBlock = false;
                strongest += SumUp(SatellitesOf(store, anyBlock)).gps.strongest;
                store = EpochStore();
            }
            switch (KindOf(text)) {
            case SentenceKind::Gsv:
                TakeGsv(store, text);
                break;
            case SentenceKind::Gsa:
                TakeGsa(store, text);
                break;
            case SentenceKind::Gga:
                TakeGga(store, text);
                break;
            case SentenceKind::Other:
                break;
            }
        }
    }
    std::printf("%ld sentences, %ld epochs (sum of C/N0 %u)\n", sentences, epochs, strongest);
    return 0;
}

/// The waits of a load that no receiver can shorten.
double FixedSeconds(const QString& imagePath)
{
    QFile file(imagePath);
    if (!file.open(QIODevice::ReadOnly)) {
        return 0.0;
    }
    protocol::FirmwareImage image([&file](char* out, std::size_t size) {
        return static_cast<std::size_t>(std::max<qint64>(file.read(out, static_cast<qint64>(size)), 0));
    });
    protocol::FirmwareRecord record;
    int milliseconds = FirmwareLoad::versionWaitMs + startWaitMs;
    image.ReadHeader();
    while (image.Next(record)) {
        milliseconds += record.skipped ? 0 : FirmwareLoad::messageWaitMs;
        if (record.Terminates()) {
            break;
        }
    }
    return milliseconds / 1000.0;
}

/// A window that takes one unit after the other.
class Station : public QObject {
public:
    Station(const QString& receiver, const QString& image, const QString& link, int number, int units)
        : m_unitsLeft(units)
    {
        m_receiver.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_receiver.start(receiver, {"--link", link, "--idle", "--rate", "10", "--ttff-cold", "0.5,0", "--seed",
                                    QString::number(number), "--die-with-parent"});
        m_receiver.waitForReadyRead(10000);
        qputenv("GNSS_SERIAL_PORTS", link.toLocal8Bit());
        m_window = std::make_unique<ProductTest>();
        m_window->setWindowTitle(QStringLiteral("station%1").arg(number));
        m_window->findChild<QComboBox*>("serialCbx")->setCurrentText(link);
        m_window->findChild<QLineEdit*>("versionFilePath")->setText(image);
        m_window->findChild<QSpinBox*>("gpsCn0Thresh")->setValue(30);
        // What stays in memory from unit to unit would hide a leak.
        m_window->findChild<QCheckBox*>("clearHisNmeaLog")->setChecked(true);
        m_startBtn = m_window->findChild<QPushButton*>("startTestBtn");
        m_window->show();
        connect(&m_timer, &QTimer::timeout, this, [this] { Next(); });
        m_timer.setSingleShot(true);
        m_timer.start(changeUnitMs * number);
    }
    ~Station() override
    {
        m_window.reset();
        m_receiver.terminate();
        m_receiver.waitForFinished(5000);
    }

    bool Done() const { return m_unitsLeft == 0 && m_startBtn->isEnabled(); }
    int Rows() const { return m_window->findChild<QTableView*>("testRltTable")->model()->rowCount(); }
    QString Passed() const { return m_window->findChild<QLabel*>("passNum")->text(); }
    QString Log() const { return m_window->findChild<QPlainTextEdit*>("SysStatus")->toPlainText(); }
    int Starts() const { return m_starts; }

private:
    void Next()
    {
        if (m_startBtn->isEnabled()) {
            if (m_unitsLeft == 0) {
                return;
            }
            --m_unitsLeft;
            m_window->findChild<QLineEdit*>("PNNodeLdt")->setText(QStringLiteral("PN%1").arg(++m_starts));
            m_startBtn->click();
        }
        m_timer.start(changeUnitMs);
    }

    QProcess m_receiver;
    std::unique_ptr<ProductTest> m_window;
    QPushButton* m_startBtn = nullptr;
    QTimer m_timer;
    int m_unitsLeft;
    int m_starts = 0;
};

int RunUnits(const QString& receiver, const QString& image, int windows, int units, int seconds)
{
    const QTemporaryDir folder;
    std::vector<std::unique_ptr<Station>> stations;
    for (int number = 1; number <= windows; ++number) {
        stations.push_back(std::make_unique<Station>(
            receiver, image, folder.filePath(QStringLiteral("unit%1").arg(number)), number, units));
    }
    QElapsedTimer clock;
    clock.start();
    const double cpuBefore = CpuSeconds();
    qint64 nextReport = 0;
    const auto report = [&] {
        int rows = 0;
        for (const auto& station : stations) {
            rows += station->Rows();
        }
        std::printf("%7.1f s  %5d units  %6.1f s CPU  %6.1f MB  %d descriptors\n",
                    static_cast<double>(clock.elapsed()) / 1000.0, rows, CpuSeconds() - cpuBefore,
                    ResidentMegabytes(), OpenDescriptors());
        std::fflush(stdout);
        return rows;
    };
    const auto allDone = [&] {
        return std::all_of(stations.begin(), stations.end(), [](const auto& station) { return station->Done(); });
    };
    while (seconds > 0 ? clock.elapsed() < seconds * 1000 : !allDone()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (clock.elapsed() >= nextReport) {
            report();
            nextReport += reportEveryMs;
        }
    }
    const double wall = static_cast<double>(clock.elapsed()) / 1000.0;
    const double cpu = CpuSeconds() - cpuBefore;
    const int rows = report();
    int starts = 0;
    for (const auto& station : stations) {
        starts += station->Starts();
        std::printf("passed %s of %d starts\n", qPrintable(station->Passed()), station->Starts());
    }
    std::printf(
        "%d windows: %d starts, %d rows, %.0f units an hour, %.2f s a unit and window, of these %.2f s (%.0f %%) "
        "fixed waits; %.1f %% of a core\n",
        windows, starts, rows, rows / wall * 3600.0, wall * windows / std::max(rows, 1), FixedSeconds(image),
        FixedSeconds(image) / (wall * windows / std::max(rows, 1)) * 100.0, cpu / wall * 100.0);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && std::string_view(argv[1]) == "scan") {
        return Scan();
    }
    const QApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString mode = arguments.value(1);
    const int windows = arguments.value(4).toInt();
    const int amount = arguments.value(5).toInt();
    if (arguments.size() == 6 && windows > 0 && amount > 0 && (mode == "units" || mode == "time")) {
        const bool counted = mode == QLatin1String("units");
        return RunUnits(arguments.at(2), arguments.at(3), windows, counted ? amount : 1 << 30,
                        counted ? 0 : amount);
    }
    std::fprintf(stderr, "usage: StationBench scan <FILE | units|time RECEIVER IMAGE WINDOWS AMOUNT\n");
    return 2;
}
