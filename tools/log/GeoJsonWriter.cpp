// SPDX-License-Identifier: MIT
#include "tools/log/FixModes.h"
#include "tools/log/Numbers.h"
#include "tools/log/TrackWriter.h"

namespace tools {

namespace {

class GeoJsonWriter final : public TrackWriter {
public:
    using TrackWriter::TrackWriter;

    void Begin(const std::string&) override { m_output.Write("{\"type\":\"FeatureCollection\",\"features\":["); }

    void Point(const TrackPoint& point) override
    {
        const protocol::FixRecord& fix = point.fix;
        m_text = m_first ? "\n" : ",\n";
        m_first = false;
        m_text += "{\"type\":\"Feature\",\"geometry\":{\"type\":\"Point\",\"coordinates\":[";
        AppendFixed(m_text, fix.longitude, kDegreeDecimals);
        m_text += ',';
        AppendFixed(m_text, fix.latitude, kDegreeDecimals);
        if (point.hasAltitude) {
            m_text += ',';
            AppendFixed(m_text, fix.altitude, kAltitudeDecimals);
        }
        m_text += "]},\"properties\":{\"time\":";
        m_text += point.time.Known() ? '"' + point.time.Text() + '"' : "null";
        if (point.hasAltitude) {
            Number("altitude", fix.altitude, kAltitudeDecimals);
        }
        m_text += ",\"fixmode\":\"";
        m_text += NameOfFixMode(fix.fixMode).name;
        m_text += '"';
        Number("speed", static_cast<double>(fix.speed), kSpeedDecimals);
        Number("course", static_cast<double>(fix.heading), kCourseDecimals);
        Dop("pdop", fix.pdop);
        Dop("hdop", fix.hdop);
        Dop("vdop", fix.vdop);
        if (point.satellites >= 0) {
            m_text += ",\"sat\":" + std::to_string(point.satellites);
        }
        m_text += "}}";
        m_output.Write(m_text);
    }

    void End() override { m_output.Write("\n]}\n"); }

private:
    void Number(const char* name, double value, int decimals)
    {
        m_text += ",\"";
        m_text += name;
        m_text += "\":";
        AppendFixed(m_text, value, decimals);
    }
    void Dop(const char* name, float value)
    {
        if (value > 0) {
            Number(name, static_cast<double>(value), kDopDecimals);
        }
    }

    std::string m_text;
    bool m_first = true;
};

} // namespace

std::unique_ptr<TrackWriter> MakeGeoJsonWriter(LogOutput& output)
{
    return std::make_unique<GeoJsonWriter>(output);
}

} // namespace tools
