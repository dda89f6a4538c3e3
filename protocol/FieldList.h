// SPDX-License-Identifier: MIT
#pragma once

// A packed layout as data: the list of its fields in their order. One list is written, read and measured, so that
// writer, reader and length cannot differ. Free of Qt.
//
//   constexpr auto kTimeFields = Fields(&Time::seconds, Zeros<2>(), &Time::uncertainty);
//   static_assert(LengthOf(kTimeFields) == 8 && LastOffset(kTimeFields) == 6);

#include "protocol/ByteImage.h"

#include <cstddef>
#include <cstdint>
#include <tuple>
#include <type_traits>
#include <vector>

namespace protocol {

/// Bytes of a list that are zero and belong to no field.
template <std::size_t Count> struct Zeros {
};

/// A list of pointers to members and of Zeros.
template <typename... Field> constexpr std::tuple<Field...> Fields(Field... field)
{
    return {field...};
}

template <typename Field> struct FieldWidth;
template <typename Record, typename Value> struct FieldWidth<Value Record::*> {
    static constexpr std::size_t value = sizeof(Value);
};
template <std::size_t Count> struct FieldWidth<Zeros<Count>> {
    static constexpr std::size_t value = Count;
};

/// Bytes of a layout.
template <typename... Field> constexpr std::size_t LengthOf(const std::tuple<Field...>&)
{
    return (FieldWidth<Field>::value + ...);
}

/// Where the last entry of a list begins.
template <typename... Field> constexpr std::size_t LastOffset(const std::tuple<Field...>& list)
{
    using Last = std::tuple_element_t<sizeof...(Field) - 1, std::tuple<Field...>>;
    return LengthOf(list) - FieldWidth<Last>::value;
}

template <typename Value> void WriteValue(ImageWriter& image, const Value& value)
{
    if constexpr (std::is_enum_v<Value>) {
        WriteValue(image, static_cast<std::underlying_type_t<Value>>(value));
    } else if constexpr (std::is_same_v<Value, double>) {
        image.F64(value);
    } else if constexpr (std::is_same_v<Value, float>) {
        image.F32(value);
    } else if constexpr (!std::is_integral_v<Value>) {
        for (const auto& each : value) {
            WriteValue(image, each);
        }
    } else if constexpr (sizeof(Value) == 8) {
        image.U64(static_cast<std::uint64_t>(value));
    } else if constexpr (sizeof(Value) == 4) {
        image.U32(static_cast<std::uint32_t>(value));
    } else if constexpr (sizeof(Value) == 2) {
        image.U16(static_cast<std::uint16_t>(value));
    } else {
        image.U8(static_cast<std::uint8_t>(value));
    }
}

template <typename Value> void ReadValue(ImageReader& image, Value& value)
{
    if constexpr (std::is_enum_v<Value>) {
        std::underlying_type_t<Value> number{};
        ReadValue(image, number);
        value = static_cast<Value>(number);
    } else if constexpr (std::is_same_v<Value, double>) {
        value = image.F64();
    } else if constexpr (std::is_same_v<Value, float>) {
        value = image.F32();
    } else if constexpr (!std::is_integral_v<Value>) {
        for (auto& each : value) {
            ReadValue(image, each);
        }
    } else if constexpr (sizeof(Value) == 8) {
        value = static_cast<Value>(image.U64());
    } else if constexpr (sizeof(Value) == 4) {
        value = static_cast<Value>(image.U32());
    } else if constexpr (sizeof(Value) == 2) {
        value = static_cast<Value>(image.U16());
    } else {
        value = static_cast<Value>(image.U8());
    }
}

template <typename Record, typename Owner, typename Value>
void WriteField(ImageWriter& image, const Record& record, Value Owner::*field)
{
    WriteValue(image, record.*field);
}

template <typename Record, std::size_t Count> void WriteField(ImageWriter& image, const Record&, Zeros<Count>)
{
    for (std::size_t i = 0; i < Count; ++i) {
        image.U8(0);
    }
}

template <typename Record, typename Owner, typename Value>
bool ReadField(ImageReader& image, Record& record, Value Owner::*field)
{
    ReadValue(image, record.*field);
    return true;
}

template <typename Record, std::size_t Count> bool ReadField(ImageReader& image, Record&, Zeros<Count>)
{
    bool zero = true;
    for (std::size_t i = 0; i < Count; ++i) {
        zero = image.U8() == 0 && zero;
    }
    return zero;
}

/// Appends a record.
template <typename Record, typename... Field>
void WriteFields(ImageWriter& image, const Record& record, const std::tuple<Field...>& list)
{
    std::apply([&](const auto&... field) { (WriteField(image, record, field), ...); }, list);
}

/// Reads a record; false when a byte that must be zero is not. An image that is too short is told by its Good().
template <typename Record, typename... Field>
bool ReadFields(ImageReader& image, Record& record, const std::tuple<Field...>& list)
{
    bool zero = true;
    std::apply([&](const auto&... field) { ((zero = ReadField(image, record, field) && zero), ...); }, list);
    return zero;
}

/// The bytes of a record.
template <typename Record, typename... Field>
std::vector<std::uint8_t> Packed(const Record& record, const std::tuple<Field...>& list)
{
    ImageWriter image;
    WriteFields(image, record, list);
    return image.Bytes();
}

/// The record in `length` bytes; what lies beyond them is 0.
template <typename Record, typename... Field>
Record Unpacked(const void* bytes, std::size_t length, const std::tuple<Field...>& list)
{
    Record record{};
    ImageReader image(static_cast<const std::uint8_t*>(bytes), length);
    ReadFields(image, record, list);
    return record;
}

} // namespace protocol
