// SPDX-License-Identifier: MIT
#include "receiver/Options.h"

#include "receiver/TextNumbers.h"

#include <cmath>
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

bool ParseDistribution(std::string_view text, Distribution& distribution)
{
    return ParsePair(text, distribution.mean, distribution.deviation) && distribution.mean >= 0.0 &&
           distribution.mean <= 1e6 && distribution.deviation >= 0.0 && distribution.deviation <= 1e6;
}

bool ParseWithin(std::string_view text, double lowest, double highest, double& value)
{
    return ParseDouble(text, value) && value >= lowest && value <= highest;
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
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string name = arguments[i];
        if (name == "--help") {
            text = kHelp;
            return OptionsResult::Told;
        }
        if (name == "--list-faults") {
            text = Faults::List();
            return OptionsResult::Told;
        }
        if (name == "--idle") {
            receiver.idle = true;
            continue;
        }
        if (name == "--repeat") {
            options.repeat = true;
            continue;
        }
        if (name == "--die-with-parent") {
            options.dieWithParent = true;
            continue;
        }
        // Both "--name value" and "--name=value".
        std::string value;
        const std::size_t equals = name.find('=');
        const bool joined = equals != std::string::npos;
        if (joined) {
            value = name.substr(equals + 1);
            name.resize(equals);
        } else if (i + 1 < arguments.size()) {
            value = arguments[i + 1];
        }
        bool known = true;
        bool good = true;
        const char* expected = "";
        std::int64_t integer = 0;
        if (name == "--link") {
            options.link = value;
            good = !value.empty();
            expected = "a path";
        } else if (name == "--transcript") {
            options.transcript = value;
            good = !value.empty();
            expected = "a path";
        } else if (name == "--capture") {
            options.capture = value;
            good = !value.empty();
            expected = "a path";
        } else if (name == "--track") {
            track = value;
            good = !value.empty();
            expected = "still, circle or a path";
        } else if (name == "--seed") {
            good = ParseUnsigned64(value, receiver.seed);
            expected = "a whole number from 0";
        } else if (name == "--product") {
            good = ParseInteger(value, integer) && integer >= 0 && integer <= 65535;
            receiver.product = static_cast<int>(integer);
            expected = "a number from 0 to 65535";
        } else if (name == "--rate") {
            good = ParseInteger(value, integer) && (integer == 1 || integer == 5 || integer == 10);
            receiver.rateHz = static_cast<int>(integer);
            expected = "1, 5 or 10";
        } else if (name == "--lat") {
            good = ParseWithin(value, -90.0, 90.0, receiver.place.latitude);
            expected = "degrees from -90 to 90";
        } else if (name == "--lon") {
            good = ParseWithin(value, -180.0, 180.0, receiver.place.longitude);
            expected = "degrees from -180 to 180";
        } else if (name == "--alt") {
            good = ParseWithin(value, -1000.0, 100000.0, receiver.place.altitude);
            expected = "metres from -1000 to 100000";
        } else if (name == "--time") {
            good = ParseUtc(value, receiver.utcAtPowerOn);
            options.timeGiven = true;
            expected = "a time as 2026-03-14T09:26:53";
        } else if (name == "--ttff-cold") {
            good = ParseDistribution(value, receiver.times.cold);
            expected = "MEAN,SD in seconds";
        } else if (name == "--ttff-hot") {
            good = ParseDistribution(value, receiver.times.hot);
            expected = "MEAN,SD in seconds";
        } else if (name == "--error") {
            good = ParseWithin(value, 0.0, 100000.0, receiver.errorMetres);
            expected = "metres from 0 to 100000";
        } else if (name == "--speed") {
            good = value == "max" || ParseWithin(value, 0.0, 1e6, options.speed);
            if (value == "max") {
                options.speed = 0.0;
            }
            expected = "a factor from 0, or max";
        } else if (name == "--memory") {
            good = value == "empty" || value == "kept";
            receiver.memoryKept = value == "kept";
            expected = "empty or kept";
        } else if (name == "--reports") {
            good = value == "none" || value == "changes" || value == "all";
            receiver.reports = value == "none"  ? ReportPolicy::None
                               : value == "all" ? ReportPolicy::All
                                                : ReportPolicy::Changes;
            expected = "none, changes or all";
        } else if (name == "--fault") {
            if (!receiver.faults.Add(value, text)) {
                return OptionsResult::Bad;
            }
        } else {
            known = false;
        }
        if (!known) {
            text = "unknown option " + arguments[i] + " (--help shows them all)";
            return OptionsResult::Bad;
        }
        if (!joined && i + 1 == arguments.size()) {
            text = name + " needs a value: " + expected;
            return OptionsResult::Bad;
        }
        if (!good) {
            text = name + ": \"" + value + "\" is not " + expected;
            return OptionsResult::Bad;
        }
        i += joined ? 0 : 1;
    }
    return ParseTrackOption(track, receiver.place, receiver.motion, text) ? OptionsResult::Run
                                                                          : OptionsResult::Bad;
}

} // namespace receiver
