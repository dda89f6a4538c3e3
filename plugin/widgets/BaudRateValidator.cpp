// SPDX-License-Identifier: MIT
#include "widgets/BaudRateValidator.h"

#include <algorithm>

namespace {

constexpr int kLowest = 1;
constexpr int kHighest = 24000000;

} // namespace

BaudRateValidator::BaudRateValidator(QObject* parent) : QIntValidator(kLowest, kHighest, parent) {}

QValidator::State BaudRateValidator::validate(QString& input, int& position) const
{
    const auto isDigit = [](QChar c) { return c >= '0' && c <= '9'; };
    if (!std::all_of(input.cbegin(), input.cend(), isDigit)) {
        return Invalid;
    }
    const int zeros = static_cast<int>(
        std::find_if(input.cbegin(), input.cend(), [](QChar c) { return c != '0'; }) - input.cbegin());
    input.remove(0, zeros);
    position = std::max(0, position - zeros);
    if (input.isEmpty()) {
        return Intermediate;
    }
    bool inRange = false;
    const qlonglong rate = input.toLongLong(&inRange);
    return inRange && rate <= top() ? Acceptable : Invalid;
}
