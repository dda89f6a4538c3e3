// SPDX-License-Identifier: MIT
#include "tools/log/CaptureSummary.h"
#include "tools/log/Numbers.h"
#include "tools/log/TrackWriter.h"

#include <algorithm>

namespace tools {

namespace {

constexpr int kSecondDecimals = 3;
constexpr int kRateDecimals = 3;
constexpr int kCn0Decimals = 1;
constexpr std::size_t kLabelWidth = 14;

std::string Fixed(double value, int decimals)
{
    std::string text;
    AppendFixed(text, value, decimals);
    return text;
}

std::string Seconds(std::int64_t milliseconds)
{
    return Fixed(static_cast<double>(milliseconds) / 1000.0, kSecondDecimals);
}

/// "1" and "0.2", without zeros at the end.
std::string Rate(const CaptureSummary& summary)
{
    std::string text = Fixed(1000.0 / static_cast<double>(summary.Intervals().Typical()), kRateDecimals);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') {
        text.pop_back();
    }
    return text;
}

double MeanCn0(const ConstellationSummary& constellation)
{
    return static_cast<double>(constellation.cn0Sum) / static_cast<double>(constellation.signals);
}

std::string Column(const std::string& text, std::size_t width)
{
    return text + std::string(text.size() < width ? width - text.size() : 1, ' ');
}

std::string Line(const char* label, const std::string& value)
{
    return Column(label, kLabelWidth) + value + '\n';
}

std::string Plural(std::uint64_t count, const char* one, const char* many)
{
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

void AppendFixes(std::string& text, const CaptureSummary& summary)
{
    std::string modes;
    for (std::size_t mode = 0; mode < kFixModeCount; ++mode) {
        if (summary.FixesOfMode(mode) > 0) {
            modes += (modes.empty() ? ": " : ", ") + std::to_string(summary.FixesOfMode(mode)) + ' ' +
                     kFixModes[mode].name;
        }
    }
    text += Line("fixes",
                 std::to_string(summary.Fixes()) + " in " + Plural(summary.Epochs(), "epoch", "epochs") + modes);
    if (summary.Fixes() > 0) {
        const protocol::FixRecord& fix = summary.FirstFix();
        std::string first = summary.FirstFixTime().Text();
        first += first.empty() ? "" : ", ";
        first += Seconds(summary.TimeToFirstFixMs()) + " s after the first epoch, at " +
                 Fixed(fix.latitude, kDegreeDecimals) + ' ' + Fixed(fix.longitude, kDegreeDecimals) + ' ' +
                 Fixed(fix.altitude, kAltitudeDecimals) + " m";
        text += Line("first fix", first);
        text += Line("fix lost", Plural(summary.FixLosses(), "time", "times"));
    }
}

void AppendTimes(std::string& text, const CaptureSummary& summary)
{
    if (!summary.FirstTime().Known()) {
        return;
    }
    text += Line("first epoch", summary.FirstTime().Text());
    text += Line("last epoch", summary.LastTime().Text());
    text += Line("span", Seconds(summary.SpanMs()) + " s");
    if (summary.StepsBack() > 0) {
        text += Line("steps back", std::to_string(summary.StepsBack()));
    }
    if (summary.Intervals().Typical() > 0) {
        text += Line("rate", Rate(summary) + " Hz");
    }
}

void AppendGaps(std::string& text, const CaptureSummary& summary)
{
    const IntervalStatistics::Gaps gaps = summary.Intervals().FindGaps();
    text += Line("gaps", gaps.count == 0 ? std::string("none")
                                         : std::to_string(gaps.count) + ", " + Seconds(gaps.milliseconds) +
                                               " s together, the longest:");
    for (const IntervalStatistics::Gap& gap : gaps.longest) {
        text += Line("", Seconds(gap.milliseconds) + " s from " + gap.from.Text());
    }
}

void AppendConstellations(std::string& text, const CaptureSummary& summary)
{
    constexpr std::size_t width = 12;
    bool headed = false;
    for (std::size_t i = 0; i < CaptureSummary::kConstellations; ++i) {
        const ConstellationSummary& constellation = summary.Constellation(i);
        if (constellation.listed.none()) {
            continue;
        }
        if (!headed) {
            headed = true;
            text += '\n' + Column("constellation", kLabelWidth) + Column("satellites", width) +
                    Column("used", width) + Column("mean C/N0", width) + "highest (dB-Hz)\n";
        }
        const bool tracked = constellation.signals > 0;
        text += Column(protocol::kConstellationTable[i].name, kLabelWidth) +
                Column(std::to_string(constellation.listed.count()), width) +
                Column(std::to_string(constellation.used.count()), width) +
                Column(tracked ? Fixed(MeanCn0(constellation), kCn0Decimals) : "-", width) +
                (tracked ? std::to_string(constellation.cn0Highest) : "-") + '\n';
    }
}

void AppendTypes(std::string& text, const CaptureSummary& summary)
{
    if (summary.SentenceTypes().empty()) {
        return;
    }
    text += '\n' + Column("sentences", kLabelWidth) + "count\n";
    for (const auto& [type, count] : summary.SentenceTypes()) {
        text += Column(type, kLabelWidth) + std::to_string(count) + '\n';
    }
    if (summary.OtherTypes() > 0) {
        text += Column("others", kLabelWidth) + std::to_string(summary.OtherTypes()) + '\n';
    }
}

/// Members of a JSON object, one a line.
class JsonObject {
public:
    explicit JsonObject(std::size_t indent) : m_indent(indent, ' ') {}

    void Add(const std::string& name, const std::string& value)
    {
        m_text += (m_text.empty() ? "{\n" : ",\n") + m_indent + "  \"" + JsonEscaped(name) + "\": " + value;
    }
    void Add(const std::string& name, std::uint64_t value) { Add(name, std::to_string(value)); }
    void AddString(const std::string& name, const std::string& value)
    {
        Add(name, value.empty() ? "null" : '"' + JsonEscaped(value) + '"');
    }
    std::string Text() const { return m_text.empty() ? "{}" : m_text + '\n' + m_indent + '}'; }

private:
    std::string m_indent;
    std::string m_text;
};

std::string JsonFirstFix(const CaptureSummary& summary)
{
    if (summary.Fixes() == 0) {
        return "null";
    }
    const protocol::FixRecord& fix = summary.FirstFix();
    JsonObject object(2);
    object.AddString("time", summary.FirstFixTime().Text());
    object.Add("seconds_after_first_epoch", Seconds(summary.TimeToFirstFixMs()));
    object.Add("latitude", Fixed(fix.latitude, kDegreeDecimals));
    object.Add("longitude", Fixed(fix.longitude, kDegreeDecimals));
    object.Add("altitude", Fixed(fix.altitude, kAltitudeDecimals));
    object.AddString("fixmode", NameOfFixMode(fix.fixMode).name);
    return object.Text();
}

std::string JsonGaps(const CaptureSummary& summary)
{
    const IntervalStatistics::Gaps gaps = summary.Intervals().FindGaps();
    std::string longest;
    for (const IntervalStatistics::Gap& gap : gaps.longest) {
        longest += (longest.empty() ? "{\"from\": \"" : ", {\"from\": \"") + gap.from.Text() +
                   "\", \"seconds\": " + Seconds(gap.milliseconds) + '}';
    }
    JsonObject object(2);
    object.Add("count", gaps.count);
    object.Add("seconds", Seconds(gaps.milliseconds));
    object.Add("longest", '[' + longest + ']');
    return object.Text();
}

std::string JsonConstellations(const CaptureSummary& summary)
{
    JsonObject object(2);
    for (std::size_t i = 0; i < CaptureSummary::kConstellations; ++i) {
        const ConstellationSummary& constellation = summary.Constellation(i);
        if (constellation.listed.none()) {
            continue;
        }
        const bool tracked = constellation.signals > 0;
        JsonObject entry(4);
        entry.Add("satellites", constellation.listed.count());
        entry.Add("used", constellation.used.count());
        entry.Add("cn0_mean", tracked ? Fixed(MeanCn0(constellation), kCn0Decimals) : "null");
        entry.Add("cn0_highest", tracked ? std::to_string(constellation.cn0Highest) : "null");
        object.Add(protocol::kConstellationTable[i].name, entry.Text());
    }
    return object.Text();
}

} // namespace

std::string SummaryText(const std::string& name, const codec::LinkCounters& counters,
                        const CaptureSummary& summary)
{
    std::string text = Line("file", name);
    text += Line("bytes", std::to_string(counters.bytes) + ", of them " + std::to_string(counters.droppedBytes) +
                              " in neither sentence nor frame");
    text += Line("sentences", std::to_string(counters.sentences) + ", and " +
                                  std::to_string(counters.checksumErrors) + " with a wrong checksum");
    text += Line("frames", std::to_string(counters.frames));
    AppendTimes(text, summary);
    AppendFixes(text, summary);
    AppendGaps(text, summary);
    AppendConstellations(text, summary);
    AppendTypes(text, summary);
    return text;
}

std::string SummaryJson(const std::string& name, const codec::LinkCounters& counters,
                        const CaptureSummary& summary)
{
    const std::int64_t typical = summary.Intervals().Typical();
    JsonObject object(0);
    object.AddString("file", name);
    object.Add("bytes", counters.bytes);
    object.Add("other_bytes", counters.droppedBytes);
    object.Add("sentences", counters.sentences);
    object.Add("checksum_errors", counters.checksumErrors);
    object.Add("frames", counters.frames);
    object.AddString("first_epoch", summary.FirstTime().Text());
    object.AddString("last_epoch", summary.LastTime().Text());
    object.Add("span_seconds", Seconds(summary.SpanMs()));
    object.Add("steps_back", summary.StepsBack());
    object.Add("rate_hz", typical > 0 ? Rate(summary) : "null");
    object.Add("epochs", summary.Epochs());
    object.Add("fixes", summary.Fixes());
    JsonObject modes(2);
    for (std::size_t mode = 0; mode < kFixModeCount; ++mode) {
        if (summary.FixesOfMode(mode) > 0) {
            modes.Add(kFixModes[mode].name, summary.FixesOfMode(mode));
        }
    }
    object.Add("fixes_by_mode", modes.Text());
    object.Add("fix_losses", summary.FixLosses());
    object.Add("first_fix", JsonFirstFix(summary));
    object.Add("gaps", JsonGaps(summary));
    object.Add("constellations", JsonConstellations(summary));
    JsonObject types(2);
    for (const auto& [type, count] : summary.SentenceTypes()) {
        types.Add(type, count);
    }
    object.Add("sentences_by_type", types.Text());
    object.Add("sentences_of_other_types", summary.OtherTypes());
    return object.Text() + '\n';
}

} // namespace tools
