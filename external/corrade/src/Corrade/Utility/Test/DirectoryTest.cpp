#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Directory.h>

#include <gtest/gtest.h>

#include "../../Test/TemporaryFolder.h"

namespace {

namespace Directory = Corrade::Utility::Directory;
using Corrade::Utility::Error;
using Directory::Flag;
typedef std::vector<std::string> Strings;

std::string read(const std::string& path) {
    std::ifstream file{path, std::ios::binary};
    return {std::istreambuf_iterator<char>{file}, {}};
}

class DirectoryTest: public testing::Test {
protected:
    const std::string& folder() const { return _folder.path(); }
    std::string path(const std::string& name) const { return _folder.path(name); }
    void write(const std::string& name, const std::string& data) { _folder.write(name, data); }

private:
    Corrade::Test::TemporaryFolder _folder;
};

TEST_F(DirectoryTest, JoinPutsOneSlashBetween) {
    EXPECT_EQ(Directory::join("", "b"), "b");
    EXPECT_EQ(Directory::join("a", "/b"), "/b");
    EXPECT_EQ(Directory::join("a", "b"), "a/b");
    EXPECT_EQ(Directory::join("a/", "b"), "a/b");
    EXPECT_EQ(Directory::join("a//", "b"), "a//b");
    EXPECT_EQ(Directory::join("a", ""), "a/");
    EXPECT_EQ(Directory::join({"a", "b", "c"}), "a/b/c");
    EXPECT_EQ(Directory::join({"a", "/b", "c"}), "/b/c");
    EXPECT_EQ(Directory::join({}), "");
}

TEST_F(DirectoryTest, SeparatorsStayOnUnix) {
    EXPECT_EQ(Directory::toNativeSeparators("a/b\\c"), "a/b\\c");
    EXPECT_EQ(Directory::fromNativeSeparators("a/b\\c"), "a/b\\c");
}

TEST_F(DirectoryTest, HomeIsTheVariable) {
    const char* const before = std::getenv("HOME");
    const std::string saved = before ? before : "";
    setenv("HOME", "/my/home", 1);
    EXPECT_EQ(Directory::home(), "/my/home");
    unsetenv("HOME");
    std::ostringstream out;
    {
        Error redirect{&out};
        EXPECT_EQ(Directory::home(), "");
    }
    EXPECT_EQ(out.str(), "Utility::Path::homeDirectory(): $HOME not available\n");
    if(before)
        setenv("HOME", saved.data(), 1);
}

TEST_F(DirectoryTest, ExistsFollowsLinks) {
    write("file", "");
    std::filesystem::create_symlink("file", path("link"));
    std::filesystem::create_symlink("nowhere", path("broken"));
    EXPECT_TRUE(Directory::exists(path("file")));
    EXPECT_TRUE(Directory::exists(path("link")));
    EXPECT_FALSE(Directory::exists(path("broken")));
    EXPECT_FALSE(Directory::exists(path("nowhere")));
    EXPECT_TRUE(Directory::exists(folder()));
}

TEST_F(DirectoryTest, IsDirectoryFollowsLinks) {
    write("file", "");
    std::filesystem::create_directory(path("folder"));
    std::filesystem::create_symlink("folder", path("link"));
    EXPECT_TRUE(Directory::isDirectory(path("folder")));
    EXPECT_TRUE(Directory::isDirectory(path("link")));
    EXPECT_FALSE(Directory::isDirectory(path("file")));
    EXPECT_FALSE(Directory::isDirectory(path("nowhere")));
}

TEST_F(DirectoryTest, MkpathMakesParents) {
    EXPECT_TRUE(Directory::mkpath(path("a/b/c")));
    EXPECT_TRUE(Directory::isDirectory(path("a/b/c")));
    EXPECT_TRUE(Directory::mkpath(path("a/b/c")));
    EXPECT_TRUE(Directory::mkpath(path("a/d/")));
    EXPECT_TRUE(Directory::isDirectory(path("a/d")));
    EXPECT_TRUE(Directory::mkpath(""));
    EXPECT_TRUE(Directory::mkpath("/"));
}

TEST_F(DirectoryTest, MkpathNamesTheFirstFolderThatFails) {
    std::ostringstream out;
    Error redirect{&out};
    EXPECT_FALSE(Directory::mkpath("/proc/nowhere/b"));
    EXPECT_EQ(out.str(),
        "Utility::Path::make(): can't create /proc/nowhere: error 2 (No such file or directory)\n");
}

TEST_F(DirectoryTest, MkpathOfAFileDoesNotReplaceIt) {
    write("file", "data");
    std::ostringstream out;
    bool made;
    {
        Error redirect{&out};
        made = Directory::mkpath(path("file"));
    }
    /* Older releases say yes, in silence */
    if(made)
        EXPECT_EQ(out.str(), "");
    else
        EXPECT_EQ(out.str(),
            "Utility::Path::make(): " + path("file") + " exists but is not a directory\n");
    EXPECT_EQ(read(path("file")), "data");
}

TEST_F(DirectoryTest, ListSortsAndSkips) {
    write("b", "");
    write("a", "");
    write("B", "");
    std::filesystem::create_directory(path("folder"));
    EXPECT_EQ(Directory::list(folder(), Flag::SortAscending),
        (Strings{".", "..", "B", "a", "b", "folder"}));
    EXPECT_EQ(Directory::list(folder(), Flag::SortDescending | Flag::SkipDotAndDotDot),
        (Strings{"folder", "b", "a", "B"}));
    EXPECT_EQ(Directory::list(folder(), Flag::SkipDirectories | Flag::SortAscending),
        (Strings{"B", "a", "b"}));
    EXPECT_EQ(
        Directory::list(folder(), Flag::SkipFiles | Flag::SkipDotAndDotDot), (Strings{"folder"}));
}

TEST_F(DirectoryTest, ListWithoutFlagsHasEverything) {
    write("a", "");
    Strings names = Directory::list(folder());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (Strings{".", "..", "a"}));
}

TEST_F(DirectoryTest, ListSkipsSpecialFiles) {
    const Strings names = Directory::list(
        "/dev", Flag::SkipSpecial | Flag::SkipDirectories | Flag::SkipFiles);
    EXPECT_EQ(names, Strings{});
    const Strings special = Directory::list("/dev", Flag::SkipDirectories | Flag::SkipFiles);
    EXPECT_NE(std::find(special.begin(), special.end(), "null"), special.end());
}

TEST_F(DirectoryTest, ListOfNothingSaysSo) {
    std::ostringstream out;
    Error redirect{&out};
    EXPECT_EQ(Directory::list(path("nowhere")), Strings{});
    EXPECT_EQ(out.str(),
        "Utility::Path::list(): can't list " + path("nowhere") +
            ": error 2 (No such file or directory)\n");
}

TEST_F(DirectoryTest, CopyReplaces) {
    std::string data(200000, '\0');
    for(std::size_t i = 0; i != data.size(); ++i)
        data[i] = char(i * 31);
    write("from", data);
    write("to", std::string(300000, 'x'));
    EXPECT_TRUE(Directory::copy(path("from"), path("to")));
    EXPECT_EQ(read(path("to")), data);
    EXPECT_EQ(read(path("from")), data);
}

TEST_F(DirectoryTest, CopyFailuresNameThePath) {
    write("from", "data");
    std::ostringstream out;
    Error redirect{&out};
    EXPECT_FALSE(Directory::copy(path("nowhere"), path("to")));
    EXPECT_FALSE(Directory::copy(path("from"), path("nowhere/to")));
    EXPECT_FALSE(Directory::copy(folder(), path("to")));
    EXPECT_EQ(out.str(),
        "Utility::Path::copy(): can't open " + path("nowhere") +
            " for reading: error 2 (No such file or directory)\n"
            "Utility::Path::copy(): can't open " +
            path("nowhere/to") +
            " for writing: error 2 (No such file or directory)\n"
            "Utility::Path::copy(): can't read from " +
            folder() + " which is a directory\n");
}

}
