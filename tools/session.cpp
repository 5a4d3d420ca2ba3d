#include "tools/session.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

namespace tools {

namespace {

    using Json = nlohmann::json;

    [[noreturn]] void Refuse(const std::string& place, const std::string& what)
    {
        throw std::runtime_error(place + ": " + what);
    }

    LONG Number(const Json& value, const std::string& place, std::int64_t least, std::int64_t most)
    {
        if (!value.is_number_integer() || value.get<std::int64_t>() < least || value.get<std::int64_t>() > most)
            Refuse(place, "must be a whole number from " + std::to_string(least) + " to " + std::to_string(most));
        return static_cast<LONG>(value.get<std::int64_t>());
    }

    RECTL Rectangle(const Json& value, const std::string& place)
    {
        if (!value.is_array() || value.size() != 4)
            Refuse(place, "must be [left, top, right, bottom]");
        LONG sides[4];
        for (std::size_t i = 0; i < 4; ++i)
            sides[i] = Number(value[i], place, -100000, 100000);
        const RECTL rectangle = {sides[0], sides[1], sides[2], sides[3]};
        if (rectangle.left >= rectangle.right || rectangle.top >= rectangle.bottom)
            Refuse(place, "left must be below right and top below bottom");
        return rectangle;
    }

    ULONG OneOf(const Json& value, const std::string& place, const std::vector<std::string>& names)
    {
        for (std::size_t i = 0; i < names.size(); ++i)
            if (value.is_string() && value.get<std::string>() == names[i])
                return static_cast<ULONG>(i);
        std::string all;
        for (const std::string& name : names)
            all += (all.empty() ? "" : ", ") + name;
        Refuse(place, "must be one of " + all);
    }

    ULONG Sides(const Json& value, const std::string& place)
    {
        if (value.is_string() && value.get<std::string>() == "all")
            return 15;
        if (!value.is_array() && !value.is_string())
            Refuse(place, "must be \"all\" or a list of left, top, right, bottom");
        ULONG sides = 0;
        for (const Json& side : value.is_array() ? value : Json::array({value}))
            sides |= 1u << OneOf(side, place, {"left", "top", "right", "bottom"});
        return sides;
    }

    void ReadFactor(const Json& value, const std::string& place, ZoomerSettings& zoomer)
    {
        const bool pair = value.is_array() && value.size() == 2;
        zoomer.xFactor = static_cast<ULONG>(Number(pair ? value[0] : value, place, 1, 255));
        zoomer.yFactor = static_cast<ULONG>(Number(pair ? value[1] : value, place, 1, 255));
    }

    bool Boolean(const Json& value, const std::string& place)
    {
        if (!value.is_boolean())
            Refuse(place, "must be true or false");
        return value.get<bool>();
    }

    using ZoomerReader = void (*)(const Json&, const std::string&, ZoomerSettings&);

    const std::map<std::string, ZoomerReader> zoomerKeys = {
        {"original", [](auto& v, auto& p, auto& z) { z.original = Rectangle(v, p); }},
        {"zoomed", [](auto& v, auto& p, auto& z) { z.zoomed = Rectangle(v, p); }},
        {"factor", ReadFactor},
        {"smooth", [](auto& v, auto& p, auto& z) { z.smooth = static_cast<ULONG>(Number(v, p, 0, 3)); }},
        {"border", [](auto& v, auto& p, auto& z) { z.border |= Sides(v, p); }},
        {"border_size", [](auto& v, auto& p, auto& z) { z.borderSize = static_cast<ULONG>(Number(v, p, 0, 1000)); }},
        {"border_colour",
         [](auto& v, auto& p, auto& z) {
             z.border |= 16 * OneOf(v, p, {"black", "white"});
         }},
        {"style",
         [](auto& v, auto& p, auto& z) {
             z.style = OneOf(v, p, {"normal", "inverted"});
         }},
        {"behaviour",
         [](auto& v, auto& p, auto& z) {
             z.behaviour = OneOf(v, p, {"immediate", "full", "deferred"});
         }},
        {"mode",
         [](auto& v, auto& p, auto& z) {
             z.mode = OneOf(v, p, {"ordinary", "exclusive", "moving"});
         }},
        {"darker_wins", [](auto& v, auto& p, auto& z) { z.darkerWins = Boolean(v, p); }},
        {"z_order", [](auto& v, auto& p, auto& z) { z.zOrder = Number(v, p, INT32_MIN, INT32_MAX); }},
    };

    ZoomerSettings ReadZoomer(const Json& value, const std::string& place)
    {
        if (!value.is_object() || !value.contains("original") || !value.contains("zoomed"))
            Refuse(place, "must have original and zoomed");
        ZoomerSettings zoomer;
        for (const auto& [key, content] : value.items()) {
            const auto reader = zoomerKeys.find(key);
            if (reader == zoomerKeys.end())
                Refuse(place, "does not know \"" + key + "\"");
            reader->second(content, place + "." + key, zoomer);
        }
        return zoomer;
    }

    ULONG Mask(const Json& value, const std::string& place)
    {
        if (value.is_number_unsigned() && value.get<std::uint64_t>() <= 0xFFFFFFFF)
            return value.get<ULONG>();
        if (value.is_string()) {
            std::size_t used = 0;
            const std::string text = value.get<std::string>();
            try {
                const unsigned long long mask = std::stoull(text, &used, 0);
                if (used == text.size() && mask <= 0xFFFFFFFF)
                    return static_cast<ULONG>(mask);
            } catch (const std::logic_error&) {
                used = 0;
            }
        }
        Refuse(place, "must be a 32-bit mask such as \"0x10100\"");
    }

    CaptureStep ReadCapture(const Json& value, const std::string& place)
    {
        CaptureStep step;
        if (value.is_boolean()) {
            step.on = value.get<bool>();
            return step;
        }
        step.mask = Mask(value, place);
        return step;
    }

    PlayStep ReadPlay(const Json& value, const std::string& place, const std::filesystem::path& folder)
    {
        PlayStep step;
        const bool detailed = value.is_object() && value.contains("file");
        const Json& file = detailed ? value["file"] : value;
        if (!file.is_string())
            Refuse(place, "must name a file");
        step.path = (folder / file.get<std::string>()).string();
        if (!detailed)
            return step;
        for (const auto& [key, content] : value.items()) {
            if (key == "where")
                step.where = Rectangle(content, place + ".where");
            else if (key != "file")
                Refuse(place, "does not know \"" + key + "\"");
        }
        return step;
    }

    // A drawing whose place is told elsewhere.
    std::string ReadPath(const Json& value, const std::string& place, const std::filesystem::path& folder)
    {
        if (value.is_object() && value.contains("where"))
            Refuse(place, "does not know \"where\"");
        return ReadPlay(value, place, folder).path;
    }

    OverlayStep ReadOverlay(const Json& value, const std::string& place, const std::filesystem::path& folder)
    {
        OverlayStep step;
        if (!value.is_object() || !value.contains("image") || !value.contains("area"))
            Refuse(place, "must have image and area");
        for (const auto& [key, content] : value.items()) {
            const std::string inner = place + "." + key;
            if (key == "image")
                step.image = ReadPath(content, inner, folder);
            else if (key == "mask")
                step.mask = ReadPath(content, inner, folder);
            else if (key == "area")
                step.area = Rectangle(content, inner);
            else if (key == "rop3")
                step.rop3 = static_cast<ULONG>(Number(content, inner, 0, 255));
            else
                Refuse(place, "does not know \"" + key + "\"");
        }
        return step;
    }

    PointerStep ReadPointer(const Json& value, const std::string& place)
    {
        if (!value.is_array() || value.size() != 2)
            Refuse(place, "must be [x, y]");
        return {Number(value[0], place, 0, 16383), Number(value[1], place, 0, 16383)};
    }

    Step ReadStep(const Json& value, const std::string& place, const std::filesystem::path& folder)
    {
        if (value == "update")
            return UpdateStep{};
        if (value == "repaint")
            return RepaintStep{};
        if (value == "flush")
            return FlushStep{};
        if (!value.is_object() || value.size() != 1)
            Refuse(place,
                   "must be update, repaint, flush or one of {play}, {zoomer}, {capture}, {dark_zone}, {overlay}, "
                   "{pointer}");
        const std::string kind = value.begin().key();
        const Json& content = value.begin().value();
        const std::string inner = place + "." + kind;
        if (kind == "play")
            return ReadPlay(content, inner, folder);
        if (kind == "zoomer")
            return ZoomerStep{ReadZoomer(content, inner)};
        if (kind == "capture")
            return ReadCapture(content, inner);
        if (kind == "dark_zone")
            return DarkZoneStep{Rectangle(content, inner)};
        if (kind == "overlay")
            return ReadOverlay(content, inner, folder);
        if (kind == "pointer")
            return ReadPointer(content, inner);
        Refuse(place, "does not know \"" + kind + "\"");
    }

    void ReadScreen(const Json& value, const std::string& place, Session& session)
    {
        if (!value.is_object())
            Refuse(place, "must be an object");
        for (const auto& [key, content] : value.items()) {
            if (key == "width")
                session.width = static_cast<ULONG>(Number(content, place + ".width", 1, 16384));
            else if (key == "height")
                session.height = static_cast<ULONG>(Number(content, place + ".height", 1, 16384));
            else if (key == "depth")
                session.depth = static_cast<ULONG>(Number(content, place + ".depth", 1, 32));
            else
                Refuse(place, "does not know \"" + key + "\"");
        }
    }

    // JSON, or a shorter way to write it: words need no quotes, lists no brackets.
    Json ParseValue(const std::string& text)
    {
        Json value = Json::parse(text, nullptr, false);
        if (!value.is_discarded())
            return value;
        if (text.find(',') == std::string::npos)
            return text;
        Json list = Json::array();
        std::istringstream items(text);
        for (std::string item; std::getline(items, item, ',');)
            list.push_back(ParseValue(item));
        if (text.ends_with(','))
            list.push_back("");
        return list;
    }

    bool IsOnScreen(const RECTL& r, const Session& session)
    {
        return r.left >= 0 && r.top >= 0 && r.right <= static_cast<LONG>(session.width)
            && r.bottom <= static_cast<LONG>(session.height);
    }

} // namespace

Session ReadSession(const std::string& path)
{
    std::ifstream file(path);
    if (!file)
        Refuse(path, "cannot be read");
    const Json document = Json::parse(file, nullptr, false, true);
    if (document.is_discarded())
        Refuse(path, "is not a session: it is no JSON");
    if (!document.is_object() || !document.contains("steps") || !document["steps"].is_array())
        Refuse(path, "is not a session: it has no list of steps");
    Session session;
    for (const auto& [key, value] : document.items()) {
        if (key == "screen")
            ReadScreen(value, path + ": screen", session);
        else if (key != "steps")
            Refuse(path, "does not know \"" + key + "\"");
    }
    const auto folder = std::filesystem::path(path).parent_path();
    std::size_t number = 0;
    for (const Json& step : document["steps"])
        session.steps.push_back(ReadStep(step, path + ": steps[" + std::to_string(number++) + "]", folder));
    return session;
}

ZoomerSettings ParseZoomer(const std::string& text)
{
    Json zoomer = Json::object();
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const std::size_t equals = word.find('=');
        if (equals == std::string::npos)
            Refuse("--zoomer", "\"" + word + "\" is not KEY=VALUE");
        zoomer[word.substr(0, equals)] = ParseValue(word.substr(equals + 1));
    }
    return ReadZoomer(zoomer, "--zoomer");
}

void ParseZoomerKey(const std::string& option, const std::string& key, const std::string& text, ZoomerSettings& zoomer)
{
    zoomerKeys.at(key)(ParseValue(text), option, zoomer);
}

void CheckSession(const Session& session)
{
    static constexpr ULONG depths[] = {1, 4, 8, 15, 16, 24, 32};
    if (std::find(std::begin(depths), std::end(depths), session.depth) == std::end(depths))
        throw std::runtime_error("a screen has 1, 4, 8, 15, 16, 24 or 32 bits per pixel, not "
                                 + std::to_string(session.depth));
    if (session.width == 0 || session.height == 0 || session.width > 16384 || session.height > 16384)
        throw std::runtime_error("a screen is 1 to 16384 pixels wide and high");
    for (const Step& step : session.steps) {
        const auto* zoomer = std::get_if<ZoomerStep>(&step);
        if (zoomer && !IsOnScreen(zoomer->settings.original, session))
            throw std::runtime_error("a zoomer's original rectangle must lie on the screen");
        if (zoomer && !IsOnScreen(zoomer->settings.zoomed, session))
            throw std::runtime_error("a zoomer's zoomed rectangle must lie on the screen");
    }
}

} // namespace tools
