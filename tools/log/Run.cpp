// SPDX-License-Identifier: MIT
#include "tools/log/Run.h"

#include "codec/Codec.h"
#include "protocol/NmeaScan.h"
#include "tools/log/CaptureSummary.h"
#include "tools/log/LogInput.h"
#include "tools/log/LogOutput.h"
#include "tools/log/Progress.h"
#include "tools/log/TrackWriter.h"

#include <cstdio>
#include <functional>
#include <memory>
#include <unistd.h>

namespace tools {

namespace {

constexpr std::size_t kBlock = std::size_t{256} * 1024; ///< bytes read at a time

void Tell(const std::string& message)
{
    std::fprintf(stderr, "gnss-log: %s\n", message.c_str());
}

/// One command at work: its input, its output and the bar that shows how far it is.
class Job {
public:
    explicit Job(const Options& options) : m_options(options) {}

    ExitCode Run();

private:
    using TakeBlock = std::function<void(const char* bytes, std::size_t count)>;

    ExitCode Open();
    bool WritesToTerminal() const { return ::isatty(m_output.Descriptor()) == 1; }
    void ReadToEnd(const TakeBlock& take);
    void Decode(codec::Codec& codec);
    ExitCode Finish(bool found, const char* missing);
    ExitCode ExtractNmea();
    ExitCode Summarize();
    ExitCode WriteTrack(std::unique_ptr<TrackWriter> writer);

    const Options& m_options;
    LogInput m_input;
    LogOutput m_output;
};

ExitCode Job::Run()
{
    const ExitCode opened = Open();
    if (opened != kDone) {
        return opened;
    }
    switch (m_options.command) {
    case Command::Info:
        return Summarize();
    case Command::Nmea:
        return ExtractNmea();
    case Command::Csv:
        return WriteTrack(MakeCsvWriter(m_output));
    case Command::Gpx:
        return WriteTrack(MakeGpxWriter(m_output));
    case Command::Kml:
        return WriteTrack(MakeKmlWriter(m_output));
    case Command::GeoJson:
        return WriteTrack(MakeGeoJsonWriter(m_output));
    }
    return kUsage;
}

ExitCode Job::Open()
{
    if (!m_options.inputGiven && ::isatty(STDIN_FILENO) == 1) {
        Tell("no file given, and standard input is a terminal (- reads it all the same)");
        return kUsage;
    }
    if (!m_input.Open(m_options.input)) {
        Tell(m_input.Error());
        return kInputFailed;
    }
    if (LogOutput::IsSameFile(m_options.output, m_input.Descriptor())) {
        Tell(m_input.Name() + ": input and output are the same file");
        return kUsage;
    }
    if (!m_output.Open(m_options.output)) {
        Tell(m_output.Error());
        return kOutputFailed;
    }
    return kDone;
}

void Job::ReadToEnd(const TakeBlock& take)
{
    Progress progress(m_options.progress, m_input.Size(),
                      WritesToTerminal() && m_options.command != Command::Info);
    const std::unique_ptr<char[]> block(new char[kBlock]);
    std::size_t count = 0;
    while (!m_output.Failed() && (count = m_input.Read(block.get(), kBlock)) > 0) {
        take(block.get(), count);
        progress.Update(m_input.Position());
    }
}

ExitCode Job::Finish(bool found, const char* missing)
{
    if (!m_output.Finish()) {
        Tell(m_output.Error());
        return kOutputFailed;
    }
    if (!m_input.Error().empty()) {
        Tell(m_input.Error());
        return kInputFailed;
    }
    if (!found) {
        Tell(m_input.Name() + ": " + missing);
        return kNothingFound;
    }
    return kDone;
}

ExitCode Job::ExtractNmea()
{
    protocol::NmeaBuff buff{};
    bool found = false;
    ReadToEnd([&](const char* bytes, std::size_t count) {
        const char* p = bytes;
        protocol::NmeaSentence sentence;
        while (protocol::NextNmeaSentence(buff, p, bytes + count, protocol::EndsInChecksum, sentence)) {
            found = true;
            m_output.Write(sentence.text, sentence.length);
        }
    });
    return Finish(found, "no sentence found");
}

void Job::Decode(codec::Codec& codec)
{
    ReadToEnd([&](const char* bytes, std::size_t count) {
        codec.Decode(reinterpret_cast<const std::uint8_t*>(bytes), count);
    });
    codec.EndOfInput();
}

ExitCode Job::Summarize()
{
    CaptureSummary summary;
    const auto codec = std::make_unique<codec::Codec>(&summary);
    Decode(*codec);
    const codec::LinkCounters& counters = codec->Counters();
    const auto report = m_options.json ? SummaryJson : SummaryText;
    m_output.Write(report(m_input.Name(), counters, summary));
    return Finish(counters.sentences + counters.frames > 0, "no sentence and no frame found");
}

ExitCode Job::WriteTrack(std::unique_ptr<TrackWriter> writer)
{
    writer->Begin(m_input.Name());
    TrackCollector collector([&](const TrackPoint& point) { writer->Point(point); });
    const auto codec = std::make_unique<codec::Codec>(&collector);
    Decode(*codec);
    collector.Finish();
    writer->End();
    return Finish(collector.Points() > 0, "no fix found");
}

} // namespace

ExitCode Run(const Options& options)
{
    return Job(options).Run();
}

} // namespace tools
