// SPDX-License-Identifier: MIT
#include "views/RecordField.h"

#include "views/RecordConversions.h"

#include <QChar>
#include <QLatin1Char>

#include <cstring>

namespace {

constexpr int kSignificantDigits = 6;

template <typename T> T Read(const char* at)
{
    T value;
    std::memcpy(&value, at, sizeof(T));
    return value;
}

QString TimeText(double value)
{
    const NmeaHms time = NmeaTimeToHms(value);
    return QString::number(time.hour) + ':' + QString::number(time.minute) + ':' + GeneralText(time.second);
}

QString DateText(std::uint32_t value)
{
    const NmeaYmd date = NmeaDateToYmd(value);
    return QString::number(date.year) + '-' + QString::number(date.month) + '-' + QString::number(date.day);
}

} // namespace

std::size_t FieldSize(FieldKind kind)
{
    switch (kind) {
    case FieldKind::U8:
    case FieldKind::I8:
    case FieldKind::Char:
    case FieldKind::Hex8:
    case FieldKind::Direction:
        return 1;
    case FieldKind::U16:
    case FieldKind::I16:
    case FieldKind::Hex16:
        return 2;
    case FieldKind::U32:
    case FieldKind::I32:
    case FieldKind::F32:
    case FieldKind::NmeaDate:
        return 4;
    case FieldKind::U64:
    case FieldKind::F64:
    case FieldKind::NmeaTime:
        return 8;
    case FieldKind::Coordinate:
        return 9;
    }
    return 0;
}

QString FieldText(const char* record, std::size_t size, std::size_t offset, FieldKind kind)
{
    if (offset > size || size - offset < FieldSize(kind)) {
        return QString();
    }
    const char* at = record + offset;
    switch (kind) {
    case FieldKind::U8:
        return QString::number(Read<std::uint8_t>(at));
    case FieldKind::I8:
        return QString::number(Read<std::int8_t>(at));
    case FieldKind::U16:
        return QString::number(Read<std::uint16_t>(at));
    case FieldKind::I16:
        return QString::number(Read<std::int16_t>(at));
    case FieldKind::U32:
        return QString::number(Read<std::uint32_t>(at));
    case FieldKind::I32:
        return QString::number(Read<std::int32_t>(at));
    case FieldKind::U64:
        return QString::number(static_cast<qulonglong>(Read<std::uint64_t>(at)));
    case FieldKind::Char:
        return *at == '\0' ? QString() : QString(QLatin1Char(*at));
    case FieldKind::F32:
        return GeneralText(static_cast<double>(Read<float>(at)));
    case FieldKind::F64:
        return GeneralText(Read<double>(at));
    case FieldKind::Coordinate:
        return GeneralText(NmeaToDegrees(Read<double>(at), at[sizeof(double)]));
    case FieldKind::NmeaTime:
        return TimeText(Read<double>(at));
    case FieldKind::NmeaDate:
        return DateText(Read<std::uint32_t>(at));
    case FieldKind::Hex8:
        return QString::asprintf("0x%X", static_cast<unsigned>(Read<std::uint8_t>(at)));
    case FieldKind::Hex16:
        return QString::asprintf("0x%X", static_cast<unsigned>(Read<std::uint16_t>(at)));
    case FieldKind::Direction:
        return QString(*at == 0 ? "receive" : "send");
    }
    return QString();
}

QString GeneralText(double value)
{
    return QString::number(value, 'g', kSignificantDigits);
}
