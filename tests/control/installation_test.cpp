// Installing and removing on a registry and a system folder in memory.

#include "tools/koructl/installation.h"

#include <gtest/gtest.h>

#include "tests/control/fake_machine.h"

namespace koructl::test {
namespace {

    constexpr char Key[] = "SYSTEM\\CurrentControlSet\\Services\\smi\\Device0";

    std::string Wide(const std::string& text)
    {
        std::string utf16;
        for (const char character : text)
            utf16 += {character, '\0'};
        return utf16;
    }

    RegistryValue List(const std::string& names)
    {
        return {7, Wide(names)};
    } // with its zeros

    class InstallationTest : public testing::Test {
    protected:
        InstallationTest()
        {
            SetVideo("\\REGISTRY\\Machine\\System\\ControlSet001\\Services\\smi\\Device0");
            SetList(List(std::string("smidisp\0framebuf\0\0", 18)));
            for (const char* const name : {"koru.dll", "dcmkrnl.dll", "korulink.dll", "smidisp.dll", "framebuf.dll"})
                machine.files[name] = "image";
        }

        void SetVideo(const std::string& path, const std::string& device = "\\Device\\Video0")
        {
            machine.values[{"HARDWARE\\DEVICEMAP\\VIDEO", device}] = {1, Wide(path + '\0')};
        }
        void SetList(const RegistryValue& list) { machine.values[{Key, "InstalledDisplayDrivers"}] = list; }
        RegistryValue ListNow() { return machine.values[{Key, "InstalledDisplayDrivers"}]; }

        // Refused with these words, and nothing has changed.
        template<class Action> void ExpectRefused(const std::string& words, Action action)
        {
            const auto values = machine.values;
            const auto files = machine.files;
            try {
                action();
                ADD_FAILURE() << "was not refused: " << words;
            } catch (const std::runtime_error& error) {
                EXPECT_NE(std::string(error.what()).find(words), std::string::npos) << error.what();
            }
            EXPECT_TRUE(machine.values == values);
            EXPECT_EQ(machine.files, files);
        }

        FakeMachine machine;
    };

    TEST_F(InstallationTest, PutsKoruInFrontAndKeepsTheListAside)
    {
        const std::string told = Install(machine, {});
        EXPECT_NE(told.find("in front of smidisp"), std::string::npos) << told;
        EXPECT_EQ(ListNow(), List(std::string("koru\0smidisp\0framebuf\0\0", 23)));
        EXPECT_EQ((machine.values[{Key, "KoruInstalledDisplayDrivers"}]),
                  List(std::string("smidisp\0framebuf\0\0", 18)));
        EXPECT_EQ(machine.files["korulink.ini"], "smidisp\r\n");
    }

    TEST_F(InstallationTest, UninstallPutsEverythingBack)
    {
        const auto values = machine.values;
        const auto files = machine.files;
        Install(machine, {});
        Uninstall(machine);
        EXPECT_TRUE(machine.values == values);
        EXPECT_EQ(machine.files, files);
    }

    TEST_F(InstallationTest, UninstallPutsALinkFileBackThatWasThere)
    {
        machine.files["korulink.ini"] = "my own";
        const auto files = machine.files;
        Install(machine, {});
        EXPECT_EQ(machine.files["korulink.ini"], "smidisp\r\n");
        Uninstall(machine);
        EXPECT_EQ(machine.files, files);
    }

    TEST_F(InstallationTest, KeepsTheKindAndEveryByteOfTheOldList)
    {
        const RegistryValue text = {1, Wide(std::string("smidisp\0", 8))};
        SetList(text); // one text instead of a list
        Install(machine, {});
        EXPECT_EQ(ListNow(), List(std::string("koru\0smidisp\0\0", 14)));
        Uninstall(machine);
        EXPECT_EQ(ListNow(), text);
    }

    TEST_F(InstallationTest, EveryFailureHalfWayLeavesThingsAsTheyWere)
    {
        machine.files["korulink.ini"] = "my own";
        const auto values = machine.values;
        const auto files = machine.files;
        int refused = 0;
        for (;; ++refused) {
            machine.changes = 0;
            machine.refuse = refused;
            try {
                Install(machine, {});
                break;
            } catch (const std::runtime_error&) {
                EXPECT_TRUE(machine.values == values) << "change " << refused;
                EXPECT_EQ(machine.files, files) << "change " << refused;
            }
        }
        EXPECT_EQ(refused, 5); // two files, three values

        const auto installed = machine.values;
        const auto installedFiles = machine.files;
        for (refused = 0;; ++refused) {
            machine.changes = 0;
            machine.refuse = refused;
            try {
                Uninstall(machine);
                break;
            } catch (const std::runtime_error&) {
                EXPECT_TRUE(machine.values == installed) << "change " << refused;
                EXPECT_EQ(machine.files, installedFiles) << "change " << refused;
            }
        }
        EXPECT_EQ(refused, 5);
        EXPECT_TRUE(machine.values == values);
        EXPECT_EQ(machine.files, files);
    }

    TEST_F(InstallationTest, RefusesToInstallTwiceAndToRemoveNothing)
    {
        ExpectRefused("not installed", [&] { Uninstall(machine); });
        Install(machine, {});
        ExpectRefused("installed already", [&] { Install(machine, {}); });
        Uninstall(machine);
        ExpectRefused("not installed", [&] { Uninstall(machine); });
    }

    TEST_F(InstallationTest, InstallsAgainOverADriverThatCameLater)
    {
        const auto files = machine.files;
        Install(machine, {});
        SetList(List(std::string("newdisp\0\0", 9)));
        machine.files["newdisp.dll"] = "image";
        Install(machine, {});
        EXPECT_EQ(machine.files["korulink.ini"], "newdisp\r\n");
        Uninstall(machine);
        EXPECT_EQ(ListNow(), List(std::string("newdisp\0\0", 9)));
        machine.files.erase("newdisp.dll");
        EXPECT_EQ(machine.files, files);
    }

    TEST_F(InstallationTest, UninstallLeavesADriverThatCameLater)
    {
        Install(machine, {});
        SetList(List(std::string("newdisp\0\0", 9)));
        Uninstall(machine);
        EXPECT_EQ(ListNow(), List(std::string("newdisp\0\0", 9)));
        EXPECT_FALSE((machine.values.contains({Key, "KoruInstalledDisplayDrivers"})));
    }

    TEST_F(InstallationTest, UninstallsFromSafeMode)
    {
        const RegistryValue before = ListNow();
        Install(machine, {});
        SetVideo("\\REGISTRY\\Machine\\System\\ControlSet001\\Services\\VgaSave\\Device0");
        Uninstall(machine);
        EXPECT_EQ(ListNow(), before);
        ExpectRefused("safe and VGA mode", [&] { Install(machine, {}); });
    }

    TEST_F(InstallationTest, GoesInFrontOfTheVgaDriverOnlyWhenTold)
    {
        const std::string key = "SYSTEM\\CurrentControlSet\\Services\\VgaSave\\Device0";
        SetVideo("\\REGISTRY\\Machine\\System\\ControlSet001\\Services\\VgaSave\\Device0");
        machine.values[{key, "InstalledDisplayDrivers"}] = List(std::string("framebuf\0\0", 10));
        ExpectRefused("--vga", [&] { Install(machine, {}); });
        Install(machine, {"", 0, true});
        EXPECT_EQ((machine.values[{key, "InstalledDisplayDrivers"}]), List(std::string("koru\0framebuf\0\0", 15)));
    }

    TEST_F(InstallationTest, KnowsTheVgaDriverOfNewerSystemsByTheServiceBesideIt)
    {
        const std::string video = "SYSTEM\\CurrentControlSet\\Control\\Video\\{ABC}\\";
        SetVideo("\\REGISTRY\\Machine\\System\\ControlSet001\\Control\\Video\\{ABC}\\0000");
        machine.values[{video + "0000", "InstalledDisplayDrivers"}] = List(std::string("framebuf\0\0", 10));
        machine.values[{video + "Video", "Service"}] = {1, Wide(std::string("VgaSave\0", 8))};
        ExpectRefused("--vga", [&] { Install(machine, {}); });
        machine.values[{video + "Video", "Service"}] = {1, Wide(std::string("smi\0", 4))};
        Install(machine, {});
        EXPECT_EQ((machine.values[{video + "0000", "InstalledDisplayDrivers"}]),
                  List(std::string("koru\0framebuf\0\0", 15)));
        Uninstall(machine);
        machine.values[{video + "Video", "Service"}] = {1, Wide(std::string("vgasave\0", 8))};
        Install(machine, {"", 0, true});
        EXPECT_EQ((machine.values[{video + "0000", "InstalledDisplayDrivers"}]),
                  List(std::string("koru\0framebuf\0\0", 15)));
    }

    TEST_F(InstallationTest, FollowsTheKeysOfNewerSystems)
    {
        SetVideo("\\Registry\\Machine\\System\\CurrentControlSet\\Control\\Video\\{ABC}\\0000", "\\Device\\Video1");
        machine.values[{"System\\CurrentControlSet\\Control\\Video\\{ABC}\\0000", "InstalledDisplayDrivers"}] =
            List(std::string("framebuf\0\0", 10));
        Install(machine, {"", 1, false});
        EXPECT_EQ(
            (machine.values[{"System\\CurrentControlSet\\Control\\Video\\{ABC}\\0000", "InstalledDisplayDrivers"}]),
            List(std::string("koru\0framebuf\0\0", 15)));
        ExpectRefused("another video device", [&] { Install(machine, {"", 0, false}); });
    }

    TEST_F(InstallationTest, TakesTheNextDriverThatItIsTold)
    {
        Install(machine, {"framebuf", 0, false});
        EXPECT_EQ(machine.files["korulink.ini"], "framebuf\r\n");
    }

    TEST_F(InstallationTest, RefusesWhatCannotStart)
    {
        ExpectRefused("cannot be koru", [&] { Install(machine, {"koru", 0, false}); });
        ExpectRefused("cannot be KoruLink", [&] { Install(machine, {"KoruLink", 0, false}); });
        ExpectRefused("cannot hold", [&] { Install(machine, {"smi disp", 0, false}); });
        ExpectRefused("cannot hold", [&] { Install(machine, {std::string(40, 'a'), 0, false}); });
        ExpectRefused("absent.dll is not", [&] { Install(machine, {"absent", 0, false}); });
        machine.files.erase("korulink.dll");
        ExpectRefused("install koru.inf first", [&] { Install(machine, {}); });
        machine.files["korulink.dll"] = "image";
        SetList(List(std::string("\0\0", 2)));
        ExpectRefused("lists no display driver", [&] { Install(machine, {}); });
        machine.values.erase({Key, "InstalledDisplayDrivers"});
        ExpectRefused("no list of drivers", [&] { Install(machine, {}); });
        machine.values.clear();
        ExpectRefused("does not tell the key", [&] { Install(machine, {}); });
    }

} // namespace
} // namespace koructl::test
