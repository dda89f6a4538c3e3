// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Tables of the faults that a program shows on request, given as "NAME" or "NAME=VALUE".

namespace receiver {

enum class Needs { Nothing, MaybeValue, Value };

/// How a fault is given on a command line.
struct FaultForm {
    std::string_view name;
    Needs needs;
    double lowest;
    double highest;
    bool second; ///< takes a second number, at least 0, behind a comma
    std::string_view form;
    std::string_view help;
};

/// The numbers that were given.
class FaultValues {
public:
    /// Takes what stands behind the name. On failure `error` says what is wrong.
    bool Read(const FaultForm& form, std::string_view text, std::string& error);

    /// A number, or `usual` when it was not given.
    double Number(std::size_t index, double usual) const { return index < m_count ? m_values[index] : usual; }
    /// The first as a whole number.
    std::int64_t Whole(std::int64_t usual = 0) const
    {
        return m_count > 0 ? static_cast<std::int64_t>(m_values[0]) : usual;
    }

private:
    double m_values[2] = {0.0, 0.0};
    std::size_t m_count = 0;
};

template <typename Faults> struct FaultKind {
    FaultForm form;
    void (*set)(Faults& faults, const FaultValues& values);
};

/// Sets the fault that a text names. On failure `error` says what is wrong.
template <typename Faults, std::size_t size>
bool AddFault(const FaultKind<Faults> (&kinds)[size], std::string_view text, Faults& faults, std::string& error)
{
    const std::string_view name = text.substr(0, text.find('='));
    for (const FaultKind<Faults>& kind : kinds) {
        if (kind.form.name == name) {
            FaultValues values;
            const bool good = values.Read(kind.form, text, error);
            if (good) {
                kind.set(faults, values);
            }
            return good;
        }
    }
    error = "no fault is named \"" + std::string(name) + "\" (--list-faults shows them)";
    return false;
}

/// One line for each fault.
template <typename Faults, std::size_t size> std::string ListFaults(const FaultKind<Faults> (&kinds)[size])
{
    constexpr std::size_t helpColumn = 26;
    std::string list;
    for (const FaultKind<Faults>& kind : kinds) {
        std::string line(kind.form.form);
        line.resize(helpColumn, ' ');
        list += line;
        list += kind.form.help;
        list += '\n';
    }
    return list;
}

} // namespace receiver
