#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <stdexcept>

#include "tools/commands.h"

namespace {

using tools::PlayOptions;
using tools::RecordsOptions;
using tools::Session;
using tools::ZoomerSettings;

struct PlayArguments {
    std::vector<std::string> files;
    std::string size = "1024x768";
    ULONG depth = 32;
    std::string mask;
    std::vector<std::string> zoomers;
    std::vector<std::string> darkZones;
    PlayOptions options;
};

std::runtime_error Usage(const std::string& option, const std::string& what)
{
    return std::runtime_error(option + ": " + what);
}

RECTL ParseRectangle(const std::string& option, const std::string& text)
{
    RECTL r = {};
    char end = 0;
    if (std::sscanf(text.c_str(), "%d,%d,%d,%d%c", &r.left, &r.top, &r.right, &r.bottom, &end) != 4 || r.left >= r.right
        || r.top >= r.bottom)
        throw Usage(option, "must be LEFT,TOP,RIGHT,BOTTOM with left below right and top below bottom");
    return r;
}

void ParseSize(const std::string& text, Session& session)
{
    char end = 0;
    if (std::sscanf(text.c_str(), "%ux%u%c", &session.width, &session.height, &end) != 2)
        throw Usage("--size", "must be WIDTHxHEIGHT");
}

std::uint32_t ParseNumber(const std::string& option, const std::string& text)
{
    std::size_t used = 0;
    unsigned long long value = 0;
    try {
        value = std::stoull(text, &used, 0);
    } catch (const std::logic_error&) {
        used = 0;
    }
    if (used == 0 || used != text.size() || value > 0xFFFFFFFF)
        throw Usage(option, "must be a 32-bit number such as 0x10100");
    return static_cast<std::uint32_t>(value);
}

// The steps of a client that sets everything up, lets the drawings come and repaints at the end.
Session SessionOfOptions(const PlayArguments& arguments)
{
    Session session;
    ParseSize(arguments.size, session);
    session.depth = arguments.depth;
    tools::CaptureStep capture;
    if (!arguments.mask.empty())
        capture.mask = ParseNumber("--mask", arguments.mask);
    session.steps.push_back(capture);
    for (const std::string& zone : arguments.darkZones)
        session.steps.push_back(tools::DarkZoneStep{ParseRectangle("--dark-zone", zone)});
    for (const std::string& zoomer : arguments.zoomers)
        session.steps.push_back(tools::ZoomerStep{tools::ParseZoomer(zoomer)});
    for (const std::string& file : arguments.files)
        session.steps.push_back(tools::PlayStep{file, {}});
    if (!arguments.zoomers.empty())
        session.steps.push_back(tools::RepaintStep{});
    return session;
}

void RunPlay(const CLI::App& play, const PlayArguments& arguments)
{
    if (arguments.files.empty())
        throw std::runtime_error("nothing to play: name a session file, metafiles or pictures");
    const bool isSession = std::filesystem::path(arguments.files.front()).extension() == ".json";
    if (isSession && arguments.files.size() > 1)
        throw std::runtime_error("a session file stands alone");
    for (const char* const option : {"--size", "--depth", "--mask", "--zoomer", "--dark-zone"})
        if (isSession && play.count(option) != 0)
            throw std::runtime_error(std::string("a session file says this itself: ") + option);
    const Session session = isSession ? tools::ReadSession(arguments.files.front()) : SessionOfOptions(arguments);
    tools::CheckSession(session);
    tools::Play(session, arguments.options);
}

void AddPlay(CLI::App& app, PlayArguments& arguments)
{
    CLI::App* play = app.add_subcommand("play", "play drawings through the driver; write pictures and records");
    play->add_option("files", arguments.files, "one session (.json), or metafiles and pictures (.emf .png .bmp)");
    play->add_option("--out", arguments.options.out, "folder for the results")->default_val("build/play");
    play->add_option("--image", arguments.options.image, "play through this koru.dll instead of the linked driver");
    play->add_option("--size", arguments.size, "the screen, WIDTHxHEIGHT")->default_val("1024x768");
    play->add_option("--depth", arguments.depth, "bits per pixel: 1 4 8 15 16 24 32")->default_val(32);
    play->add_option("--mask", arguments.mask, "which calls are captured, a bit each; all unless told");
    play->add_option("--zoomer", arguments.zoomers,
                     "a magnified view, such as \"original=0,0,300,200 zoomed=100,100,1000,700 factor=3 smooth=1 "
                     "border=all border_size=4\"")
        ->allow_extra_args(false);
    play->add_option("--dark-zone", arguments.darkZones, "LEFT,TOP,RIGHT,BOTTOM: drawing there is not captured")
        ->allow_extra_args(false);
    play->add_flag("--quiet", arguments.options.quiet, "no table");
    play->callback([play, &arguments] { RunPlay(*play, arguments); });
}

struct RecordsArguments {
    RecordsOptions options;
    bool summary = false; // what is printed without --json anyway
    std::string surface, process, rectangle;
};

void AddRecords(CLI::App& app, RecordsArguments& arguments)
{
    CLI::App* records = app.add_subcommand("records", "decode a record stream");
    records->add_option("file", arguments.options.path, "records.koru")->required();
    records->add_flag("--json", arguments.options.json, "a line of JSON per record");
    records->add_flag("--summary", arguments.summary, "a table of calls (what is printed without --json)");
    records->add_flag("--no-addresses", arguments.options.noAddresses,
                      "leave out addresses, handles and time stamps of the JSON");
    records->add_option("--call", arguments.options.calls, "only these calls, such as DrvBitBlt")
        ->allow_extra_args(false);
    records->add_option("--surface", arguments.surface, "only calls on this surface handle");
    records->add_option("--process", arguments.process, "only calls of this process identifier");
    records->add_option("--rectangle", arguments.rectangle, "only calls that meet LEFT,TOP,RIGHT,BOTTOM");
    records->callback([&arguments] {
        if (!arguments.surface.empty())
            arguments.options.surface = ParseNumber("--surface", arguments.surface);
        if (!arguments.process.empty())
            arguments.options.process = ParseNumber("--process", arguments.process);
        if (!arguments.rectangle.empty())
            arguments.options.rectangle = ParseRectangle("--rectangle", arguments.rectangle);
        tools::ShowRecords(arguments.options);
    });
}

struct MagnifyArguments {
    tools::MagnifyOptions options;
    std::string factor = "2", smooth = "0", style = "normal";
    std::string border, borderColour = "black", borderSize = "1";
    bool darkerWins = false;
    std::vector<std::string> pairs;
};

koru::client::ColorPair ParsePair(const std::string& text)
{
    std::string digits = text;
    if (text.size() == 13 && text[6] == ',')
        digits.erase(6, 1);
    if (digits.size() != 12 || digits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
        throw Usage("--pair", "must be RRGGBB,RRGGBB");
    const auto colour = [&digits](std::size_t start) {
        const unsigned long rgb = std::stoul(digits.substr(start, 6), nullptr, 16);
        return koru::client::Rgb(static_cast<std::uint8_t>(rgb >> 16), static_cast<std::uint8_t>(rgb >> 8),
                                 static_cast<std::uint8_t>(rgb));
    };
    return {colour(0), colour(6)};
}

void RunMagnify(MagnifyArguments& arguments)
{
    ZoomerSettings& zoomer = arguments.options.zoomer;
    tools::ParseZoomerKey("--factor", "factor", arguments.factor, zoomer);
    tools::ParseZoomerKey("--smooth", "smooth", arguments.smooth, zoomer);
    tools::ParseZoomerKey("--style", "style", arguments.style, zoomer);
    tools::ParseZoomerKey("--border-colour", "border_colour", arguments.borderColour, zoomer);
    tools::ParseZoomerKey("--border-size", "border_size", arguments.borderSize, zoomer);
    if (!arguments.border.empty())
        tools::ParseZoomerKey("--border", "border", arguments.border, zoomer);
    zoomer.darkerWins = arguments.darkerWins;
    for (const std::string& pair : arguments.pairs)
        arguments.options.colorPairs.push_back(ParsePair(pair));
    tools::Magnify(arguments.options);
}

void AddMagnify(CLI::App& app, MagnifyArguments& arguments)
{
    CLI::App* magnify = app.add_subcommand("magnify", "one picture through one zoomer");
    magnify->add_option("in", arguments.options.in, "a PNG or BMP picture")->required();
    magnify->add_option("out", arguments.options.out, "the magnified PNG")->required();
    magnify->add_option("--factor", arguments.factor, "1 to 255, or X,Y")->default_val("2");
    magnify->add_option("--smooth", arguments.smooth, "smoothing level, 0 to 3")->default_val("0");
    magnify->add_option("--style", arguments.style, "normal or inverted")->default_val("normal");
    magnify->add_option("--border", arguments.border, "all, or sides such as left,top");
    magnify->add_option("--border-colour", arguments.borderColour, "black or white")->default_val("black");
    magnify->add_option("--border-size", arguments.borderSize, "pixels")->default_val("1");
    magnify->add_flag("--darker-wins", arguments.darkerWins, "smoothing lets light colours grow, not dark ones");
    magnify->add_option("--pair", arguments.pairs, "RRGGBB,RRGGBB: where they meet, the first grows")
        ->allow_extra_args(false);
    magnify->add_option("--depth", arguments.options.depth, "bits per pixel: 1 4 8 15 16 24 32")->default_val(32);
    magnify->add_option("--image", arguments.options.image, "through this koru.dll instead of the linked driver");
    magnify->callback([&arguments] { RunMagnify(arguments); });
}

} // namespace

int main(int argc, char** argv) // NOLINT(bugprone-exception-escape): what is thrown while it sets up is a bug
{
    CLI::App app("Koru: plays drawings through the display driver and reads what it records");
    app.require_subcommand(1);
    PlayArguments play;
    RecordsArguments records;
    AddPlay(app, play);
    AddRecords(app, records);
    MagnifyArguments magnify;
    AddMagnify(app, magnify);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& error) {
        const auto unknown = app.remaining(true);
        std::cerr << "koru: " << (unknown.empty() ? error.what() : "\"" + unknown.front() + "\" is unknown")
                  << " (koru --help tells what there is)\n";
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "koru: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
