#include "editor/ModuleCopy.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "EnvironmentVariable.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using Testing::readFile;
using Testing::TemporaryFolder;
namespace Fs = std::filesystem;

struct ModuleCopyTest: ::testing::Test {
    TemporaryFolder folder;
    std::string problem;
};

TEST_F(ModuleCopyTest, HoldsBothFilesUnderTheirNames) {
    const std::optional<ModuleCopy> copy = ModuleCopy::make(
        "/somewhere/Fixture.so", {"code", "# metadata\n"}, problem);
    ASSERT_TRUE(copy) << problem;
    EXPECT_EQ(readFile(copy->folder() + "/Fixture.so"), "code");
    EXPECT_EQ(readFile(copy->folder() + "/Fixture.conf"), "# metadata\n");
}

TEST_F(ModuleCopyTest, FolderGoesWithTheCopy) {
    std::optional<ModuleCopy> copy = ModuleCopy::make("/somewhere/Fixture.so", {}, problem);
    ASSERT_TRUE(copy);
    const std::string copied = copy->folder();
    copy.reset();
    EXPECT_FALSE(Fs::exists(copied));
}

TEST_F(ModuleCopyTest, FolderThatCanNotBeMadeIsAProblem) {
    const EnvironmentVariable temporary{"TMPDIR", folder.write("file", "")};
    EXPECT_FALSE(ModuleCopy::make("/somewhere/Fixture.so", {}, problem));
    EXPECT_EQ(problem, "can't make a temporary folder: Not a directory");
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
