// SPDX-License-Identifier: MIT
#include "receiver/FaultTable.h"

#include "receiver/TextNumbers.h"

namespace receiver {

namespace {

bool Fail(std::string& error, const FaultForm& form, std::string_view what)
{
    error = "fault ";
    error += form.form;
    error += ": ";
    error += what;
    return false;
}

} // namespace

bool FaultValues::Read(const FaultForm& form, std::string_view text, std::string& error)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) {
        return form.needs != Needs::Value || Fail(error, form, "needs a value");
    }
    if (form.needs == Needs::Nothing) {
        return Fail(error, form, "takes no value");
    }
    bool good = true;
    Split(text.substr(equals + 1), ',', [&](std::string_view piece) {
        const std::size_t most = form.second ? 2 : 1;
        double value = 0.0;
        if (m_count == most || !ParseDouble(piece, value) || value > form.highest ||
            value < (m_count == 0 ? form.lowest : 0.0)) {
            good = false;
            return;
        }
        m_values[m_count++] = value;
    });
    return good || Fail(error, form, "no such value");
}

} // namespace receiver
