// SPDX-License-Identifier: MIT
#include "tools/log/FixModes.h"
#include "tools/log/Numbers.h"
#include "tools/log/TrackWriter.h"

namespace tools {

namespace {

/// The format wants all times of a track, then all its positions, then all its values. So that the memory
/// does not grow, a track is cut into pieces, which it is told to join.
constexpr int kPiece = 1024;

class KmlWriter final : public TrackWriter {
public:
    using TrackWriter::TrackWriter;

    void Begin(const std::string& name) override
    {
        m_output.Write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<kml xmlns=\"http://www.opengis.net/kml/2.2\" "
                       "xmlns:gx=\"http://www.google.com/kml/ext/2.2\">\n<Document>\n<name>");
        m_output.Write(XmlEscaped(name));
        m_output.Write("</name>\n<Schema id=\"fix\">"
                       "<gx:SimpleArrayField name=\"fixmode\" type=\"string\"/></Schema>\n");
    }

    void Point(const TrackPoint& point) override
    {
        if (point.beginsSegment || !m_open) {
            CloseTrack();
            m_output.Write("<Placemark>\n<name>");
            m_output.Write(point.time.Known() ? point.time.Text() : "track");
            m_output.Write("</name>\n<gx:MultiTrack>\n<gx:interpolate>1</gx:interpolate>\n");
            m_open = true;
        } else if (m_count == kPiece) {
            WritePiece();
        }
        ++m_count;
        m_times += "<when>";
        if (point.time.HasDate()) {
            m_times += point.time.Text(false);
        }
        m_times += "</when>\n";
        m_positions += "<gx:coord>";
        AppendFixed(m_positions, point.fix.longitude, kDegreeDecimals);
        m_positions += ' ';
        AppendFixed(m_positions, point.fix.latitude, kDegreeDecimals);
        m_positions += ' ';
        AppendFixed(m_positions, point.fix.altitude, kAltitudeDecimals);
        m_positions += "</gx:coord>\n";
        m_modes += "<gx:value>";
        m_modes += NameOfFixMode(point.fix.fixMode).name;
        m_modes += "</gx:value>\n";
    }

    void End() override
    {
        CloseTrack();
        m_output.Write("</Document>\n</kml>\n");
    }

private:
    void WritePiece()
    {
        m_output.Write("<gx:Track>\n<altitudeMode>absolute</altitudeMode>\n");
        m_output.Write(m_times);
        m_output.Write(m_positions);
        m_output.Write("<ExtendedData><SchemaData schemaUrl=\"#fix\"><gx:SimpleArrayData name=\"fixmode\">\n");
        m_output.Write(m_modes);
        m_output.Write("</gx:SimpleArrayData></SchemaData></ExtendedData>\n</gx:Track>\n");
        m_times.clear();
        m_positions.clear();
        m_modes.clear();
        m_count = 0;
    }

    void CloseTrack()
    {
        if (m_open) {
            WritePiece();
            m_output.Write("</gx:MultiTrack>\n</Placemark>\n");
            m_open = false;
        }
    }

    std::string m_times;
    std::string m_positions;
    std::string m_modes;
    int m_count = 0;
    bool m_open = false;
};

} // namespace

std::unique_ptr<TrackWriter> MakeKmlWriter(LogOutput& output)
{
    return std::make_unique<KmlWriter>(output);
}

} // namespace tools
