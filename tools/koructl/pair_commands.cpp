#include "tools/control/arguments.h"
#include "tools/koructl/commands.h"

namespace koructl {

using namespace tools;

using namespace koru::client;

namespace {

    void ListPairs(const Surroundings& surroundings)
    {
        const Control koru = Open(surroundings);
        const std::uint32_t count = koru.ColorPairs().Count().value_or(0);
        for (std::uint32_t i = 0; i < count; ++i) {
            const auto pair = koru.ColorPairs().At(static_cast<std::int32_t>(i));
            Require(pair.has_value(), "Koru did not tell its colour pairs");
            surroundings.out << Text(*pair) << '\n';
        }
    }

    void ChangePairs(const Surroundings& surroundings, const std::string& text, bool add)
    {
        const ColorPair pair = ParseColorPair(text);
        const Control koru = Open(surroundings);
        Require(add ? koru.ColorPairs().Add(pair) : koru.ColorPairs().Delete(pair),
                add ? "Koru has no memory for the pair" : "there is no pair " + Text(pair));
        surroundings.out << "pair " << Text(pair) << (add ? " added\n" : " removed\n");
    }

} // namespace

void AddPair(CLI::App& app, const Surroundings& surroundings)
{
    CLI::App& pairs = AddGroup(app, "pair", "colour pairs: where the two meet, smoothing lets the first one grow");
    const auto takesPair = [](CLI::App& command, std::string& pair) {
        command.add_option("pair", pair, "RRGGBB,RRGGBB in hexadecimal, such as FFFFFF,000000")->required();
    };
    AddCommand<std::string>(pairs, "add", "add a pair", takesPair,
                            [&surroundings](const std::string& pair) { ChangePairs(surroundings, pair, true); });
    AddCommand<std::string>(pairs, "remove", "remove a pair, in either order", takesPair,
                            [&surroundings](const std::string& pair) { ChangePairs(surroundings, pair, false); });
    AddCommand(pairs, "list", "the pairs, the newest first", [&surroundings] { ListPairs(surroundings); });
    AddCommand(pairs, "clear", "remove all pairs", [&surroundings] {
        Require(Open(surroundings).ColorPairs().Clear(), "Koru refused to clear the colour pairs");
        surroundings.out << "pairs removed\n";
    });
}

} // namespace koructl
