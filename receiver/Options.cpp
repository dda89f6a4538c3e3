// SPDX-License-Identifier: MIT
#include "receiver/Options.h"

#include "receiver/TextNumbers.h"

#include <cstdio>

namespace receiver {

namespace {

constexpr char kHelp[] =
    R"(gnss-receiver: a virtual GNSS receiver on a pseudo-terminal

usage: gnss-receiver [OPTION]...

line
  --link PATH           symbolic link to the pseudo-terminal, removed at exit
  --transcript FILE     writes every byte in both directions with its time
  --die-with-parent     ends when the program that started it ends

receiver
  --product N           31 speaks AT text; any other number plain frames (0)
  --rate HZ             1, 5 or 10 epochs a second at power-on (1)
  --idle                waits for a start command; otherwise it sends from power-on
  --memory empty|kept   what it knows at power-on: nothing, or what a session just
                        before would have left, so that its start is a hot one (empty)
  --ttff-cold MEAN,SD   time to first fix of a cold start in seconds (28,3)
  --ttff-hot MEAN,SD    the same of a hot start (1.2,0.3)
  --error METRES        median horizontal error (1.5)
  --reports POLICY      messages beyond those asked for: none, changes (a setting's
                        message when it changes) or all (every type once a second) (changes)
  --seed N              where all chance comes from (1)

place and time
  --lat DEG --lon DEG --alt METRES
                        where the antenna is (47.3977 8.5456 408)
  --track still|circle|circle=RADIUS,SPEED|FILE
                        how it moves: a circle in metres and metres a second (100,10), or
                        lines "seconds,lat,lon,alt" of a file (still)
  --time UTC            time at power-on, as 2026-03-14T09:26:53 (the system's)

capture
  --capture FILE        plays these bytes in the place of the receiver's own output
  --speed N             so many times as fast; 0 or max: as fast as the line takes it (1)
  --repeat              begins again at the end

faults
  --fault NAME[=VALUE]  shows a fault; may be given several times
  --list-faults         tells them all

  --help                this text

Prints "ready PATH" when the line can be opened.
)";

bool ParsePair(std::string_view text, double& first, double& second)
{
    const std::size_t comma = text.find(',');
    return comma != std::string_view::npos && ParseDouble(text.substr(0, comma), first) &&
           ParseDouble(text.substr(comma + 1), second);
}

/// Puts a value where it belongs, and says whether it is good.
using Reader = std::function<bool(const std::string& value)>;

Reader Text(std::string& text)
{
    return [&text](const std::string& value) {
        text = value;
        return !value.empty();
    };
}

Reader Whole(int lowest, int highest, int& number)
{
    return [=, &number](const std::string& value) {
        std::int64_t integer = 0;
        const bool good = ParseInteger(value, integer) && integer >= lowest && integer <= highest;
        number = static_cast<int>(integer);
        return good;
    };
}

Reader Within(double lowest, double highest, double& number)
{
    return [=, &number](const std::string& value) {
        return ParseDouble(value, number) && number >= lowest && number <= highest;
    };
}

Reader Times(Distribution& times)
{
    return [&times](const std::string& value) {
        return ParsePair(value, times.mean, times.deviation) && times.mean >= 0.0 && times.mean <= 1e6 &&
               times.deviation >= 0.0 && times.deviation <= 1e6;
    };
}

template <typename Kind> Reader OneOf(Kind& kind, const std::vector<std::pair<const char*, Kind>>& kinds)
{
    return [&kind, kinds](const std::string& value) {
        for (const auto& [name, named] : kinds) {
            if (value == name) {
                kind = named;
                return true;
            }
        }
        return false;
    };
}

bool ParseTrackOption(const std::string& value, const Geodetic& place, Motion& motion, std::string& error)
{
    if (value.empty() || value == "still") {
        motion = Motion::Still(place);
        return true;
    }
    if (value.compare(0, 6, "circle") == 0 && (value.size() == 6 || value[6] == '=')) {
        double radius = 100.0;
        double speed = 10.0;
        if (value.size() > 6 && (!ParsePair(std::string_view(value).substr(7), radius, speed) || radius < 1.0 ||
                                 radius > 50000.0 || speed < 0.0 || speed > 1000.0)) {
            error = "--track: a circle has a radius of 1 to 50000 m and a speed of 0 to 1000 m/s";
            return false;
        }
        motion = Motion::Circle(place, radius, speed);
        return true;
    }
    std::string content;
    if (!ReadWholeFile(value, content)) {
        error = "--track: " + value + " cannot be read";
        return false;
    }
    std::vector<TrackPoint> points;
    if (!ParseTrack(content, points, error)) {
        error = "--track: " + value + ": " + error;
        return false;
    }
    motion = Motion::Along(std::move(points));
    return true;
}

} // namespace

bool ReadWholeFile(const std::string& path, std::string& content)
{
    std::FILE* file = std::fopen(path.c_str(), "rbe");
    if (file == nullptr) {
        return false;
    }
    content.clear();
    char piece[65536];
    std::size_t count = 0;
    while ((count = std::fread(piece, 1, sizeof piece, file)) > 0) {
        content.append(piece, count);
    }
    const bool good = std::ferror(file) == 0;
    std::fclose(file);
    return good;
}

OptionsResult ParseOptions(const std::vector<std::string>& arguments, Options& options, std::string& text)
{
    ReceiverOptions& receiver = options.receiver;
    std::string track;
    cli::Parser line("unknown option ", " (--help shows them all)");
    const auto add = [&line](const std::string& name, const std::string& expected, const Reader& read) {
        const auto take = [name, expected, read](const std::string& value, std::string& error) {
            error = name + ": \"" + value + "\" is not " + expected;
            return read(value);
        };
        line.AddOption(name, "a value: " + expected, take);
    };
    line.AddAnswer("--help", [] { return kHelp; });
    line.AddAnswer("--list-faults", Faults::List);
    line.AddFlag("--idle", receiver.idle);
    line.AddFlag("--repeat", options.repeat);
    line.AddFlag("--die-with-parent", options.dieWithParent);
    add("--link", "a path", Text(options.link));
    add("--transcript", "a path", Text(options.transcript));
    add("--capture", "a path", Text(options.capture));
    add("--track", "still, circle or a path", Text(track));
    add("--seed", "a whole number from 0",
        [&](const std::string& value) { return ParseUnsigned64(value, receiver.seed); });
    add("--product", "a number from 0 to 65535", Whole(0, 65535, receiver.product));
    add("--rate", "1, 5 or 10", [&rate = receiver.rateHz](const std::string& value) {
        return Whole(1, 10, rate)(value) && (rate == 1 || rate == 5 || rate == 10);
    });
    add("--lat", "degrees from -90 to 90", Within(-90.0, 90.0, receiver.place.latitude));
    add("--lon", "degrees from -180 to 180", Within(-180.0, 180.0, receiver.place.longitude));
    add("--alt", "metres from -1000 to 100000", Within(-1000.0, 100000.0, receiver.place.altitude));
    add("--time", "a time as 2026-03-14T09:26:53", [&](const std::string& value) {
        options.timeGiven = true;
        return ParseUtc(value, receiver.utcAtPowerOn);
    });
    add("--ttff-cold", "MEAN,SD in seconds", Times(receiver.times.cold));
    add("--ttff-hot", "MEAN,SD in seconds", Times(receiver.times.hot));
    add("--error", "metres from 0 to 100000", Within(0.0, 100000.0, receiver.errorMetres));
    add("--speed", "a factor from 0, or max",
        [&](const std::string& value) { return Within(0.0, 1e6, options.speed)(value == "max" ? "0" : value); });
    add("--memory", "empty or kept", OneOf(receiver.memoryKept, {{"empty", false}, {"kept", true}}));
    add("--reports", "none, changes or all",
        OneOf(receiver.reports,
              {{"none", ReportPolicy::None}, {"changes", ReportPolicy::Changes}, {"all", ReportPolicy::All}}));
    line.AddOption("--fault", "", [&](const std::string& value, std::string& error) {
        return receiver.faults.Add(value, error);
    });
    const OptionsResult result = line.Read(arguments, text);
    if (result == OptionsResult::Run && !ParseTrackOption(track, receiver.place, receiver.motion, text)) {
        return OptionsResult::Bad;
    }
    return result;
}

} // namespace receiver
