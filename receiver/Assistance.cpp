// SPDX-License-Identifier: MIT
#include "receiver/Assistance.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace receiver {

namespace {

constexpr Millis kUsableTimeError = 3600000;
// What a satellite's predicted place may err, in metres, before it leads the search astray.
constexpr double kUsableOrbitError = 5000.0;

std::size_t IndexOf(protocol::AssistSystem system, std::uint8_t number)
{
    const std::vector<Orbit>& orbits = AllOrbits();
    std::size_t i = 0;
    while (i < orbits.size() && (orbits[i].system != system || NumberInSystem(orbits[i]) != number)) {
        ++i;
    }
    return i;
}

void TakeEphemeris(protocol::AssistSystem system, const protocol::AssistOrbit& orbit, Millis utc, Memory& memory)
{
    const std::size_t index = IndexOf(system, orbit.number);
    const Millis toe = orbit.toe * Millis{1000};
    const Millis fit = orbit.fit * Millis{1000};
    if (index == AllOrbits().size() || orbit.health != 0 || std::llabs(utc - toe) > fit) {
        return;
    }
    const Vector3 predicted = PredictedPosition(orbit, utc);
    const Vector3 truth = PositionAt(AllOrbits()[index], utc);
    const double error = std::hypot(predicted.x - truth.x, predicted.y - truth.y, predicted.z - truth.z);
    if (error <= kUsableOrbitError) {
        memory.ephemerisUntil[index] = std::max(memory.ephemerisUntil[index], toe + fit);
    }
}

} // namespace

Vector3 PredictedPosition(const protocol::AssistOrbit& orbit, Millis utc)
{
    const double elapsed = static_cast<double>(utc - orbit.toe * Millis{1000}) / 1000.0;
    const double u = orbit.argument + std::sqrt(kGravity / (orbit.radius * orbit.radius * orbit.radius)) * elapsed;
    const double node = orbit.node - kEarthRate * elapsed;
    const double ci = std::cos(orbit.inclination);
    return {orbit.radius * (std::cos(u) * std::cos(node) - std::sin(u) * ci * std::sin(node)),
            orbit.radius * (std::cos(u) * std::sin(node) + std::sin(u) * ci * std::cos(node)),
            orbit.radius * std::sin(u) * std::sin(orbit.inclination)};
}

bool TimeHelps(Millis injected, Millis utc)
{
    return std::llabs(injected - utc) <= kUsableTimeError;
}

bool AssistanceValid(const protocol::AssistForm& form, const std::uint8_t* payload, std::size_t length)
{
    protocol::AssistHeader header;
    protocol::ImageReader body(nullptr, 0);
    if (!protocol::ReadAssistHeader(payload, length, header, body) || header.kind != form.kind ||
        (form.systems & protocol::SystemBit(header.system)) == 0) {
        return false;
    }
    switch (form.kind) {
    case protocol::AssistKind::Ephemeris: {
        std::vector<protocol::AssistOrbit> orbits;
        return protocol::ReadAssistEphemeris(header, body, orbits);
    }
    case protocol::AssistKind::Channels: {
        std::vector<protocol::AssistChannel> channels;
        return protocol::ReadAssistChannels(header, body, channels);
    }
    case protocol::AssistKind::Time: {
        protocol::AssistTime time;
        return header.count == 1 && protocol::ReadAssistTime(body, time);
    }
    case protocol::AssistKind::Utc: {
        protocol::AssistUtc model;
        return header.count == 1 && protocol::ReadAssistUtc(body, model);
    }
    case protocol::AssistKind::Ionosphere: {
        protocol::AssistIonosphere ionosphere;
        return header.count == 1 && protocol::ReadAssistIonosphere(body, ionosphere);
    }
    case protocol::AssistKind::Integrity: {
        protocol::AssistIntegrity integrity;
        return header.count == 1 && protocol::ReadAssistIntegrity(body, integrity);
    }
    case protocol::AssistKind::FineIonosphere: {
        protocol::AssistGrid grid;
        return header.count == 1 && protocol::ReadAssistGrid(body, grid);
    }
    }
    return false;
}

void TakeAssistance(const protocol::AssistForm& form, const std::uint8_t* payload, std::size_t length, Millis utc,
                    Memory& memory)
{
    protocol::AssistHeader header;
    protocol::ImageReader body(nullptr, 0);
    if (!protocol::ReadAssistHeader(payload, length, header, body)) {
        return;
    }
    if (form.kind == protocol::AssistKind::Time) {
        protocol::AssistTime time;
        if (protocol::ReadAssistTime(body, time) &&
            TimeHelps(time.seconds * Millis{1000} + time.millisecond, utc)) {
            memory.timeKnown = true;
        }
    } else if (form.kind == protocol::AssistKind::Ephemeris) {
        std::vector<protocol::AssistOrbit> orbits;
        if (protocol::ReadAssistEphemeris(header, body, orbits)) {
            for (const protocol::AssistOrbit& orbit : orbits) {
                TakeEphemeris(header.system, orbit, utc, memory);
            }
        }
    } else if (form.kind == protocol::AssistKind::Integrity) {
        protocol::AssistIntegrity integrity;
        protocol::ReadAssistIntegrity(body, integrity);
        for (std::size_t i = 0; i < AllOrbits().size(); ++i) {
            const Orbit& orbit = AllOrbits()[i];
            if (orbit.system == header.system && (integrity.unusable >> (NumberInSystem(orbit) - 1) & 1u) != 0) {
                memory.ephemerisUntil[i] = 0;
            }
        }
    }
}

} // namespace receiver
