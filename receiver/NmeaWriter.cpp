// SPDX-License-Identifier: MIT
#include "receiver/NmeaWriter.h"

#include "receiver/TextNumbers.h"

#include <algorithm>
#include <cmath>

namespace receiver {

namespace {

constexpr double kKnotsPerMetreSecond = 3600.0 / 1852.0;
constexpr std::size_t kSatellitesPerGsv = 4;
constexpr std::size_t kSatellitesPerGsa = 12;

void AppendTime(std::string& s, const Epoch& epoch)
{
    if (!epoch.timeKnown) {
        return;
    }
    const UtcFields f = ToFields(epoch.utc);
    AppendInteger(s, f.hour, 2);
    AppendInteger(s, f.minute, 2);
    AppendInteger(s, f.second, 2);
    s.push_back('.');
    AppendInteger(s, f.millisecond, 3);
}

// ddmm.mmmmm and the letter; the minutes never show 60.
void AppendAngle(std::string& s, double degrees, int width, char positive, char negative)
{
    const std::int64_t units = std::llround(std::abs(degrees) * 6000000.0); // 1e-5 minutes
    AppendInteger(s, units / 6000000, width);
    AppendFixed(s, static_cast<double>(units % 6000000) / 100000.0, 5, 2);
    s.push_back(',');
    s.push_back(degrees < 0.0 ? negative : positive);
}

void AppendPlace(std::string& s, const Epoch& epoch)
{
    if (!epoch.fixed) {
        s += ",,,";
        return;
    }
    AppendAngle(s, epoch.position.latitude, 2, 'N', 'S');
    s.push_back(',');
    AppendAngle(s, epoch.position.longitude, 3, 'E', 'W');
}

void AppendSpeedCourse(std::string& s, const Epoch& epoch)
{
    if (epoch.fixed) {
        AppendFixed(s, epoch.speed * kKnotsPerMetreSecond, 3);
    }
    s.push_back(',');
    if (epoch.fixed && epoch.headingKnown) {
        AppendFixed(s, std::fmod(epoch.heading, 360.0), 2);
    }
}

std::string Gga(const Epoch& epoch)
{
    std::string s = "$GNGGA,";
    AppendTime(s, epoch);
    s.push_back(',');
    AppendPlace(s, epoch);
    s += epoch.fixed ? ",1," : ",0,";
    AppendInteger(s, epoch.usedCount, 2);
    s.push_back(',');
    AppendFixed(s, std::min(epoch.hdop, 99.99), 2);
    s.push_back(',');
    if (epoch.fixed) {
        AppendFixed(s, epoch.position.altitude, 2);
        s += ",M,0.0,M,,";
    } else {
        s += ",M,,M,,";
    }
    return s;
}

std::string Gll(const Epoch& epoch)
{
    std::string s = "$GNGLL,";
    AppendPlace(s, epoch);
    s.push_back(',');
    AppendTime(s, epoch);
    s += epoch.fixed ? ",A,A" : ",V,N";
    return s;
}

std::string Rmc(const Epoch& epoch)
{
    std::string s = "$GNRMC,";
    AppendTime(s, epoch);
    s += epoch.fixed ? ",A," : ",V,";
    AppendPlace(s, epoch);
    s.push_back(',');
    AppendSpeedCourse(s, epoch);
    s.push_back(',');
    if (epoch.timeKnown) {
        const UtcFields f = ToFields(epoch.utc);
        AppendInteger(s, f.day, 2);
        AppendInteger(s, f.month, 2);
        AppendInteger(s, f.year % 100, 2);
    }
    s += epoch.fixed ? ",,,A,V" : ",,,N,V";
    return s;
}

std::string Vtg(const Epoch& epoch)
{
    std::string s = "$GNVTG,";
    if (epoch.fixed && epoch.headingKnown) {
        AppendFixed(s, std::fmod(epoch.heading, 360.0), 2);
    }
    s += ",T,,M,";
    if (epoch.fixed) {
        AppendFixed(s, epoch.speed * kKnotsPerMetreSecond, 3);
    }
    s += ",N,";
    if (epoch.fixed) {
        AppendFixed(s, epoch.speed * 3.6, 3);
    }
    s += epoch.fixed ? ",K,A" : ",K,N";
    return s;
}

std::string Zda(const Epoch& epoch)
{
    std::string s = "$GNZDA,";
    AppendTime(s, epoch);
    if (!epoch.timeKnown) {
        return s + ",,,,00,00";
    }
    const UtcFields f = ToFields(epoch.utc);
    s.push_back(',');
    AppendInteger(s, f.day, 2);
    s.push_back(',');
    AppendInteger(s, f.month, 2);
    s.push_back(',');
    AppendInteger(s, f.year, 4);
    return s + ",00,00";
}

// The receiver's own status line: start kind, seconds to the first fix, satellites tracked and used,
// temperature.
std::string Pn(const Epoch& epoch)
{
    std::string s = "$PNSTA,";
    AppendTime(s, epoch);
    s.push_back(',');
    s += epoch.startKind;
    s.push_back(',');
    if (epoch.timeToFirstFix >= 0.0) {
        AppendFixed(s, epoch.timeToFirstFix, 1);
    }
    s.push_back(',');
    AppendInteger(s, epoch.trackedCount, 2);
    s.push_back(',');
    AppendInteger(s, epoch.usedCount, 2);
    s.push_back(',');
    AppendFixed(s, epoch.temperature, 1);
    return s;
}

bool HasSystem(const Epoch& epoch, System system)
{
    return std::any_of(epoch.satellites.begin(), epoch.satellites.end(),
                       [&](const EpochSatellite& satellite) { return satellite.view.orbit->system == system; });
}

// The order in which the systems follow each other in GSA and GSV.
constexpr std::array kSentenceOrder = {protocol::Constellation::Gps, protocol::Constellation::Glonass,
                                       protocol::Constellation::Galileo, protocol::Constellation::Beidou,
                                       protocol::Constellation::Qzss};
static_assert(protocol::EachOnce(kSentenceOrder));

void WriteGsa(const Epoch& epoch, std::vector<std::string>& out)
{
    for (const protocol::Constellation constellation : kSentenceOrder) {
        const System system = protocol::AssistSystemOf(constellation);
        if (!HasSystem(epoch, system)) {
            continue;
        }
        std::string s = epoch.fixed ? "$GNGSA,A,3" : "$GNGSA,A,1";
        std::size_t count = 0;
        for (const EpochSatellite& satellite : epoch.satellites) {
            if (satellite.used && satellite.view.orbit->system == system && count < kSatellitesPerGsa) {
                s.push_back(',');
                AppendInteger(s, satellite.view.orbit->svid, 2);
                ++count;
            }
        }
        s.append(kSatellitesPerGsa - count, ',');
        for (const double dilution : {epoch.pdop, epoch.hdop, epoch.vdop}) {
            s.push_back(',');
            AppendFixed(s, std::min(dilution, 99.99), 2);
        }
        s.push_back(',');
        AppendInteger(s, NamesOf(system).nmeaSystemId);
        CloseSentence(s);
        out.push_back(std::move(s));
    }
}

void WriteGsvGroup(const Epoch& epoch, System system, std::size_t signal, std::vector<std::string>& out)
{
    std::vector<const EpochSatellite*> listed;
    for (const EpochSatellite& satellite : epoch.satellites) {
        if (satellite.view.orbit->system == system && signal < satellite.view.signals &&
            (satellite.tracked || satellite.located)) {
            listed.push_back(&satellite);
        }
    }
    // The receiver shows no group for a signal that it has nothing of.
    if (listed.empty()) {
        return;
    }
    std::stable_sort(listed.begin(), listed.end(), [](const EpochSatellite* a, const EpochSatellite* b) {
        return a->view.orbit->svid < b->view.orbit->svid;
    });
    const std::size_t sentences = (listed.size() + kSatellitesPerGsv - 1) / kSatellitesPerGsv;
    for (std::size_t n = 0; n < sentences; ++n) {
        std::string s = "$";
        s += NamesOf(system).talker;
        s += "GSV,";
        AppendInteger(s, static_cast<std::int64_t>(sentences));
        s.push_back(',');
        AppendInteger(s, static_cast<std::int64_t>(n + 1));
        s.push_back(',');
        AppendInteger(s, static_cast<std::int64_t>(listed.size()), 2);
        const std::size_t end = std::min(listed.size(), (n + 1) * kSatellitesPerGsv);
        for (std::size_t i = n * kSatellitesPerGsv; i < end; ++i) {
            const EpochSatellite& satellite = *listed[i];
            s.push_back(',');
            AppendInteger(s, satellite.view.orbit->svid, 2);
            s.push_back(',');
            if (satellite.located) {
                AppendInteger(s, static_cast<std::int64_t>(satellite.view.look.elevation), 2);
                s.push_back(',');
                AppendInteger(s, static_cast<std::int64_t>(satellite.view.look.azimuth), 3);
            } else {
                s.push_back(',');
            }
            s.push_back(',');
            const std::int64_t cn0 = std::lround(satellite.view.cn0[signal]);
            if (satellite.tracked && cn0 > 0) {
                AppendInteger(s, cn0, 2);
            }
        }
        s.push_back(',');
        AppendHexByte(s, SignalOf(system, signal).nmeaSignalId, true);
        s.erase(s.size() - 2, 1); // one hexadecimal digit
        CloseSentence(s);
        out.push_back(std::move(s));
    }
}

void WriteGsv(const Epoch& epoch, std::vector<std::string>& out)
{
    for (const protocol::Constellation constellation : kSentenceOrder) {
        const System system = protocol::AssistSystemOf(constellation);
        for (std::size_t signal = 0; signal < 2; ++signal) {
            WriteGsvGroup(epoch, system, signal, out);
        }
    }
}

} // namespace

void CloseSentence(std::string& sentence)
{
    std::uint8_t sum = 0;
    for (std::size_t i = 1; i < sentence.size(); ++i) {
        sum = static_cast<std::uint8_t>(sum ^ static_cast<std::uint8_t>(sentence[i]));
    }
    sentence.push_back('*');
    AppendHexByte(sentence, sum, true);
    sentence += "\r\n";
}

void WriteSentences(const Epoch& epoch, std::uint8_t mask, std::vector<std::string>& out)
{
    const auto single = [&](SentenceBit bit, std::string (*write)(const Epoch&)) {
        if ((mask & bit) != 0) {
            std::string sentence = write(epoch);
            CloseSentence(sentence);
            out.push_back(std::move(sentence));
        }
    };
    single(SentenceGga, Gga);
    single(SentenceGll, Gll);
    if ((mask & SentenceGsa) != 0) {
        WriteGsa(epoch, out);
    }
    if ((mask & SentenceGsv) != 0) {
        WriteGsv(epoch, out);
    }
    single(SentenceRmc, Rmc);
    single(SentenceVtg, Vtg);
    single(SentenceZda, Zda);
    single(SentencePn, Pn);
}

std::string VersionSentence(std::string_view version)
{
    std::string s = "$GNTXT,01,01,02,VERSION ";
    s += version;
    CloseSentence(s);
    return s;
}

} // namespace receiver
