#include <sstream>
#include <string>
#include <vector>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/PluginManager/Manager.hpp>
#include <Corrade/PluginManager/PluginMetadata.h>
#include <Corrade/Utility/Debug.h>

#include <gtest/gtest.h>

#include "../../Test/TemporaryFolder.h"
#include "AbstractAnimal.h"

namespace {

using namespace Corrade;
using PluginManager::LoadState;
using Test::TemporaryFolder;
using Utility::Error;
typedef std::vector<std::string> Strings;

template<class T> Strings toStrings(const T& list) {
    Strings out;
    for(const auto& i: list)
        out.push_back(i);
    return out;
}

/* Metadata are read without opening the module, so an empty file is enough */
class PluginMetadataTest: public testing::Test {
protected:
    PluginManager::Manager<AbstractAnimal>& manager(const std::string& metadata) {
        _folder.write("Plugin.so", "");
        _folder.write("Plugin.conf", metadata);
        return list();
    }
    PluginManager::Manager<AbstractAnimal>& list() {
        Error redirect{&_out};
        return _manager.emplace(Containers::StringView{_folder.path()});
    }

    TemporaryFolder _folder;
    std::ostringstream _out;
    Containers::Pointer<PluginManager::Manager<AbstractAnimal>> _manager;
};

TEST_F(PluginMetadataTest, ListsKeepTheirOrder) {
    auto& m = manager("depends=Z\nprovides = One \nother=3\ndepends=\tA\r\nprovides=\"Two \"\n");
    const PluginManager::PluginMetadata* const metadata = m.metadata("Plugin");
    ASSERT_NE(metadata, nullptr);
    EXPECT_TRUE(metadata->name() == "Plugin");
    EXPECT_EQ(toStrings(metadata->depends()), (Strings{"Z", "A"}));
    EXPECT_EQ(toStrings(metadata->provides()), (Strings{"One", "Two "}));
    EXPECT_EQ(metadata->usedBy().size(), 0u);
    EXPECT_EQ(m.metadata("Two "), metadata);
    EXPECT_EQ(m.metadata("Nothing"), nullptr);
    EXPECT_EQ(_out.str(), "");
}

TEST_F(PluginMetadataTest, CommentsGroupsAndByteOrderMark) {
    auto& m = manager("\xef\xbb\xbf"
                      "provides=a=b\n# provides=Comment\n; provides=Other\n\n  \n"
                      "provides=c#d\n[group]\nprovides=Grouped");
    EXPECT_EQ(toStrings(m.metadata("Plugin")->provides()), (Strings{"a=b", "c#d"}));
    EXPECT_EQ(_out.str(), "");
}

TEST_F(PluginMetadataTest, EmptyFileIsFine) {
    auto& m = manager("");
    EXPECT_EQ(m.loadState("Plugin"), LoadState::NotLoaded);
    EXPECT_EQ(m.metadata("Plugin")->depends().size(), 0u);
    EXPECT_EQ(_out.str(), "");
}

TEST_F(PluginMetadataTest, MissingFileIsReported) {
    _folder.write("Plugin.so", "");
    auto& m = list();
    EXPECT_EQ(
        _out.str(), "PluginManager::Manager: " + _folder.path("Plugin.conf") + " was not found\n");
    EXPECT_EQ(m.loadState("Plugin"), LoadState::WrongMetadataFile);
}

TEST_F(PluginMetadataTest, MalformedFileIsReported) {
    const struct {
        const char *text, *message;
    } cases[]{
        {"provides=a\nhello\n", "missing equals for a value"},
        {"[group\n", "missing closing bracket for a group header"},
        {"provides=\"a\n", "missing closing quote for a value"},
        {"provides=\"", "missing closing quote for a value"},
    };
    for(const auto& i: cases) {
        _out.str({});
        auto& m = manager(i.text);
        EXPECT_EQ(
            _out.str(), std::string("Utility::Configuration::Configuration(): ") + i.message + "\n")
            << i.text;
        EXPECT_EQ(m.loadState("Plugin"), LoadState::WrongMetadataFile) << i.text;
    }
}

TEST_F(PluginMetadataTest, PluginWithoutReadableMetadataIsNotLoaded) {
    auto& m = manager("hello");
    std::ostringstream out;
    Error redirect{&out};
    EXPECT_EQ(m.load("Plugin"), LoadState::WrongMetadataFile);
    EXPECT_EQ(m.unload("Plugin"), LoadState::WrongMetadataFile);
    EXPECT_EQ(out.str(),
        "PluginManager::Manager::load(): plugin Plugin is not ready to load: "
        "PluginManager::LoadState::WrongMetadataFile\n");
}

TEST_F(PluginMetadataTest, EmptySuffixMeansNoFile) {
    struct Animal: AbstractAnimal {
        static Containers::StringView pluginMetadataSuffix() { return {}; }
    };
    _folder.write("Plugin.so", "");
    std::ostringstream out;
    Error redirect{&out};
    PluginManager::Manager<Animal> m{_folder.path()};
    EXPECT_EQ(m.loadState("Plugin"), LoadState::NotLoaded);
    EXPECT_EQ(out.str(), "");
}

}
