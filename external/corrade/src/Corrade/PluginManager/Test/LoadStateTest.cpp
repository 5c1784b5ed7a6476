#include <sstream>

#include <Corrade/PluginManager/AbstractManager.h>
#include <Corrade/Utility/Debug.h>

#include <gtest/gtest.h>

namespace {

using namespace Corrade;
using PluginManager::LoadState;

TEST(LoadStateTest, PrintsItsName) {
    const struct {
        LoadState state;
        int value;
        const char* name;
    } cases[]{
        {LoadState::NotFound, 1, "NotFound"},
        {LoadState::WrongPluginVersion, 2, "WrongPluginVersion"},
        {LoadState::WrongInterfaceVersion, 4, "WrongInterfaceVersion"},
        {LoadState::WrongMetadataFile, 8, "WrongMetadataFile"},
        {LoadState::UnresolvedDependency, 16, "UnresolvedDependency"},
        {LoadState::LoadFailed, 32, "LoadFailed"},
        {LoadState::Static, 64, "Static"},
        {LoadState::Loaded, 192, "Loaded"},
        {LoadState::NotLoaded, 256, "NotLoaded"},
        {LoadState::UnloadFailed, 512, "UnloadFailed"},
        {LoadState::Required, 1024, "Required"},
        {LoadState::Used, 2048, "Used"},
    };
    for(const auto& i: cases) {
        EXPECT_EQ(int(i.state), i.value) << i.name;
        std::ostringstream out;
        Utility::Debug{&out} << "state" << i.state << "!";
        EXPECT_EQ(out.str(), std::string("state PluginManager::LoadState::") + i.name + " !\n");
    }
}

TEST(LoadStateTest, UnknownPrintsItsNumber) {
    std::ostringstream out;
    Utility::Debug{&out} << LoadState(0xbeef);
    EXPECT_EQ(out.str(), "PluginManager::LoadState(0xbeef)\n");
}

TEST(LoadStateTest, StatesCombine) {
    const PluginManager::LoadStates states = LoadState::Loaded | LoadState::NotLoaded;
    EXPECT_TRUE(states >= LoadState::Static);
    EXPECT_TRUE(LoadState::NotLoaded <= states);
    EXPECT_FALSE(states & LoadState::Used);
}

}
