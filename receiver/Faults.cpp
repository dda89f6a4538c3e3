#include "receiver/Faults.h"

#include "receiver/TextNumbers.h"

namespace vrx {

namespace {

enum class Needs { Nothing, MaybeValue, Value };

struct FaultKind {
    std::string_view name;
    Needs needs;
    double lowest;
    double highest;
    bool second; ///< takes a second number behind a comma
    std::string_view form;
    std::string_view help;
    void (*set)(Faults&, const double* values, int count);
};

constexpr double kLongest = 1e7;

constexpr FaultKind kKinds[] = {
    {"silence", Needs::MaybeValue, 0, kLongest, false, "silence[=SECONDS]",
     "nothing at all is sent, from SECONDS after power-on (0)",
     [](Faults& f, const double* v, int n) {
         f.silence = true;
         f.silenceFrom = n > 0 ? v[0] : 0.0;
     }},
    {"ack-lost", Needs::MaybeValue, 1, kLongest, false, "ack-lost[=N]",
     "the first N acknowledgements are lost (all); the commands are obeyed",
     [](Faults& f, const double* v, int n) { f.ackLost = n > 0 ? static_cast<std::int64_t>(v[0]) : -1; }},
    {"ack-late", Needs::Value, 0, 600000, false, "ack-late=MS", "every acknowledgement comes MS milliseconds late",
     [](Faults& f, const double* v, int) { f.ackLateMillis = static_cast<std::int64_t>(v[0]); }},
    {"ack-double", Needs::Nothing, 0, 0, false, "ack-double", "every acknowledgement is sent twice",
     [](Faults& f, const double*, int) { f.ackDouble = true; }},
    {"ack-other", Needs::Value, 0, 65535, false, "ack-other=ID",
     "acknowledgements name the command ID in the place of the one that came",
     [](Faults& f, const double* v, int) { f.ackOther = static_cast<int>(v[0]); }},
    {"refuse", Needs::MaybeValue, 0, 65535, false, "refuse[=STATUS]",
     "no command is obeyed; its acknowledgement has STATUS (3)",
     [](Faults& f, const double* v, int n) { f.refuse = n > 0 ? static_cast<int>(v[0]) : 3; }},
    {"garbage", Needs::MaybeValue, 1, 1000000, false, "garbage[=BYTES_PER_S]",
     "random bytes between the messages (200)",
     [](Faults& f, const double* v, int n) { f.garbageRate = n > 0 ? static_cast<std::int64_t>(v[0]) : 200; }},
    {"cut-frames", Needs::MaybeValue, 1, 100, false, "cut-frames[=PERCENT]",
     "that share of sentences and frames loses its end (20)",
     [](Faults& f, const double* v, int n) { f.cutPercent = n > 0 ? static_cast<int>(v[0]) : 20; }},
    {"bad-checksum", Needs::MaybeValue, 1, 100, false, "bad-checksum[=PERCENT]",
     "that share of sentences has a wrong checksum (10)",
     [](Faults& f, const double* v, int n) { f.badChecksumPercent = n > 0 ? static_cast<int>(v[0]) : 10; }},
    {"slow-bytes", Needs::Value, 1, 10000000, false, "slow-bytes=BYTES_PER_S",
     "the line carries no more than that; what does not fit is dropped by whole messages",
     [](Faults& f, const double* v, int) { f.bytesPerSecond = static_cast<std::int64_t>(v[0]); }},
    {"unplug", Needs::Value, 0, kLongest, true, "unplug=SECONDS[,BACK]",
     "the line is pulled that long after power-on, and is back BACK seconds later (never)",
     [](Faults& f, const double* v, int n) {
         f.unplugAt = v[0];
         f.replugAfter = n > 1 ? v[1] : -1.0;
     }},
    {"sleep", Needs::Value, 0, kLongest, true, "sleep=SECONDS[,WAIT]",
     "sleeps that long after power-on until a 0x00 byte comes; asks to be woken after WAIT seconds (2; 0: never)",
     [](Faults& f, const double* v, int n) {
         f.sleepAt = v[0];
         f.wakeRequestAfter = n > 1 ? v[1] : 2.0;
     }},
    {"no-fix", Needs::Nothing, 0, 0, false, "no-fix", "weak signals and never a fix",
     [](Faults& f, const double*, int) { f.noFix = true; }},
    {"loader-wrong", Needs::MaybeValue, 1, kLongest, false, "loader-wrong[=N]",
     "the loader's answer N to a firmware load (1) holds a wrong byte",
     [](Faults& f, const double* v, int n) { f.loaderWrong = n > 0 ? static_cast<std::int64_t>(v[0]) : 1; }},
    {"loader-mute", Needs::MaybeValue, 1, kLongest, false, "loader-mute[=N]",
     "the loader's answers do not come, from answer N on (1)",
     [](Faults& f, const double* v, int n) { f.loaderMute = n > 0 ? static_cast<std::int64_t>(v[0]) : 1; }},
    {"loader-late", Needs::Value, 1, 600000, false, "loader-late=MS",
     "the loader's answers come MS milliseconds late",
     [](Faults& f, const double* v, int) { f.loaderLateMillis = static_cast<std::int64_t>(v[0]); }},
    {"loader-split", Needs::MaybeValue, 1, 600000, false, "loader-split[=MS]",
     "the loader's answers come in two parts, MS milliseconds apart (120)",
     [](Faults& f, const double* v, int n) {
         f.loaderSplitMillis = n > 0 ? static_cast<std::int64_t>(v[0]) : 120;
     }},
};

bool Fail(std::string& error, const FaultKind& kind, std::string_view what)
{
    error = "fault ";
    error += kind.form;
    error += ": ";
    error += what;
    return false;
}

} // namespace

bool Faults::Add(std::string_view text, std::string& error)
{
    const std::size_t equals = text.find('=');
    const std::string_view name = text.substr(0, equals);
    for (const FaultKind& kind : kKinds) {
        if (kind.name != name) {
            continue;
        }
        double values[2] = {0.0, 0.0};
        int count = 0;
        if (equals == std::string_view::npos) {
            if (kind.needs == Needs::Value) {
                return Fail(error, kind, "needs a value");
            }
        } else {
            if (kind.needs == Needs::Nothing) {
                return Fail(error, kind, "takes no value");
            }
            bool good = true;
            Split(text.substr(equals + 1), ',', [&](std::string_view piece) {
                double value = 0.0;
                if (count == (kind.second ? 2 : 1) || !ParseDouble(piece, value) || value > kind.highest ||
                    value < (count == 0 ? kind.lowest : 0.0)) {
                    good = false;
                    return;
                }
                values[count++] = value;
            });
            if (!good) {
                return Fail(error, kind, "no such value");
            }
        }
        kind.set(*this, values, count);
        return true;
    }
    error = "no fault is named \"" + std::string(name) + "\" (--list-faults shows them)";
    return false;
}

std::string Faults::List()
{
    std::string list;
    for (const FaultKind& kind : kKinds) {
        std::string line(kind.form);
        line.resize(26, ' ');
        list += line;
        list += kind.help;
        list += '\n';
    }
    return list;
}

} // namespace vrx
