#include "editor/ServedFile.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "FewDescriptors.h"
#include "testing/TemporaryFolder.h"
#include "testing/sanitizer.h"

namespace QuillmereEngine { namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using Result = FileLookup::Result;

/* As long as it lives, root is nobody, as root reads everything */
class OrdinaryUser {
public:
    OrdinaryUser() {
        if(_user == 0 && seteuid(Nobody) != 0)
            ADD_FAILURE() << "Can't give up being root";
    }

    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    ~OrdinaryUser() {
        if(_user == 0 && seteuid(_user) != 0)
            ADD_FAILURE() << "Can't become root again";
    }

private:
    /* Of the kernel's overflow user, which owns nothing */
    static constexpr uid_t Nobody = 65534;

    uid_t _user = geteuid();
};

struct ServedFileTest: ::testing::Test {
    ServedFileTest() {
        fs::create_directories(outer.file("site/sub/deep"));
        fs::create_directories(outer.file("site/page"));
        fs::create_directories(outer.file("site/empty"));
        fs::create_directories(outer.file("site2"));
        outer.write("secret.txt", "secret");
        outer.write("site2/secret.txt", "secret");
        outer.write("site/a.txt", "content of a");
        outer.write("site/a b\\\xc3\xbc.txt", "odd name");
        outer.write("site/sub/b.txt", "b");
        outer.write("site/page/index.html", "<p>page");
        root = *canonicalFolder(outer.file("site"), problem);
    }

    Result find(const std::string& path) const { return findServedFile(root, path).result; }

    std::string content(const std::string& path) const {
        const FileLookup found = findServedFile(root, path);
        if(!found.file)
            return "none";
        std::string out(std::size_t(found.file->size()), '\0');
        out.resize(found.file->read(0, out.data(), out.size()));
        return out;
    }

    void link(const std::string& name, const std::string& target) const {
        fs::create_symlink(target, root + "/" + name);
    }

    Testing::TemporaryFolder outer;
    std::string problem, root;
};

TEST_F(ServedFileTest, FilesAreFound) {
    EXPECT_EQ(content("/a.txt"), "content of a");
    EXPECT_EQ(content("/sub/b.txt"), "b");
    EXPECT_EQ(content("/a b\\\xc3\xbc.txt"), "odd name");
    EXPECT_EQ(findServedFile(root, "/sub/b.txt").name, "b.txt");
}

TEST_F(ServedFileTest, SlashesAndDotsInBetweenDoNotMatter) {
    EXPECT_EQ(content("//a.txt"), "content of a");
    EXPECT_EQ(content("/./sub//./b.txt"), "b");
}

TEST_F(ServedFileTest, WhatIsNotThereIsNotFound) {
    for(const std::string& path: {"/nothing"s, "/a.txt/"s, "/a.txt/b"s, "/nothing/a.txt"s, ""s,
            "a.txt"s, "/A.TXT"s, "/a.txt\0"s, "/a.txt\0.png"s, "/"s + std::string(300, 'a'),
            "/"s + std::string(10'000, '/') + "a"})
        EXPECT_EQ(find(path), Result::NotFound) << path;
}

TEST_F(ServedFileTest, NothingAboveIsFound) {
    for(const char* const path: {"/..", "/../", "/../secret.txt", "/sub/../../secret.txt",
            "/../site2/secret.txt", "/../site/a.txt", "/./../secret.txt",
            "/sub/deep/../../../secret.txt", "//../secret.txt", "/..//secret.txt", "/sub/.."})
        EXPECT_EQ(find(path), Result::NotFound) << path;
}

TEST_F(ServedFileTest, NamesWithDotsAreNames) {
    outer.write("site/a..", "x");
    outer.write("site/b..c", "y");
    EXPECT_EQ(content("/a.."), "x");
    EXPECT_EQ(content("/b..c"), "y");
}

TEST_F(ServedFileTest, LinksInsideAreFollowed) {
    link("file", "a.txt");
    link("absolute", root + "/a.txt");
    link("folder", "sub");
    link("sub/up", "../a.txt");
    for(const char* const path: {"/file", "/absolute", "/sub/up", "/folder/up"})
        EXPECT_EQ(content(path), "content of a") << path;
    EXPECT_EQ(content("/folder/b.txt"), "b");
}

TEST_F(ServedFileTest, LinksOutsideAreNotFollowed) {
    link("out", "../secret.txt");
    link("absolute", outer.file("secret.txt"));
    link("folder", "..");
    link("neighbour", "../site2");
    link("chain", "out");
    link("system", "/etc/hostname");
    for(const char* const path: {"/out", "/absolute", "/folder", "/folder/", "/folder/secret.txt",
            "/neighbour/secret.txt", "/chain", "/system"})
        EXPECT_EQ(find(path), Result::NotFound) << path;
    /* Its real path lies inside again, wherever the links have led */
    EXPECT_EQ(content("/folder/site/a.txt"), "content of a");
}

TEST_F(ServedFileTest, BrokenLinksAreNotFound) {
    link("dangling", "nothing");
    link("loop", "loop");
    EXPECT_EQ(find("/dangling"), Result::NotFound);
    EXPECT_EQ(find("/loop"), Result::NotFound);
}

TEST_F(ServedFileTest, HiddenFilesAreNotFound) {
    fs::create_directories(root + "/.git");
    outer.write("site/.game.json.journal", "journal");
    outer.write("site/sub/.hidden", "hidden");
    outer.write("site/...", "dots");
    outer.write("site/.git/config", "config");
    outer.write("site/.git/index.html", "<p>git");
    link("config", ".git/config");
    link("git", ".git");
    link(".shown", "a.txt");
    for(const char* const path: {"/.game.json.journal", "/sub/.hidden", "/...", "/.git", "/.git/",
            "/.git/config", "/./.git/config", "/sub//.hidden", "/config", "/git", "/git/",
            "/git/config", "/.shown"})
        EXPECT_EQ(find(path), Result::NotFound) << path;
    EXPECT_EQ(content("/./a.txt"), "content of a");
}

TEST_F(ServedFileTest, FolderMayLieInAHiddenOne) {
    fs::create_directories(outer.file(".hidden/site"));
    outer.write(".hidden/site/a.txt", "a");
    const std::string folder = *canonicalFolder(outer.file(".hidden/site"), problem);
    EXPECT_EQ(findServedFile(folder, "/a.txt").result, Result::File);
}

TEST_F(ServedFileTest, FoldersStandForTheirIndex) {
    EXPECT_EQ(content("/page/"), "<p>page");
    EXPECT_EQ(findServedFile(root, "/page/").name, "index.html");
    EXPECT_EQ(find("/page"), Result::FolderWithoutSlash);
    outer.write("site/index.html", "<p>start");
    EXPECT_EQ(content("/"), "<p>start");
}

TEST_F(ServedFileTest, FoldersWithoutIndexAreNotListed) {
    for(const char* const path: {"/", "/empty", "/empty/", "/sub", "/sub/"})
        EXPECT_EQ(find(path), Result::NotFound) << path;
}

TEST_F(ServedFileTest, IndexIsNotTakenFromElsewhere) {
    fs::create_directories(root + "/sub/index.html");
    outer.write("site/sub/index.html/index.html", "x");
    link("empty/index.html", "../../secret.txt");
    for(const char* const path: {"/sub", "/sub/", "/empty", "/empty/"})
        EXPECT_EQ(find(path), Result::NotFound) << path;
}

/* Opening a pipe waits for somebody to write into it */
TEST_F(ServedFileTest, PipesAndDevicesAreNotOpened) {
    ASSERT_EQ(mkfifo((root + "/pipe").c_str(), 0600), 0);
    link("zero", "/dev/zero");
    EXPECT_EQ(find("/pipe"), Result::NotFound);
    EXPECT_EQ(find("/zero"), Result::NotFound);
}

TEST_F(ServedFileTest, UnreadableFileIsForbidden) {
    ASSERT_EQ(chmod(outer.path().c_str(), 0755), 0);
    ASSERT_EQ(chmod((root + "/a.txt").c_str(), 0), 0);
    const OrdinaryUser user;
    EXPECT_EQ(find("/a.txt"), Result::Forbidden);
    EXPECT_EQ(find("/sub/b.txt"), Result::File);
}

TEST_F(ServedFileTest, OutOfDescriptorsIsNotMissing) {
    if(Testing::IsSanitized)
        GTEST_SKIP() << "The sanitizer needs descriptors itself";
    const std::string folder = root;
    Result existing, missing;
    {
        const FewDescriptors limit;
        existing = findServedFile(folder, "/a.txt").result;
        missing = findServedFile(folder, "/nothing").result;
    }
    EXPECT_EQ(existing, Result::Failed);
    EXPECT_EQ(missing, Result::NotFound);
}

TEST_F(ServedFileTest, ReadsPartsUpToTheEnd) {
    const FileLookup found = findServedFile(root, "/a.txt");
    ASSERT_TRUE(found.file);
    EXPECT_EQ(found.file->size(), 12u);
    std::array<char, 20> out;
    EXPECT_EQ(found.file->read(8, out.data(), 2), 2u);
    EXPECT_EQ(std::string(out.data(), 2), "of");
    EXPECT_EQ(found.file->read(11, out.data(), 20), 1u);
    EXPECT_EQ(found.file->read(12, out.data(), 20), 0u);
}

TEST_F(ServedFileTest, OpenFileStaysWhenItsNameGoes) {
    const FileLookup found = findServedFile(root, "/a.txt");
    ASSERT_TRUE(found.file);
    fs::remove(root + "/a.txt");
    std::array<char, 20> out;
    EXPECT_EQ(found.file->read(0, out.data(), out.size()), 12u);
}

TEST_F(ServedFileTest, NoDescriptorIsLeftOpen) {
    const auto count = [] {
        return std::distance(fs::directory_iterator{"/proc/self/fd"}, fs::directory_iterator{});
    };
    const auto before = count();
    for(const char* const path:
        {"/a.txt", "/page/", "/page", "/sub/", "/nothing", "/../secret.txt"})
        find(path);
    EXPECT_EQ(count(), before);
}

TEST_F(ServedFileTest, FolderIsWithoutLinks) {
    fs::create_directory_symlink(root, outer.file("link"));
    EXPECT_EQ(canonicalFolder(outer.file("link/./sub/.."), problem), root);
    EXPECT_EQ(problem, "");
}

TEST_F(ServedFileTest, FolderHasToBeOne) {
    EXPECT_FALSE(canonicalFolder(outer.file("nothing"), problem));
    EXPECT_EQ(problem, "No such file or directory");
    EXPECT_FALSE(canonicalFolder(outer.file("secret.txt"), problem));
    EXPECT_EQ(problem, "Not a directory");
}

TEST_F(ServedFileTest, RootOfTheSystemIsAFolderToo) {
    const FileLookup found = findServedFile("/", root + "/a.txt");
    EXPECT_EQ(found.result, Result::File);
}

}}
