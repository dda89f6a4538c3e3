// SPDX-License-Identifier: MIT
// firmware-image: writes firmware images out of descriptions, and tells what an image holds.

#include "tools/firmware/ImageDescription.h"

#include "cli/CommandLine.h"
#include "protocol/FirmwareImage.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

using cli::Arguments;

constexpr int kFailed = 1;
constexpr int kUsage = 2;
constexpr std::size_t kShownBytes = 16;

constexpr char kHelp[] =
    R"(firmware-image: firmware images for the load and production windows

usage: firmware-image make DESCRIPTION IMAGE   writes the image that the description asks for
       firmware-image show IMAGE               tells its records

The description is a text with one command a line; # begins a comment line.
  header VALUE                         the first four bytes ("VRXF")
  firmware "VERSION" SIZE PIECE [SEED] a firmware of random bytes for the virtual receiver's loader:
                                       its begin message, data messages of PIECE bytes, its end message
  message begin|data|end NUMBER [VALUE]  one such message: size and version, offset and bytes, checksum
  record VALUE                         a record with any message
  empty                                a record of length 0
  quit [VALUE]                         the terminating record
  length NUMBER                        the next record's length is written as that, whatever it holds
  raw VALUE                            bytes outside of any record
  cut NUMBER                           the image ends after so many bytes
A VALUE is "text", hex DIGITS or random COUNT SEED.
)";

bool ReadFile(const std::string& path, std::string& content)
{
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) {
        return false;
    }
    char piece[65536];
    for (std::size_t count = 0; (count = std::fread(piece, 1, sizeof piece, file)) > 0;) {
        content.append(piece, count);
    }
    const bool good = std::ferror(file) == 0;
    std::fclose(file);
    return good;
}

bool WriteFile(const std::string& path, const std::string& content)
{
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        return false;
    }
    const bool good = std::fwrite(content.data(), 1, content.size(), file) == content.size();
    return std::fclose(file) == 0 && good;
}

int Fail(const std::string& text)
{
    std::fprintf(stderr, "firmware-image: %s\n", text.c_str());
    return kFailed;
}

int Make(const Arguments& words)
{
    const std::string& descriptionPath = words[0];
    const std::string& imagePath = words[1];
    std::string description;
    std::string image;
    std::string error;
    if (!ReadFile(descriptionPath, description)) {
        return Fail(descriptionPath + " cannot be read");
    }
    if (!MakeImage(description, image, error)) {
        return Fail(descriptionPath + ": " + error);
    }
    return WriteFile(imagePath, image) ? 0 : Fail(imagePath + " cannot be written");
}

void ShowBytes(const std::string& bytes)
{
    for (std::size_t i = 0; i < std::min(bytes.size(), kShownBytes); ++i) {
        std::printf(" %02X", static_cast<unsigned>(static_cast<unsigned char>(bytes[i])));
    }
    std::printf("%s\n", bytes.size() > kShownBytes ? " ..." : "");
}

int Show(const Arguments& words)
{
    const std::string& path = words[0];
    std::string content;
    if (!ReadFile(path, content)) {
        return Fail(path + " cannot be read");
    }
    std::size_t at = 0;
    protocol::FirmwareImage image([&](char* out, std::size_t size) {
        const std::size_t count = std::min(size, content.size() - at);
        std::copy_n(content.data() + at, count, out);
        at += count;
        return count;
    });
    if (!image.ReadHeader()) {
        return Fail(path + " has no header");
    }
    std::printf("header");
    ShowBytes(content.substr(0, protocol::kImageHeaderSize));
    protocol::FirmwareRecord record;
    bool whole = true;
    for (int number = 1; image.Next(record); ++number) {
        std::printf("%5d %6zu bytes%s%s%s", number, record.message.size(), record.skipped ? ", skipped" : "",
                    record.Terminates() ? ", terminates" : "", record.whole ? "" : ", cut off");
        ShowBytes(record.message);
        whole = record.whole;
    }
    return whole ? 0 : kFailed;
}

} // namespace

int main(int argc, char** argv)
{
    return cli::RunCommand(kHelp, kUsage, {{"make", 2, 2, Make}, {"show", 1, 1, Show}}, argc, argv);
}
