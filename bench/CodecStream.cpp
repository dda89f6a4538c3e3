// SPDX-License-Identifier: MIT
// Decodes standard input with every callback set, as the workbench does, and tells what came out. The whole
// process is what bench/codec-throughput.sh times beside other decoders.

#include "codec/CallbackSink.h"
#include "codec/Codec.h"

#include <cinttypes>
#include <cstdio>
#include <memory>

namespace {

std::uint64_t g_records = 0;
std::uint64_t g_sum = 0;

/// Touches the record, so that none is made for nothing.
void Take(const void* data, int length)
{
    ++g_records;
    if (length > 0) {
        g_sum += static_cast<const std::uint8_t*>(data)[length - 1];
    }
}

} // namespace

int main()
{
    codec::CallbackSink sink;
    for (const std::uint32_t type : {0, 3, 100, 101, 102, 103, 200, 300, 400, 500, 501, 600, 601, 700, 701}) {
        sink.Register(type, Take);
    }
    const auto codec = std::make_unique<codec::Codec>(&sink);
    static std::uint8_t buffer[65536];
    std::size_t length;
    while ((length = std::fread(buffer, 1, sizeof buffer, stdin)) > 0) {
        codec->Decode(buffer, length);
    }
    codec->EndOfInput();
    const codec::LinkCounters& counters = codec->Counters();
    std::printf("%" PRIu64 " bytes, %" PRIu64 " sentences, %" PRIu64 " wrong, %" PRIu64 " records, check %" PRIu64
                "\n",
                counters.bytes, counters.sentences, counters.checksumErrors, g_records, g_sum);
    return 0;
}
