// SPDX-License-Identifier: MIT
#include "tools/log/FixModes.h"
#include "tools/log/Numbers.h"
#include "tools/log/TrackWriter.h"

namespace tools {

namespace {

class CsvWriter final : public TrackWriter {
public:
    using TrackWriter::TrackWriter;

    void Begin(const std::string&) override
    {
        m_output.Write("time,latitude,longitude,altitude,fixmode,speed,course,pdop,hdop,vdop,sat\n");
    }

    void Point(const TrackPoint& point) override
    {
        const protocol::FixRecord& fix = point.fix;
        m_line = point.time.Text();
        Number(fix.latitude, kDegreeDecimals);
        Number(fix.longitude, kDegreeDecimals);
        if (point.hasAltitude) {
            Number(fix.altitude, kAltitudeDecimals);
        } else {
            m_line += ',';
        }
        m_line += ',';
        m_line += NameOfFixMode(fix.fixMode).name;
        Number(static_cast<double>(fix.speed), kSpeedDecimals);
        Number(static_cast<double>(fix.heading), kCourseDecimals);
        for (const float dop : {fix.pdop, fix.hdop, fix.vdop}) {
            if (dop > 0) {
                Number(static_cast<double>(dop), kDopDecimals);
            } else {
                m_line += ',';
            }
        }
        m_line += ',';
        if (point.satellites >= 0) {
            m_line += std::to_string(point.satellites);
        }
        m_line += '\n';
        m_output.Write(m_line);
    }

    void End() override {}

private:
    void Number(double value, int decimals)
    {
        m_line += ',';
        AppendFixed(m_line, value, decimals);
    }

    std::string m_line;
};

} // namespace

std::unique_ptr<TrackWriter> MakeCsvWriter(LogOutput& output)
{
    return std::make_unique<CsvWriter>(output);
}

} // namespace tools
