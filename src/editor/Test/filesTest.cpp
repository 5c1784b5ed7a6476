#include "editor/files.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "EnvironmentVariable.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using Testing::readFile;
using Testing::TemporaryFolder;

TEST(FilesTest, ReadsAllBytes) {
    const TemporaryFolder folder;
    const std::string content(200'000, '\0');
    std::string problem;
    EXPECT_EQ(readWholeFile(folder.write("a", content), problem), content);
    EXPECT_EQ(problem, "");
}

TEST(FilesTest, SaysWhyAFileIsNotRead) {
    const TemporaryFolder folder;
    std::string problem;
    EXPECT_FALSE(readWholeFile(folder.file("a"), problem));
    EXPECT_EQ(problem, "No such file or directory");
    EXPECT_FALSE(readWholeFile(folder.path(), problem));
    EXPECT_EQ(problem, "Is a directory");
}

TEST(FilesTest, WritingReplacesAFileAndLeavesNothingElse) {
    const TemporaryFolder folder;
    const std::string path = folder.write("a", "old");
    EXPECT_EQ(writeWholeFile(path, "new"), "");
    EXPECT_EQ(readFile(path), "new");
    using Iterator = std::filesystem::directory_iterator;
    EXPECT_EQ(std::distance(Iterator{folder.path()}, Iterator{}), 1);
}

TEST(FilesTest, SaysWhyAFileIsNotWritten) {
    const TemporaryFolder folder;
    EXPECT_EQ(writeWholeFile(folder.file("no/a"), "x"), "No such file or directory");
    std::filesystem::create_directory(folder.file("b"));
    EXPECT_EQ(writeWholeFile(folder.file("b"), "x"), "Is a directory");
    EXPECT_FALSE(std::filesystem::exists(folder.file("b.new")));
}

struct UserDataTest: ::testing::Test {
    EnvironmentVariable home{"HOME", "/home/someone"}, dataHome{"XDG_DATA_HOME"};
};

TEST_F(UserDataTest, LiesInTheDataFolder) {
    dataHome.set("/data");
    EXPECT_EQ(userDataFolder(), "/data/QuillmereEngine");
}

TEST_F(UserDataTest, UnsetEmptyAndRelativeFoldersCountAsTheDefault) {
    for(const char* const folder: {"", "data", "./data"}) {
        dataHome.set(folder);
        EXPECT_EQ(userDataFolder(), "/home/someone/.local/share/QuillmereEngine") << folder;
    }
    dataHome.unset();
    EXPECT_EQ(userDataFolder(), "/home/someone/.local/share/QuillmereEngine");
}

TEST_F(UserDataTest, IsNowhereWithoutAHome) {
    home.unset();
    dataHome.unset();
    EXPECT_EQ(userDataFolder(), "");
}

}}
