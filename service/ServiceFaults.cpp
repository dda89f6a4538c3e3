// SPDX-License-Identifier: MIT
#include "service/ServiceFaults.h"

#include "receiver/FaultTable.h"

namespace service {

namespace {

using receiver::FaultValues;
using receiver::Needs;

constexpr receiver::FaultKind<ServiceFaults> kKinds[] = {
    {{"slow", Needs::Value, 0, 600000, false, "slow=MS", "the answer comes MS milliseconds late"},
     [](ServiceFaults& f, const FaultValues& v) { f.slowMillis = v.Whole(); }},
    {{"drip", Needs::Value, 1, 10000000, false, "drip=BYTES_PER_S", "the body comes no faster than that"},
     [](ServiceFaults& f, const FaultValues& v) { f.bytesPerSecond = v.Whole(); }},
    {{"empty", Needs::Nothing, 0, 0, false, "empty", "the body is empty"},
     [](ServiceFaults& f, const FaultValues&) { f.empty = true; }},
    {{"truncated", Needs::MaybeValue, 0, 100000000, false, "truncated[=BYTES]",
      "the body ends after BYTES, or in its middle, with a length that agrees"},
     [](ServiceFaults& f, const FaultValues& v) {
         f.truncated = v.Whole(-1);
         f.halved = v.Whole(-1) < 0;
     }},
    {{"cut", Needs::MaybeValue, 0, 100000000, false, "cut[=BYTES]",
      "the connection closes after BYTES, or in the middle, of a longer announced body"},
     [](ServiceFaults& f, const FaultValues& v) {
         f.cut = true;
         f.cutAfter = v.Whole(-1);
     }},
    {{"bad-checksum", Needs::MaybeValue, 1, 1000, false, "bad-checksum[=N]",
      "the checksum of record N is wrong (3), or that of the seed"},
     [](ServiceFaults& f, const FaultValues& v) { f.badChecksum = v.Whole(3); }},
    {{"unknown-tag", Needs::MaybeValue, 0, 65535, false, "unknown-tag[=TAG]",
      "a record with the tag TAG (200) stands in the middle of the others"},
     [](ServiceFaults& f, const FaultValues& v) { f.unknownTag = v.Whole(200); }},
    {{"silent", Needs::Nothing, 0, 0, false, "silent", "no answer ever comes; the connection stays open"},
     [](ServiceFaults& f, const FaultValues&) { f.silent = true; }},
    {{"status", Needs::Value, 400, 599, false, "status=CODE", "the answer has that status and a short text"},
     [](ServiceFaults& f, const FaultValues& v) { f.status = v.Whole(); }},
    {{"redirect", Needs::Nothing, 0, 0, false, "redirect", "the answer points to another path"},
     [](ServiceFaults& f, const FaultValues&) { f.redirect = true; }},
    {{"huge", Needs::MaybeValue, 1, 1000, false, "huge[=MIB]", "the body is filled up to MIB mebibytes (50)"},
     [](ServiceFaults& f, const FaultValues& v) { f.hugeMebibytes = v.Whole(50); }},
    {{"expired", Needs::Nothing, 0, 0, false, "expired", "seeds are a day past their validity"},
     [](ServiceFaults& f, const FaultValues&) { f.expired = true; }},
};

} // namespace

bool ServiceFaults::Add(std::string_view text, std::string& error)
{
    return receiver::AddFault(kKinds, text, *this, error);
}

std::string ServiceFaults::List()
{
    return receiver::ListFaults(kKinds);
}

} // namespace service
