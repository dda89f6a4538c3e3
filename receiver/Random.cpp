// SPDX-License-Identifier: MIT
#include "receiver/Random.h"

#include <cmath>

namespace receiver {

namespace {

constexpr double kTwoPi = 6.283185307179586;

std::uint64_t Scramble(std::uint64_t z)
{
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}

double GaussianFromKey(std::uint64_t key, std::uint64_t knot)
{
    const double u = 1.0 - UnitFromBits(MixKeys(key, knot, 1));
    const double v = UnitFromBits(MixKeys(key, knot, 2));
    return std::sqrt(-2.0 * std::log(u)) * std::cos(kTwoPi * v);
}

} // namespace

std::uint64_t MixKeys(std::uint64_t a, std::uint64_t b, std::uint64_t c)
{
    return Scramble(Scramble(Scramble(a + 0x9E3779B97F4A7C15ull) ^ (b + 0xD1B54A32D192ED03ull)) ^
                    (c + 0x8CB92BA72F3D8DD7ull));
}

double UnitFromBits(std::uint64_t bits)
{
    return static_cast<double>(bits >> 11) * (1.0 / 9007199254740992.0);
}

std::uint64_t Random::Bits()
{
    m_state += 0x9E3779B97F4A7C15ull;
    return Scramble(m_state);
}

double Random::Gaussian()
{
    const double u = 1.0 - Uniform();
    const double v = Uniform();
    return std::sqrt(-2.0 * std::log(u)) * std::cos(kTwoPi * v);
}

double SmoothNoise(std::uint64_t key, double seconds, double knotSeconds)
{
    const double position = seconds / knotSeconds;
    const double knot = std::floor(position);
    const double x = position - knot;
    const double weight = x * x * (3.0 - 2.0 * x);
    const auto index = static_cast<std::uint64_t>(static_cast<std::int64_t>(knot));
    const double before = GaussianFromKey(key, index);
    const double after = GaussianFromKey(key, index + 1);
    // The weights' squares sum to 1, which keeps the deviation the same between the knots.
    return (before * (1.0 - weight) + after * weight) /
           std::sqrt((1.0 - weight) * (1.0 - weight) + weight * weight);
}

} // namespace receiver
