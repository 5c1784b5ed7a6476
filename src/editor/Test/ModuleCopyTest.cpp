#include "editor/ModuleCopy.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using Testing::readFile;
using Testing::TemporaryFolder;
namespace Fs = std::filesystem;

struct ModuleCopyTest: ::testing::Test {
    TemporaryFolder folder;
    std::string module = readFile(QUILLMERE_FIXTURES "/Panel1/Fixture.so");
    std::string problem;
};

TEST_F(ModuleCopyTest, HoldsBothFilesUnderTheirNames) {
    const std::string path = folder.write("Fixture.so", module);
    folder.write("Fixture.conf", "# metadata\n");
    const std::optional<ModuleCopy> copy = ModuleCopy::make(path, problem);
    ASSERT_TRUE(copy) << problem;
    EXPECT_NE(copy->folder(), folder.path());
    EXPECT_EQ(readFile(copy->folder() + "/Fixture.so"), module);
    EXPECT_EQ(readFile(copy->folder() + "/Fixture.conf"), "# metadata\n");
}

TEST_F(ModuleCopyTest, FolderGoesWithTheCopy) {
    const std::string path = folder.write("Fixture.so", module);
    std::optional<ModuleCopy> copy = ModuleCopy::make(path, problem);
    ASSERT_TRUE(copy);
    const std::string copied = copy->folder();
    copy.reset();
    EXPECT_FALSE(Fs::exists(copied));
}

TEST_F(ModuleCopyTest, HalfAFileIsRefused) {
    const std::string path = folder.write("Fixture.so", module.substr(0, module.size() / 2));
    EXPECT_FALSE(ModuleCopy::make(path, problem));
    EXPECT_EQ(problem, "the file isn't whole");
}

TEST_F(ModuleCopyTest, MissingFileIsRefused) {
    EXPECT_FALSE(ModuleCopy::make(folder.file("Fixture.so"), problem));
    EXPECT_EQ(problem, "No such file or directory");
}

TEST_F(ModuleCopyTest, StampChangesWithEitherFile) {
    const std::string path = folder.write("Fixture.so", "1");
    const ModuleStamp first = ModuleStamp::of(path);
    EXPECT_TRUE(first.exists());
    EXPECT_TRUE(first == ModuleStamp::of(path));

    folder.write("Fixture.so", "12");
    const ModuleStamp second = ModuleStamp::of(path);
    EXPECT_TRUE(second != first);

    folder.write("Fixture.conf", "");
    EXPECT_TRUE(ModuleStamp::of(path) != second);
}

TEST_F(ModuleCopyTest, FolderInTheFilesPlaceDoesNotExist) {
    Fs::create_directory(folder.file("Fixture.so"));
    EXPECT_FALSE(ModuleStamp::of(folder.file("Fixture.so")).exists());
}

}}
