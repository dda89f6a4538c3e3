// SPDX-License-Identifier: MIT
#include "seeds/SampleScenes.h"

#include "receiver/TextNumbers.h"
#include "receiver/Utc.h"
#include "seeds/ModelSky.h"
#include "seeds/SeedFile.h"

#include <filesystem>

namespace seeds {

namespace {

struct Scene {
    const char* name;
    double longitude;
    double latitude;
    double altitude;
    receiver::UtcFields start;
};

constexpr Scene kScenes[] = {
    {"Zurich_Open_Sky", 8.5456, 47.3977, 408.0, {2026, 3, 14, 9, 26, 53, 0}},
    {"Beijing_Ring_Road", 116.3913, 39.9075, 44.0, {2026, 6, 1, 0, 0, 0, 0}},
    {"Sydney_Harbour", 151.2153, -33.8568, 5.0, {2026, 9, 21, 18, 30, 15, 0}},
};

std::string Decimal(double value, int decimals)
{
    std::string text;
    receiver::AppendFixed(text, value, decimals);
    return text;
}

std::string UtcText(const receiver::UtcFields& utc)
{
    std::string text;
    const auto append = [&text](int value, int width, const char* behind) {
        receiver::AppendInteger(text, value, width);
        text += behind;
    };
    append(utc.year, 4, "-");
    append(utc.month, 2, "-");
    append(utc.day, 2, " ");
    append(utc.hour, 2, ":");
    append(utc.minute, 2, ":");
    append(utc.second, 2, "");
    return text;
}

// The workbench reads all values as texts.
std::string SceneJson(const Scene& scene, std::uint32_t start)
{
    const std::pair<const char*, std::string> fields[] = {
        {"name", scene.name},
        {"longitude", Decimal(scene.longitude, 6)},
        {"latitude", Decimal(scene.latitude, 6)},
        {"altitude", Decimal(scene.altitude, 1)},
        {"utc_start", UtcText(scene.start)},
        {"unix_start_time", std::to_string(start)},
    };
    std::string json = "        {";
    const char* before = "\n";
    for (const auto& [key, value] : fields) {
        json += before;
        json += "            \"" + std::string(key) + "\": \"" + value + "\"";
        before = ",\n";
    }
    return json + "\n        }";
}

} // namespace

SeedError WriteSampleScenes(const std::string& directory)
{
    namespace fs = std::filesystem;
    const fs::path library = fs::u8path(directory);
    std::error_code error;
    if (!fs::is_directory(library, error)) {
        return SeedError::NoDirectory;
    }
    std::string json = "{\n    \"sence\": [";
    const char* before = "\n";
    for (const Scene& scene : kScenes) {
        const auto start = static_cast<std::uint32_t>(receiver::FromFields(scene.start) / 1000);
        const Seed seed = MakeModelSeed(start, start, start + 86400);
        std::vector<OutputFile> files;
        for (const protocol::Constellation constellation : protocol::kEphemerisOrder) {
            const protocol::AssistSystem system = protocol::AssistSystemOf(constellation);
            files.push_back({protocol::RowOf(constellation).sceneFile,
                             protocol::MakeAssistEphemeris(system, start, OrbitsAt(seed, system, start))});
        }
        files.push_back({"ION_CUT.bin",
                         protocol::MakeAssistGrid(start, MakeModelGrid(scene.latitude, scene.longitude, start))});
        fs::create_directories(library / scene.name, error);
        const SeedError written = WriteFiles((library / scene.name).u8string(), files);
        if (written != SeedError::None) {
            return written;
        }
        json += before + SceneJson(scene, start);
        before = ",\n";
    }
    json += "\n    ]\n}\n";
    return WriteWholeFile((library / "sence.json").u8string(), {json.begin(), json.end()})
               ? SeedError::None
               : SeedError::CannotWrite;
}

} // namespace seeds
