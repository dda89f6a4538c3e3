// SPDX-License-Identifier: MIT
#include "seeds/SeedFile.h"

#include <filesystem>
#include <fstream>

namespace seeds {

namespace fs = std::filesystem;

namespace {

bool WriteFile(const fs::path& path, const std::vector<std::uint8_t>& bytes)
{
    std::error_code ignored;
    // What a link of that name points to is not ours.
    if (fs::is_symlink(path, ignored)) {
        fs::remove(path, ignored);
    }
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (file) {
        return true;
    }
    if (fs::is_regular_file(path, ignored)) {
        fs::remove(path, ignored);
    }
    return false;
}

} // namespace

SeedError ReadSeedFile(const std::string& path, Seed& seed)
{
    const fs::path file = fs::u8path(path);
    std::error_code error;
    // Opening a pipe or a device would wait.
    if (!fs::is_regular_file(file, error)) {
        return SeedError::CannotRead;
    }
    const std::uintmax_t size = fs::file_size(file, error);
    if (error) {
        return SeedError::CannotRead;
    }
    if (size > kMaxSeedSize) {
        return SeedError::TooLong;
    }
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
    std::ifstream stream(file, std::ios::binary);
    stream.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!stream) {
        return SeedError::CannotRead;
    }
    return ParseSeed(bytes.data(), bytes.size(), seed);
}

bool WriteWholeFile(const std::string& path, const std::vector<std::uint8_t>& bytes)
{
    return WriteFile(fs::u8path(path), bytes);
}

SeedError WriteFiles(const std::string& directory, const std::vector<OutputFile>& files)
{
    const fs::path folder = fs::u8path(directory);
    std::error_code error;
    if (!fs::is_directory(folder, error)) {
        return SeedError::NoDirectory;
    }
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (!WriteFile(folder / files[i].name, files[i].bytes)) {
            for (std::size_t written = 0; written < i; ++written) {
                fs::remove(folder / files[written].name, error);
            }
            return SeedError::CannotWrite;
        }
    }
    return SeedError::None;
}

} // namespace seeds
