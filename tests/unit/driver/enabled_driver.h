#pragma once

// The linked driver, enabled by an engine with the chain and the frame buffer behind it.

#include <gtest/gtest.h>

#include <optional>

#include "driver/screen_list.h"
#include "engine/core/device.h"
#include "engine/core/engine.h"
#include "engine/devices/chain_manager.h"
#include "engine/devices/frame_buffer.h"
#include "engine/loader/linked_driver.h"

class EnabledDriver : public testing::Test {
protected:
    EnabledDriver()
    {
        engine::RegisterChainManager();
        engine::RegisterFrameBuffer();
        engine::RegisterLinkedDriver();
    }
    ~EnabledDriver() override
    {
        device.reset();
        driver.reset();
        EXPECT_EQ(engine.Violations(), std::vector<std::string>());
    }
    void Enable() { driver.emplace(u"koru"); }
    koru::Screen& EnableDevice(const engine::Mode& mode)
    {
        Enable();
        device.emplace(*driver);
        EXPECT_TRUE(device->Enable(mode));
        return *koru::ScreenList::Find(device->Dhpdev());
    }
    template<class Pfn> Pfn Hook(ULONG index) { return driver->Function<Pfn>(index); }

    engine::Engine engine;
    std::optional<engine::DisplayDriver> driver;
    std::optional<engine::Device> device;
};
