#include "host/replaceFile.h"

#include <csignal>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <Corrade/Containers/StringStl.h>
#include <gtest/gtest.h>

#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace Test {

namespace {

using Testing::readFile;

class ReplaceFileTest: public testing::Test {
protected:
    std::size_t fileCount() const {
        return std::size_t(std::distance(std::filesystem::directory_iterator{folder.path()}, {}));
    }

    static mode_t modeOf(const std::string& file) {
        struct stat status;
        return stat(file.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
    }

    Testing::TemporaryFolder folder;
    std::string error;
};

/* A disk that's full after some bytes, while it lives */
class FileSizeLimit {
public:
    explicit FileSizeLimit(const rlim_t bytes, void (*const reached)(int) = SIG_IGN):
        _handler{std::signal(SIGXFSZ, reached)} {
        getrlimit(RLIMIT_FSIZE, &_former);
        const rlimit limit{bytes, _former.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &_former);
        std::signal(SIGXFSZ, _handler);
    }

private:
    void (*_handler)(int);
    rlimit _former;
};

}

TEST_F(ReplaceFileTest, CreatesWithTheModeOfAnyNewFile) {
    const std::string file = folder.file("new");
    const mode_t mask = umask(027);
    EXPECT_TRUE(replaceFile(file, "content", error)) << error;
    umask(mask);
    EXPECT_EQ(readFile(file), "content");
    EXPECT_EQ(modeOf(file), mode_t(0640));
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(ReplaceFileTest, KeepsTheMode) {
    const std::string file = folder.write("old", "a longer content");
    chmod(file.c_str(), 0604);
    EXPECT_TRUE(replaceFile(file, "new", error)) << error;
    EXPECT_EQ(readFile(file), "new");
    EXPECT_EQ(modeOf(file), mode_t(0604));
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(ReplaceFileTest, WritesMoreThanOneBlock) {
    std::string content(5000000, 'x');
    content[1234567] = '\0';
    EXPECT_TRUE(replaceFile(folder.file("large"), content, error)) << error;
    EXPECT_EQ(readFile(folder.file("large")), content);
}

TEST_F(ReplaceFileTest, FollowsLinks) {
    const std::string file = folder.write("file", "old");
    const std::string link = folder.file("link");
    ASSERT_EQ(symlink("file", link.c_str()), 0);
    EXPECT_TRUE(replaceFile(link, "new", error)) << error;
    EXPECT_EQ(readFile(file), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(link));
}

TEST_F(ReplaceFileTest, FollowsLinksToWhereNothingIs) {
    std::filesystem::create_directory(folder.file("folder"));
    ASSERT_EQ(symlink("folder/second", folder.file("first").c_str()), 0);
    ASSERT_EQ(symlink(folder.file("file").c_str(), folder.file("folder/second").c_str()), 0);
    EXPECT_TRUE(replaceFile(folder.file("first"), "new", error)) << error;
    EXPECT_EQ(readFile(folder.file("file")), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.file("first")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.file("folder/second")));

    ASSERT_EQ(symlink("none/file", folder.file("astray").c_str()), 0);
    EXPECT_FALSE(replaceFile(folder.file("astray"), "new", error));
    EXPECT_EQ(error, "No such file or directory");
    ASSERT_EQ(symlink("circle", folder.file("circle").c_str()), 0);
    EXPECT_FALSE(replaceFile(folder.file("circle"), "new", error));
    EXPECT_EQ(error, "Too many levels of symbolic links");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.file("circle")));
}

TEST_F(ReplaceFileTest, NameMayBeAsLongAsNamesCanBe) {
    const std::string file = folder.file(std::string(255, 'x'));
    EXPECT_TRUE(replaceFile(file, "first", error)) << error;
    EXPECT_TRUE(replaceFile(file, "second", error)) << error;
    EXPECT_EQ(readFile(file), "second");
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(ReplaceFileTest, PrivateFileIsPrivateWhileWritten) {
    const std::string file = folder.write("file", "old");
    chmod(file.c_str(), 0600);
    /* The only moment to look: in the middle of writing, when the limit is reached */
    static std::string temporary;
    static mode_t mode;
    temporary = folder.file(".saving-" + std::to_string(getpid()) + "-0");
    mode = 0;
    {
        const FileSizeLimit limit{4096, [](int) { mode = modeOf(temporary); }};
        EXPECT_FALSE(replaceFile(file, std::string(100000, 'x'), error));
    }
    EXPECT_EQ(mode, mode_t(0600));
}

TEST_F(ReplaceFileTest, FullDiskLeavesTheOldFile) {
    const std::string file = folder.write("file", "old");
    const std::string content(100000, 'x');
    {
        const FileSizeLimit limit{4096};
        EXPECT_FALSE(replaceFile(file, content, error));
    }
    EXPECT_EQ(error, "File too large");
    EXPECT_EQ(readFile(file), "old");
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(ReplaceFileTest, FailuresSayWhy) {
    std::filesystem::create_directory(folder.file("folder"));
    EXPECT_FALSE(replaceFile(folder.file("folder"), "", error));
    EXPECT_EQ(error, "Not a regular file");
    EXPECT_FALSE(replaceFile(folder.file("none/file"), "", error));
    EXPECT_EQ(error, "No such file or directory");
    EXPECT_FALSE(replaceFile("/dev/full", "", error));
    EXPECT_EQ(error, "Not a regular file");
    EXPECT_FALSE(replaceFile("", "", error));
    EXPECT_FALSE(std::filesystem::exists(".saving-" + std::to_string(getpid()) + "-0"));
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(ReplaceFileTest, LeftoversOfACrashAreInNobodysWay) {
    const std::string file = folder.write("file", "old");
    const std::string leftover = folder.write(".saving-" + std::to_string(getpid()) + "-0", "half");
    EXPECT_TRUE(replaceFile(file, "new", error)) << error;
    EXPECT_EQ(readFile(file), "new");
    EXPECT_EQ(readFile(leftover), "half");
}

TEST_F(ReplaceFileTest, ReadingFailsWithAReason) {
    std::string content;
    EXPECT_FALSE(readWholeFile(folder.file("none"), content, error));
    EXPECT_EQ(error, "No such file or directory");
    EXPECT_FALSE(readWholeFile(folder.path(), content, error));
    EXPECT_EQ(error, "Is a directory");
    EXPECT_TRUE(readWholeFile(folder.write("file", std::string("a\0b", 3)), content, error));
    EXPECT_EQ(content, std::string("a\0b", 3));
}

}}
