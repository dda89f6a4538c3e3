// SPDX-License-Identifier: MIT
#include "codec/CallbackSink.h"
#include "codec/Codec.h"
#include "codec/Geodesy.h"
#include "protocol/LinkFrame.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

std::string ReadFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// All captures one behind the other; empty when the folder is missing.
const std::string& Captures()
{
    static const std::string all = [] {
        std::vector<std::filesystem::path> paths;
        if (std::filesystem::is_directory(GNSS_CAPTURES)) {
            for (const auto& entry : std::filesystem::directory_iterator(GNSS_CAPTURES)) {
                if (entry.path().extension() == ".log") {
                    paths.push_back(entry.path());
                }
            }
        }
        std::sort(paths.begin(), paths.end());
        std::string bytes;
        for (const auto& path : paths) {
            bytes += ReadFile(path);
        }
        return bytes;
    }();
    return all;
}

/// The captures with a byte in 500 changed and frames and noise between.
std::string NoisyMixture()
{
    std::mt19937 random(1);
    std::string bytes;
    const std::string& captures = Captures();
    for (std::size_t at = 0; at < captures.size(); at += 700) {
        bytes += captures.substr(at, 700);
        std::string payload(random() % 300, '\0');
        for (char& c : payload) {
            c = static_cast<char>(random());
        }
        std::vector<std::uint8_t> frame(payload.size() + protocol::kFrameOverhead);
        protocol::WriteFrame(frame.data(), frame.size(), protocol::RptMessage, 0, 0, payload.data(),
                             payload.size());
        bytes.append(frame.begin(), frame.end());
        bytes += payload;
    }
    for (std::size_t at = 0; at < bytes.size(); at += 1 + random() % 1000) {
        bytes[at] = static_cast<char>(random());
    }
    return bytes;
}

void Take(const void* data, int length)
{
    benchmark::DoNotOptimize(data);
    benchmark::DoNotOptimize(length);
}

void RunDecode(benchmark::State& state, const std::string& bytes)
{
    if (bytes.empty()) {
        state.SkipWithError("no captures");
        return;
    }
    codec::CallbackSink sink;
    for (const std::uint32_t type : {0, 3, 100, 101, 102, 103, 200, 300, 400, 500, 501, 600, 601, 700, 701}) {
        sink.Register(type, Take);
    }
    const auto codec = std::make_unique<codec::Codec>(&sink);
    const std::size_t chunk = static_cast<std::size_t>(state.range(0));
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    for (auto _ : state) {
        for (std::size_t at = 0; at < bytes.size(); at += chunk) {
            codec->Decode(data + at, std::min(chunk, bytes.size() - at));
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes.size()));
}

void DecodeCaptures(benchmark::State& state)
{
    RunDecode(state, Captures());
}
BENCHMARK(DecodeCaptures)->Arg(1)->Arg(64)->Arg(1000)->Arg(65536);

void DecodeNoisyMixture(benchmark::State& state)
{
    static const std::string bytes = NoisyMixture();
    RunDecode(state, bytes);
}
BENCHMARK(DecodeNoisyMixture)->Arg(1000)->Arg(65536);

/// A track around one centre, as the positioning view converts it at each paint.
void ConvertTrack(benchmark::State& state)
{
    const double centre[3] = {116.3, 39.9, 0};
    double position[3] = {116.3, 39.9, 0};
    double enu[3];
    for (auto _ : state) {
        position[0] += 1e-9;
        codec::GeodeticToEnu(centre, position, enu);
        benchmark::DoNotOptimize(enu);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}
BENCHMARK(ConvertTrack);

} // namespace

BENCHMARK_MAIN();
