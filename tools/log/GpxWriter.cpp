// SPDX-License-Identifier: MIT
#include "tools/log/FixModes.h"
#include "tools/log/Numbers.h"
#include "tools/log/TrackWriter.h"

namespace tools {

namespace {

class GpxWriter final : public TrackWriter {
public:
    using TrackWriter::TrackWriter;

    void Begin(const std::string& name) override
    {
        m_output.Write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<gpx version=\"1.1\" creator=\"gnss-log\" "
                       "xmlns=\"http://www.topografix.com/GPX/1/1\">\n<trk>\n<name>");
        m_output.Write(XmlEscaped(name));
        m_output.Write("</name>\n");
    }

    void Point(const TrackPoint& point) override
    {
        const protocol::FixRecord& fix = point.fix;
        m_text.clear();
        if (point.beginsSegment || !m_open) {
            m_text = m_open ? "</trkseg>\n<trkseg>\n" : "<trkseg>\n";
            m_open = true;
        }
        m_text += "<trkpt lat=\"";
        AppendFixed(m_text, fix.latitude, kDegreeDecimals);
        m_text += "\" lon=\"";
        AppendFixed(m_text, fix.longitude, kDegreeDecimals);
        m_text += "\">";
        if (point.hasAltitude) {
            Number("ele", fix.altitude, kAltitudeDecimals);
        }
        // The format knows only whole times.
        if (point.time.HasDate()) {
            Text("time", point.time.Text(false));
        }
        Text("type", NameOfFixMode(fix.fixMode).name);
        Text("fix", NameOfFixMode(fix.fixMode).gpx);
        if (point.satellites >= 0) {
            Text("sat", std::to_string(point.satellites));
        }
        Dop("hdop", fix.hdop);
        Dop("vdop", fix.vdop);
        Dop("pdop", fix.pdop);
        m_text += "</trkpt>\n";
        m_output.Write(m_text);
    }

    void End() override
    {
        m_output.Write(m_open ? "</trkseg>\n" : "");
        m_output.Write("</trk>\n</gpx>\n");
    }

private:
    void Text(const char* element, std::string_view content)
    {
        m_text += '<';
        m_text += element;
        m_text += '>';
        m_text += content;
        m_text += "</";
        m_text += element;
        m_text += '>';
    }
    void Number(const char* element, double value, int decimals)
    {
        std::string number;
        AppendFixed(number, value, decimals);
        Text(element, number);
    }
    void Dop(const char* element, float value)
    {
        if (value > 0) {
            Number(element, static_cast<double>(value), kDopDecimals);
        }
    }

    std::string m_text;
    bool m_open = false;
};

} // namespace

std::unique_ptr<TrackWriter> MakeGpxWriter(LogOutput& output)
{
    return std::make_unique<GpxWriter>(output);
}

} // namespace tools
