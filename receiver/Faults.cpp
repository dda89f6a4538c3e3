// SPDX-License-Identifier: MIT
#include "receiver/Faults.h"

#include "receiver/FaultTable.h"

namespace receiver {

namespace {

constexpr double kLongest = 1e7;

constexpr FaultKind<Faults> kKinds[] = {
    {{"silence", Needs::MaybeValue, 0, kLongest, false, "silence[=SECONDS]",
      "nothing at all is sent, from SECONDS after power-on (0)"},
     [](Faults& f, const FaultValues& v) {
         f.silence = true;
         f.silenceFrom = v.Number(0, 0.0);
     }},
    {{"ack-lost", Needs::MaybeValue, 1, kLongest, false, "ack-lost[=N]",
      "the first N acknowledgements are lost (all); the commands are obeyed"},
     [](Faults& f, const FaultValues& v) { f.ackLost = v.Whole(-1); }},
    {{"ack-late", Needs::Value, 0, 600000, false, "ack-late=MS",
      "every acknowledgement comes MS milliseconds late"},
     [](Faults& f, const FaultValues& v) { f.ackLateMillis = v.Whole(); }},
    {{"ack-double", Needs::Nothing, 0, 0, false, "ack-double", "every acknowledgement is sent twice"},
     [](Faults& f, const FaultValues&) { f.ackDouble = true; }},
    {{"ack-other", Needs::Value, 0, 65535, false, "ack-other=ID",
      "acknowledgements name the command ID in the place of the one that came"},
     [](Faults& f, const FaultValues& v) { f.ackOther = static_cast<int>(v.Whole()); }},
    {{"refuse", Needs::MaybeValue, 0, 65535, false, "refuse[=STATUS]",
      "no command is obeyed; its acknowledgement has STATUS (3)"},
     [](Faults& f, const FaultValues& v) { f.refuse = static_cast<int>(v.Whole(3)); }},
    {{"garbage", Needs::MaybeValue, 1, 1000000, false, "garbage[=BYTES_PER_S]",
      "random bytes between the messages (200)"},
     [](Faults& f, const FaultValues& v) { f.garbageRate = v.Whole(200); }},
    {{"cut-frames", Needs::MaybeValue, 1, 100, false, "cut-frames[=PERCENT]",
      "that share of sentences and frames loses its end (20)"},
     [](Faults& f, const FaultValues& v) { f.cutPercent = static_cast<int>(v.Whole(20)); }},
    {{"bad-checksum", Needs::MaybeValue, 1, 100, false, "bad-checksum[=PERCENT]",
      "that share of sentences has a wrong checksum (10)"},
     [](Faults& f, const FaultValues& v) { f.badChecksumPercent = static_cast<int>(v.Whole(10)); }},
    {{"slow-bytes", Needs::Value, 1, 10000000, false, "slow-bytes=BYTES_PER_S",
      "the line carries no more than that; what does not fit is dropped by whole messages"},
     [](Faults& f, const FaultValues& v) { f.bytesPerSecond = v.Whole(); }},
    {{"unplug", Needs::Value, 0, kLongest, true, "unplug=SECONDS[,BACK]",
      "the line is pulled that long after power-on, and is back BACK seconds later (never)"},
     [](Faults& f, const FaultValues& v) {
         f.unplugAt = v.Number(0, 0.0);
         f.replugAfter = v.Number(1, -1.0);
     }},
    {{"sleep", Needs::Value, 0, kLongest, true, "sleep=SECONDS[,WAIT]",
      "sleeps that long after power-on until a 0x00 byte comes; asks to be woken after WAIT seconds (2; 0: "
      "never)"},
     [](Faults& f, const FaultValues& v) {
         f.sleepAt = v.Number(0, 0.0);
         f.wakeRequestAfter = v.Number(1, 2.0);
     }},
    {{"no-fix", Needs::Nothing, 0, 0, false, "no-fix", "weak signals and never a fix"},
     [](Faults& f, const FaultValues&) { f.noFix = true; }},
    {{"loader-wrong", Needs::MaybeValue, 1, kLongest, false, "loader-wrong[=N]",
      "the loader's answer N to a firmware load (1) holds a wrong byte"},
     [](Faults& f, const FaultValues& v) { f.loaderWrong = v.Whole(1); }},
    {{"loader-mute", Needs::MaybeValue, 1, kLongest, false, "loader-mute[=N]",
      "the loader's answers do not come, from answer N on (1)"},
     [](Faults& f, const FaultValues& v) { f.loaderMute = v.Whole(1); }},
    {{"loader-late", Needs::Value, 1, 600000, false, "loader-late=MS",
      "the loader's answers come MS milliseconds late"},
     [](Faults& f, const FaultValues& v) { f.loaderLateMillis = v.Whole(); }},
    {{"loader-split", Needs::MaybeValue, 1, 600000, false, "loader-split[=MS]",
      "the loader's answers come in two parts, MS milliseconds apart (120)"},
     [](Faults& f, const FaultValues& v) { f.loaderSplitMillis = v.Whole(120); }},
};

} // namespace

bool Faults::Add(std::string_view text, std::string& error)
{
    return AddFault(kKinds, text, *this, error);
}

std::string Faults::List()
{
    return ListFaults(kKinds);
}

} // namespace receiver
