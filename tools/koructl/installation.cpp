#include "tools/koructl/installation.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

namespace koructl {

namespace {

    constexpr char VideoMap[] = "HARDWARE\\DEVICEMAP\\VIDEO";
    constexpr char RegistryRoot[] = "\\registry\\machine\\"; // what paths in the video map begin with, in any case
    constexpr char DriverList[] = "InstalledDisplayDrivers"; // of a video device's key
    constexpr char KeptList[] = "KoruInstalledDisplayDrivers"; // beside it: the list without Koru
    constexpr char OwnKey[] = "SOFTWARE\\Koru";
    constexpr char DisplayKey[] = "DisplayKey"; // below it: the key whose list was changed
    constexpr char LinkFile[] = "korulink.ini"; // one line, the driver behind the chain
    constexpr char KeptLinkFile[] = "korulink.old"; // the link file that was there before
    constexpr char Koru[] = "koru";
    constexpr const char* Images[] = {"koru.dll", "dcmkrnl.dll", "korulink.dll"};
    constexpr std::uint32_t TextType = 1, TextListType = 7;
    constexpr std::size_t MostNameCharacters = 39; // of a driver in the chain

    [[noreturn]] void Refuse(const std::string& why)
    {
        throw std::runtime_error(why);
    }

    std::string Lower(std::string text)
    {
        std::transform(text.begin(), text.end(), text.begin(),
                       [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
        return text;
    }

    // Registry texts are UTF-16. Names and paths that matter here are ASCII; anything else becomes '?', which no
    // name has.
    std::string Narrow(const std::string& utf16)
    {
        std::string text;
        for (std::size_t i = 0; i + 1 < utf16.size(); i += 2)
            text += utf16[i + 1] == 0 && static_cast<unsigned char>(utf16[i]) < 0x80 ? utf16[i] : '?';
        return text;
    }

    std::string Wide(const std::string& text)
    {
        std::string utf16;
        for (const char character : text)
            utf16 += {character, '\0'};
        return utf16;
    }

    std::string TextOf(const RegistryValue& value)
    {
        const std::string text = Narrow(value.bytes);
        return text.substr(0, text.find('\0'));
    }

    RegistryValue TextValue(const std::string& text)
    {
        return {TextType, Wide(text) + std::string(2, '\0')};
    }

    std::vector<std::string> NamesOf(const RegistryValue& list)
    {
        std::vector<std::string> names(1);
        for (const char character : Narrow(list.bytes))
            if (character == '\0')
                names.emplace_back();
            else
                names.back() += character;
        std::erase(names, std::string());
        return names;
    }

    RegistryValue WithKoruInFront(const RegistryValue& list)
    {
        const std::string koru = Wide(std::string(Koru) + '\0');
        if (list.type == TextListType)
            return {TextListType, koru + list.bytes};
        return {TextListType, koru + Wide(TextOf(list)) + std::string(4, '\0')};
    }

    bool IsHeadedByKoru(const RegistryValue& list)
    {
        const auto names = NamesOf(list);
        return !names.empty() && Lower(names.front()) == Koru;
    }

    // The key of a video device below HKEY_LOCAL_MACHINE. The numbered control set in it is the current one.
    std::string KeyOfVideoDevice(Machine& machine, unsigned number)
    {
        const std::string device = "\\Device\\Video" + std::to_string(number);
        const auto value = machine.ReadValue(VideoMap, device);
        const std::string path = value ? TextOf(*value) : "";
        const std::string root = RegistryRoot;
        if (Lower(path.substr(0, root.size())) != root)
            Refuse("the registry does not tell the key of " + device);
        std::string key = path.substr(root.size());
        const std::string numbered = "system\\controlset";
        if (Lower(key.substr(0, numbered.size())) == numbered && key.size() > numbered.size() + 3)
            key = "SYSTEM\\CurrentControlSet" + key.substr(numbered.size() + 3);
        return key;
    }

    // Windows 2000 and ReactOS name the miniport in the device's key; Windows XP names it in the key "Video" beside it.
    bool IsVgaDevice(Machine& machine, const std::string& key)
    {
        if (Lower(key).find("\\vgasave\\") != std::string::npos)
            return true;
        const auto service = machine.ReadValue(key.substr(0, key.rfind('\\')) + "\\Video", "Service");
        return service && Lower(TextOf(*service)) == "vgasave";
    }

    void RequireName(const std::string& name)
    {
        const auto isOfNames = [](unsigned char c) { return c < 0x80 && (std::isalnum(c) || c == '_' || c == '-'); };
        if (name.empty() || name.size() > MostNameCharacters || !std::all_of(name.begin(), name.end(), isOfNames))
            Refuse("the chain cannot hold a driver of the name \"" + name + "\"");
        for (const char* const image : Images)
            if (Lower(name) + ".dll" == image)
                Refuse("the driver behind Koru cannot be " + name);
    }

    void RequireFile(Machine& machine, const std::string& name, const std::string& hint)
    {
        if (!machine.HasFile(name))
            Refuse(name + " is not in the system folder" + hint);
    }

    std::string NextDriver(Machine& machine, const InstallOptions& options, const RegistryValue& list)
    {
        const auto names = NamesOf(list);
        if (names.empty())
            Refuse("the registry lists no display driver");
        std::string next = options.next.empty() ? names.front() : options.next;
        RequireName(next);
        RequireFile(machine, next + ".dll", "");
        return next;
    }

} // namespace

std::string Install(Machine& machine, const InstallOptions& options)
{
    const std::string key = KeyOfVideoDevice(machine, options.videoDevice);
    if (!options.evenVga && IsVgaDevice(machine, key))
        Refuse("the display driver is the one of safe and VGA mode; start the machine as usual, or use --vga");
    const auto list = machine.ReadValue(key, DriverList);
    if (!list || (list->type != TextListType && list->type != TextType))
        Refuse("there is no list of drivers " + std::string(DriverList) + " in " + key);
    if (IsHeadedByKoru(*list))
        Refuse("Koru is installed already; nothing was changed");
    for (const char* const image : Images)
        RequireFile(machine, image, "; install koru.inf first");
    const std::string next = NextDriver(machine, options, *list);

    const auto ownKey = machine.ReadValue(OwnKey, DisplayKey);
    if (ownKey && TextOf(*ownKey) != key)
        Refuse("Koru is installed for another video device; uninstall it first");

    Changes changes(machine);
    if (!ownKey) // else the link file is Koru's: another driver was installed over it
        changes.File(KeptLinkFile, machine.ReadFile(LinkFile));
    changes.File(LinkFile, next + "\r\n");
    changes.Value(OwnKey, DisplayKey, TextValue(key));
    changes.Value(key, KeptList, list);
    changes.Value(key, DriverList, WithKoruInFront(*list)); // the one that counts comes last
    changes.Keep();
    return "Koru is in front of " + next
        + "; restart the machine to start it.\n"
          "To take it away: koructl uninstall\n";
}

std::string Uninstall(Machine& machine)
{
    const auto ownKey = machine.ReadValue(OwnKey, DisplayKey);
    const std::string key = ownKey ? TextOf(*ownKey) : KeyOfVideoDevice(machine, 0);
    const auto list = machine.ReadValue(key, DriverList), kept = machine.ReadValue(key, KeptList);
    if (!ownKey && !kept)
        Refuse("Koru is not installed; nothing was changed");
    const bool inFront = list && IsHeadedByKoru(*list);
    if (inFront && !kept)
        Refuse(std::string(KeptList) + " is missing in " + key + "; take koru out of " + DriverList + " by hand");

    Changes changes(machine);
    if (inFront)
        changes.Value(key, DriverList, kept);
    changes.Value(key, KeptList, {});
    changes.Value(OwnKey, DisplayKey, {});
    changes.File(LinkFile, machine.ReadFile(KeptLinkFile));
    changes.File(KeptLinkFile, {});
    changes.Keep();
    return inFront ? "Koru is taken away; restart the machine.\n"
                   : "The system did not use Koru any more; what was left of it is taken away.\n";
}

} // namespace koructl
