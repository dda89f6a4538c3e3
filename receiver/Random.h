// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace receiver {

/// Mixes keys into 64 well-spread bits; the same keys give the same bits on every machine.
std::uint64_t MixKeys(std::uint64_t a, std::uint64_t b, std::uint64_t c = 0);

/// A number in [0, 1) from such bits.
double UnitFromBits(std::uint64_t bits);

/// A repeatable stream of random numbers. The distributions of the standard library differ between its
/// implementations, so these are our own.
class Random {
public:
    explicit Random(std::uint64_t seed) : m_state(seed) {}

    std::uint64_t Bits();
    double Uniform() { return UnitFromBits(Bits()); } ///< [0, 1)
    double Gaussian();                                ///< mean 0, deviation 1

private:
    std::uint64_t m_state;
};

/// Smooth noise with mean 0 and a deviation near 1: a pure function of the key and the time, so that it does
/// not depend on how often it is asked. `knotSeconds` is its correlation time.
double SmoothNoise(std::uint64_t key, double seconds, double knotSeconds);

} // namespace receiver
