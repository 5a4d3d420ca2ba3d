#include <gtest/gtest.h>

#include <string>

#include "engine/loader/linked_driver.h"
#include "engine/loader/pe_image.h"
#include "tests/support/driver_form.h"

namespace {

std::string imagePath;

// Tests share one process but not the driver's globals.
class FreshDriver : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { engine::ResetLinkedDriver(); }
};

} // namespace

namespace support {

const std::string& ImagePath()
{
    return imagePath;
}

void RegisterDriverUnderTest()
{
    if (imagePath.empty())
        return engine::RegisterLinkedDriver();
    std::string error;
    if (!engine::RegisterImageFile(u"koru", imagePath, error, engine::Calls::Watched))
        ADD_FAILURE() << error;
}

} // namespace support

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const std::string option = "--image=";
    for (int i = 1; i < argc; ++i)
        if (std::string(argv[i]).starts_with(option))
            imagePath = std::string(argv[i]).substr(option.size());
    testing::UnitTest::GetInstance()->listeners().Append(new FreshDriver);
    return RUN_ALL_TESTS();
}
