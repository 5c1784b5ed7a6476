#include "editor/ModuleRead.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "moduleConf.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using State = ModuleRead::State;
using Testing::readFile;

struct ModuleReadTest: ::testing::Test {
    ModuleRead read() { return readModule(folder.file("Fixture.so")); }

    Testing::TemporaryFolder folder;
    std::string library = readFile(QUILLMERE_FIXTURES "/Panel1/Fixture.so");
    std::string conf = readFile(QUILLMERE_FIXTURES "/Panel1/Fixture.conf");
};

TEST_F(ModuleReadTest, GoodModuleIsReadWhole) {
    folder.write("Fixture.so", library);
    folder.write("Fixture.conf", conf);
    const ModuleRead out = read();
    EXPECT_EQ(out.state, State::Good) << out.problem;
    EXPECT_EQ(out.files.library, library);
    EXPECT_EQ(out.files.metadata, conf);
    EXPECT_EQ(out.type, QUILLMERE_BUILD_TYPE);
}

TEST_F(ModuleReadTest, MissingFilesMayCome) {
    ModuleRead out = read();
    EXPECT_EQ(out.state, State::Incomplete);
    EXPECT_EQ(out.problem, "its file can't be read: No such file or directory");
    folder.write("Fixture.so", library);
    out = read();
    EXPECT_EQ(out.state, State::Incomplete);
    EXPECT_EQ(out.problem, "its .conf can't be read: No such file or directory");
}

TEST_F(ModuleReadTest, HalfOfTheFileIsIncomplete) {
    folder.write("Fixture.so", library.substr(0, 1000));
    folder.write("Fixture.conf", conf);
    EXPECT_EQ(read().state, State::Incomplete);
    EXPECT_EQ(read().problem,
        "its file has 1000 bytes, but its .conf says " + std::to_string(library.size()));
}

TEST_F(ModuleReadTest, ModuleOfAnotherLibraryIsUnfit) {
    folder.write("Fixture.so", library);
    folder.write("Fixture.conf", withValue(conf, "library", "9.9.9"));
    EXPECT_EQ(read().state, State::Unfit);
    EXPECT_EQ(read().problem, "it was built against library 9.9.9, but this is " QUILLMERE_VERSION);
}

/* While a module is built again the old .conf says nothing of the new file */
TEST_F(ModuleReadTest, DifferenceDoesNotCountUntilTheFilesFit) {
    folder.write("Fixture.so", library + "more");
    folder.write("Fixture.conf", withValue(conf, "library", "9.9.9"));
    EXPECT_EQ(read().state, State::Incomplete);
}

TEST_F(ModuleReadTest, ModuleWithoutTheGroupIsUnfit) {
    folder.write("Fixture.so", library);
    folder.write("Fixture.conf", "# An author's own\n");
    EXPECT_EQ(read().state, State::Unfit);
}

}}
