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
    explicit FileSizeLimit(const rlim_t bytes): _handler{std::signal(SIGXFSZ, SIG_IGN)} {
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
    const std::string leftover = file + ".saving-" + std::to_string(getpid()) + "-0";
    folder.write(std::filesystem::path{leftover}.filename().string(), "half");
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
