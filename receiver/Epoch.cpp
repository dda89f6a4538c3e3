// SPDX-License-Identifier: MIT
#include "receiver/Epoch.h"

#include <array>
#include <cmath>
#include <utility>

namespace receiver {

namespace {

using Matrix = std::array<std::array<double, 8>, 4>;

// Gauss-Jordan with row exchange; the right half becomes the inverse.
bool Invert(Matrix& m)
{
    for (std::size_t column = 0; column < 4; ++column) {
        std::size_t best = column;
        for (std::size_t row = column + 1; row < 4; ++row) {
            if (std::abs(m[row][column]) > std::abs(m[best][column])) {
                best = row;
            }
        }
        if (std::abs(m[best][column]) < 1e-9) {
            return false;
        }
        std::swap(m[best], m[column]);
        const double pivot = m[column][column];
        for (double& value : m[column]) {
            value /= pivot;
        }
        for (std::size_t row = 0; row < 4; ++row) {
            const double factor = m[row][column];
            if (row == column) {
                continue;
            }
            for (std::size_t i = 0; i < 8; ++i) {
                m[row][i] -= factor * m[column][i];
            }
        }
    }
    return true;
}

} // namespace

bool ComputeDilution(const std::vector<EpochSatellite>& satellites, double& pdop, double& hdop, double& vdop)
{
    Matrix m{};
    int count = 0;
    for (const EpochSatellite& satellite : satellites) {
        if (!satellite.used) {
            continue;
        }
        ++count;
        const double e = satellite.view.look.elevation * kDegree;
        const double a = satellite.view.look.azimuth * kDegree;
        const double row[4] = {std::cos(e) * std::sin(a), std::cos(e) * std::cos(a), std::sin(e), 1.0};
        for (std::size_t i = 0; i < 4; ++i) {
            for (std::size_t j = 0; j < 4; ++j) {
                m[i][j] += row[i] * row[j];
            }
        }
    }
    for (std::size_t i = 0; i < 4; ++i) {
        m[i][4 + i] = 1.0;
    }
    if (count < 4 || !Invert(m)) {
        return false;
    }
    hdop = std::sqrt(std::abs(m[0][4] + m[1][5]));
    vdop = std::sqrt(std::abs(m[2][6]));
    pdop = std::sqrt(hdop * hdop + vdop * vdop);
    return true;
}

} // namespace receiver
