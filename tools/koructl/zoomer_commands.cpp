#include <algorithm>

#include "tools/control/arguments.h"
#include "tools/koructl/commands.h"
#include "tools/koructl/zoomer_properties.h"

namespace koructl {

using namespace tools;

using namespace koru::client;

namespace {

    struct ZoomerArguments {
        std::string id;
        std::vector<std::string> values = std::vector<std::string>(ZoomerProperties().size()); // empty: not given
        std::string other;
        bool hidden = false;
    };

    using Setters = std::vector<Setter>;

    Setters ParseProperties(const ZoomerArguments& arguments)
    {
        Setters setters;
        for (std::size_t i = 0; i < arguments.values.size(); ++i)
            if (!arguments.values[i].empty())
                setters.push_back(ZoomerProperties()[i].parse(arguments.values[i]));
        return setters;
    }

    bool Apply(const Setters& setters, const ZoomerControl& zoomers, ZoomerId id)
    {
        return std::all_of(setters.begin(), setters.end(), [&](const Setter& set) { return set(zoomers, id); });
    }

    bool Lies(const Rect& inner, const Rect& outer)
    {
        return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right
            && inner.bottom <= outer.bottom;
    }

    // The driver hands rectangles on as they are: those that leave the screen would leave its memory.
    void RequireOnScreen(const std::string& what, const std::string& text, const Rect& screen)
    {
        if (text.empty())
            return;
        Require(Lies(ParseRectangle(what, text), screen),
                what + ": " + text + " must lie on the screen, " + Text(screen));
    }

    void RequirePlacesOnScreen(const ZoomerArguments& arguments, const Rect& screen)
    {
        for (std::size_t i = 0; i < arguments.values.size(); ++i) {
            const std::string name = ZoomerProperties()[i].name;
            if (name == "original" || name == "zoomed")
                RequireOnScreen("--" + name, arguments.values[i], screen);
        }
    }

    // The driver tells z-order -1 and factors of 0 of an unknown zoomer. Nobody can use such a known one.
    bool Exists(const ZoomerControl& zoomers, ZoomerId id)
    {
        return zoomers.ZOrder(id) != -1 || zoomers.XFactor(id).value_or(0) != 0;
    }

    ZoomerId Find(const Control& koru, const std::string& text)
    {
        const ZoomerId id{ParseNumber("zoomer", text)};
        Require(Exists(koru.Zoomers(), id), "there is no zoomer " + text);
        return id;
    }

    // What the zoomer covers, its frame included; an empty rectangle when it is off.
    Rect Place(const ZoomerControl& zoomers, ZoomerId id, const Rect& screen)
    {
        const Rect zoomed = zoomers.ZoomedRect(id).value_or(Rect{});
        if (!zoomers.State(id).value_or(false))
            return {};
        const bool framed = zoomers.Border(id).value_or(0) != 0;
        const auto frame = framed ? static_cast<std::int32_t>(zoomers.BordersSize(id).value_or(0) & 0xFFFF) : 0;
        return {std::max(zoomed.left - frame, screen.left), std::max(zoomed.top - frame, screen.top),
                std::min(zoomed.right + frame, screen.right), std::min(zoomed.bottom + frame, screen.bottom)};
    }

    void Uncover(const ZoomerControl& zoomers, const Rect& place)
    {
        if (place.left < place.right && place.top < place.bottom)
            Require(zoomers.ShowOriginal(place), "Koru could not repaint what the zoomer covered");
    }

    // Immediate views are not magnified by an update, a new place in the stack is not shown by a refresh.
    bool ShowAnew(const ZoomerControl& zoomers, ZoomerId id)
    {
        return zoomers.Refresh(id) && zoomers.Update();
    }

    void Create(const Surroundings& surroundings, const ZoomerArguments& arguments)
    {
        const Setters setters = ParseProperties(arguments);
        const auto [koru, screen] = tools::OpenDriver(surroundings.openScreen);
        RequirePlacesOnScreen(arguments, screen);
        const ZoomerControl zoomers = koru.Zoomers();
        const auto id = zoomers.Create();
        Require(id.has_value(), "Koru made no zoomer; is there enough memory?");
        bool done = Apply(setters, zoomers, *id);
        if (!arguments.hidden)
            done = done && zoomers.SetState(*id, true) && ShowAnew(zoomers, *id);
        if (!done)
            zoomers.Remove(*id);
        Require(done, "Koru refused to set the zoomer up");
        surroundings.out << Hexadecimal(static_cast<std::uint32_t>(*id)) << '\n';
    }

    // Changes a zoomer, then shows it anew, or what it covered.
    void Change(const Surroundings& surroundings, const ZoomerArguments& arguments, const Setters& setters)
    {
        const auto [koru, screen] = tools::OpenDriver(surroundings.openScreen);
        RequirePlacesOnScreen(arguments, screen);
        const ZoomerControl zoomers = koru.Zoomers();
        const ZoomerId id = Find(koru, arguments.id);
        const Rect before = Place(zoomers, id, screen);
        Require(Apply(setters, zoomers, id), "Koru refused to change the zoomer");
        if (Place(zoomers, id, screen) != before)
            Uncover(zoomers, before);
        if (zoomers.State(id).value_or(false))
            Require(ShowAnew(zoomers, id), "Koru could not show the zoomer");
    }

    void Switch(const Surroundings& surroundings, const ZoomerArguments& arguments, bool on)
    {
        Change(surroundings, arguments,
               {[on](const ZoomerControl& zoomers, ZoomerId id) { return zoomers.SetState(id, on); }});
        surroundings.out << "zoomer " << arguments.id << (on ? " is shown\n" : " is hidden\n");
    }

    void Set(const Surroundings& surroundings, const ZoomerArguments& arguments)
    {
        const Setters setters = ParseProperties(arguments);
        Require(!setters.empty(), "nothing to set; koructl zoomer set --help tells what there is");
        Change(surroundings, arguments, setters);
        surroundings.out << "zoomer " << arguments.id << " changed\n";
    }

    void Describe(const Surroundings& surroundings, const ZoomerArguments& arguments)
    {
        const Control koru = Open(surroundings);
        const ZoomerId id = Find(koru, arguments.id);
        surroundings.out << "shown " << (koru.Zoomers().State(id).value_or(false) ? "yes" : "no") << '\n';
        for (const ZoomerProperty& property : ZoomerProperties())
            surroundings.out << property.name << ' ' << property.tell(koru.Zoomers(), id) << '\n';
    }

    void Remove(const Surroundings& surroundings, const ZoomerArguments& arguments)
    {
        const auto [koru, screen] = tools::OpenDriver(surroundings.openScreen);
        const ZoomerControl zoomers = koru.Zoomers();
        if (arguments.id == "all") {
            Require(zoomers.Flush(), "Koru refused to remove the zoomers");
            Uncover(zoomers, screen);
            surroundings.out << "all zoomers removed\n";
            return;
        }
        const ZoomerId id = Find(koru, arguments.id);
        const Rect place = Place(zoomers, id, screen);
        Require(zoomers.Remove(id), "Koru refused to remove the zoomer");
        Uncover(zoomers, place);
        surroundings.out << "zoomer " << arguments.id << " removed\n";
    }

    void Scroll(const Surroundings& surroundings, const ZoomerArguments& arguments)
    {
        const auto [dx, dy] = ParseOffset(arguments.other);
        const Control koru = Open(surroundings);
        Require(koru.Zoomers().Scroll(Find(koru, arguments.id), dx, dy), "Koru could not scroll the zoomer");
        surroundings.out << "zoomer " << arguments.id << " scrolled\n";
    }

    void Interval(const Surroundings& surroundings, const ZoomerArguments& arguments)
    {
        const std::int32_t milliseconds = ParseSigned("milliseconds", arguments.other);
        Require(Open(surroundings).Zoomers().SetUpdateInterval(milliseconds), "Koru refused the interval");
        surroundings.out << "updates every " << milliseconds << " ms\n";
    }

    void Uncover(const Surroundings& surroundings, const ZoomerArguments& arguments)
    {
        const Rect area = ParseRectangle("rectangle", arguments.other);
        const auto [koru, screen] = tools::OpenDriver(surroundings.openScreen);
        RequireOnScreen("rectangle", arguments.other, screen);
        Uncover(koru.Zoomers(), area);
        surroundings.out << "shown unmagnified until the next update there\n";
    }

    using OneZoomer = bool (ZoomerControl::*)(ZoomerId) const;

    void Render(const Surroundings& surroundings, const ZoomerArguments& arguments, OneZoomer command)
    {
        const Control koru = Open(surroundings);
        Require((koru.Zoomers().*command)(Find(koru, arguments.id)), "Koru could not show the zoomer");
        surroundings.out << "zoomer " << arguments.id << " shown anew\n";
    }

    void TakeId(CLI::App& command, ZoomerArguments& arguments)
    {
        command.add_option("id", arguments.id, "what \"zoomer create\" printed")->required();
    }

    void TakeProperties(CLI::App& command, ZoomerArguments& arguments)
    {
        for (std::size_t i = 0; i < arguments.values.size(); ++i)
            command.add_option("--" + std::string(ZoomerProperties()[i].name), arguments.values[i],
                               ZoomerProperties()[i].help);
    }

    void TakeAllOfNew(CLI::App& command, ZoomerArguments& arguments)
    {
        TakeProperties(command, arguments);
        command.get_option("--original")->required();
        command.get_option("--zoomed")->required();
        command.add_flag("--hidden", arguments.hidden, "do not show it yet");
    }

    void AddViewCommands(CLI::App& group, const Surroundings& surroundings)
    {
        using Arguments = ZoomerArguments;
        AddCommand<Arguments>(group, "create", "make a magnified view and show it; prints its ID", TakeAllOfNew,
                              [&surroundings](const Arguments& a) { Create(surroundings, a); });
        AddCommand<Arguments>(
            group, "set", "change a view",
            [](CLI::App& command, Arguments& arguments) {
                TakeId(command, arguments);
                TakeProperties(command, arguments);
            },
            [&surroundings](const Arguments& a) { Set(surroundings, a); });
        AddCommand<Arguments>(group, "describe", "tell all that can be set of a view", TakeId,
                              [&surroundings](const Arguments& a) { Describe(surroundings, a); });
        AddCommand<Arguments>(group, "show", "show a hidden view", TakeId,
                              [&surroundings](const Arguments& a) { Switch(surroundings, a, true); });
        AddCommand<Arguments>(group, "hide", "hide a view, and keep it", TakeId,
                              [&surroundings](const Arguments& a) { Switch(surroundings, a, false); });
        AddCommand<Arguments>(
            group, "remove", "remove a view, or all; refresh what else lay there",
            [](CLI::App& command, Arguments& arguments) {
                command.add_option("id", arguments.id, "what \"zoomer create\" printed, or all")->required();
            },
            [&surroundings](const Arguments& a) { Remove(surroundings, a); });
    }

    void AddPictureCommands(CLI::App& group, const Surroundings& surroundings)
    {
        using Arguments = ZoomerArguments;
        AddCommand(group, "update", "bring all that is pending to the screen", [&surroundings] {
            Require(Open(surroundings).Zoomers().Update(), "Koru could not update the screen");
            surroundings.out << "updated\n";
        });
        AddCommand<Arguments>(group, "refresh", "magnify and show a view anew", TakeId,
                              [&surroundings](const auto& a) { Render(surroundings, a, &ZoomerControl::Refresh); });
        AddCommand<Arguments>(
            group, "improve", "smooth the picture that a view shows", TakeId,
            [&surroundings](const auto& a) { Render(surroundings, a, &ZoomerControl::ImproveImage); });
        AddCommand<Arguments>(
            group, "scroll", "what lies under a view has moved",
            [](CLI::App& command, Arguments& arguments) {
                TakeId(command, arguments);
                command.add_option("offset", arguments.other, "DX,DY in pixels")->required();
            },
            [&surroundings](const Arguments& a) { Scroll(surroundings, a); });
        AddCommand<Arguments>(
            group, "uncover", "show a part of the screen unmagnified for once",
            [](CLI::App& command, Arguments& arguments) {
                command.add_option("rectangle", arguments.other, "LEFT,TOP,RIGHT,BOTTOM")->required();
            },
            [&surroundings](const Arguments& a) { Uncover(surroundings, a); });
        AddCommand<Arguments>(
            group, "interval", "time between updates that Koru makes by itself",
            [](CLI::App& command, Arguments& arguments) {
                command.add_option("milliseconds", arguments.other, "negative: with every drawing call")->required();
            },
            [&surroundings](const Arguments& a) { Interval(surroundings, a); });
    }

} // namespace

void AddZoomer(CLI::App& app, const Surroundings& surroundings)
{
    CLI::App& group = AddGroup(app, "zoomer", "magnified views of the screen");
    AddViewCommands(group, surroundings);
    AddPictureCommands(group, surroundings);
}

} // namespace koructl
