#include "editor/FeedReader.h"

#include <atomic>
#include <chrono>
#include <fcntl.h>
#include <mutex>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <Corrade/Utility/Debug.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "QuillmereEditor/Tools/Log.h"
#include "testing/TemporaryFolder.h"

using namespace Corrade;

namespace QuillmereEngine { namespace {

using ::testing::ElementsAre;

struct FeedReaderTest: ::testing::Test {
    FeedReaderTest() {
        setLogCallback(
            [](const char* const line, void* const self) {
                auto& fixture = *static_cast<FeedReaderTest*>(self);
                const std::lock_guard<std::mutex> lock{fixture.mutex};
                fixture.lines.push_back(line + 25);
            },
            this);
    }

    ~FeedReaderTest() override { setLogCallback(nullptr, nullptr); }

    void waitForLines(const std::size_t count) {
        for(;;) {
            {
                const std::lock_guard<std::mutex> lock{mutex};
                if(lines.size() >= count)
                    return;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds{1});
        }
    }

    static void waitUntilFinished(FeedReader& reader) {
        while(!reader.progress().isFinished) {
            reader.waitForNeedOrEnd();
            reader.frameDrawn();
        }
    }

    std::string refusal(const std::string& path) {
        std::ostringstream out;
        Utility::Error redirectError{&out};
        EXPECT_FALSE(FeedSource::open(path));
        return out.str();
    }

    Testing::TemporaryFolder folder;
    std::mutex mutex;
    std::vector<std::string> lines;
    std::atomic<bool> hasChanged{false};
};

TEST_F(FeedReaderTest, RegularFileIsReadToItsEnd) {
    std::optional<FeedSource> source = FeedSource::open(
        folder.write("a.log", "warn x\r\nerror\n\ny"));
    ASSERT_TRUE(source);
    EXPECT_TRUE(source->isRegularFile());
    {
        FeedReader reader{std::move(*source), [this] { hasChanged = true; }};
        waitUntilFinished(reader);
        const FeedProgress progress = reader.progress();
        EXPECT_EQ(progress.name, "a.log");
        EXPECT_EQ(progress.bytes, 16u);
        EXPECT_EQ(progress.size, 16u);
        EXPECT_TRUE(progress.isFinished);
    }
    EXPECT_TRUE(hasChanged);
    EXPECT_THAT(lines, ElementsAre("[warn] warn x", "[error] error", "[info] ", "[info] y"));
}

TEST_F(FeedReaderTest, PipeIsFollowedUntilItsWriterIsDone) {
    const std::string path = folder.file("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::optional<FeedSource> source = FeedSource::open(path);
    ASSERT_TRUE(source);
    EXPECT_FALSE(source->isRegularFile());
    FeedReader reader{std::move(*source), [] {}};

    const int writer = open(path.c_str(), O_WRONLY);
    ASSERT_EQ(write(writer, "one\ntw", 6), 6);
    waitForLines(1);
    EXPECT_FALSE(reader.progress().isFinished);
    ASSERT_EQ(write(writer, "o\n", 2), 2);
    waitForLines(2);
    close(writer);
    waitUntilFinished(reader);
    EXPECT_THAT(lines, ElementsAre("[info] one", "[info] two"));
}

TEST_F(FeedReaderTest, LastOfManyLinesWaitsForAFrameWithTheOthers) {
    std::optional<FeedSource> source = FeedSource::open(folder.write("a.log", "1\n2\n3\n"));
    ASSERT_TRUE(source);
    FeedReader reader{std::move(*source), [] {}, std::chrono::minutes{10}};
    reader.waitForNeedOrEnd();
    for(int needed = reader.neededFrames(); needed; --needed) {
        EXPECT_EQ(reader.neededFrames(), needed);
        EXPECT_FALSE(reader.progress().isFinished);
        EXPECT_THAT(lines, ElementsAre("[info] 1", "[info] 2"));
        reader.frameDrawn();
    }
    waitUntilFinished(reader);
    EXPECT_THAT(lines, ElementsAre("[info] 1", "[info] 2", "[info] 3"));
}

TEST_F(FeedReaderTest, LastOfManyLinesDoesNotWaitForFramesForEver) {
    std::optional<FeedSource> source = FeedSource::open(folder.write("a.log", "1\n2\n"));
    ASSERT_TRUE(source);
    FeedReader reader{std::move(*source), [] {}, std::chrono::seconds{0}};
    waitForLines(2);
    EXPECT_THAT(lines, ElementsAre("[info] 1", "[info] 2"));
}

TEST_F(FeedReaderTest, SingleLineWaitsForNothing) {
    std::optional<FeedSource> source = FeedSource::open(folder.write("a.log", "1\n"));
    ASSERT_TRUE(source);
    FeedReader reader{std::move(*source), [] {}};
    reader.waitForNeedOrEnd();
    EXPECT_TRUE(reader.progress().isFinished);
    EXPECT_EQ(reader.neededFrames(), 0);
}

TEST_F(FeedReaderTest, StopsWhileItWaitsForAFrame) {
    std::optional<FeedSource> source = FeedSource::open(folder.write("a.log", "1\n2\n"));
    ASSERT_TRUE(source);
    FeedReader reader{std::move(*source), [] {}, std::chrono::minutes{10}};
    reader.waitForNeedOrEnd();
}

TEST_F(FeedReaderTest, StopsWhileItWaitsForAPipe) {
    const std::string path = folder.file("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const int both = open(path.c_str(), O_RDWR);
    {
        FeedReader reader{std::move(*FeedSource::open(path)), [] {}};
    }
    close(both);
    EXPECT_TRUE(lines.empty());
}

TEST_F(FeedReaderTest, MissingFileIsRefused) {
    EXPECT_EQ(refusal(folder.file("no.log")),
        "quillmere-editor: can't read feed " + folder.file("no.log") +
            ": No such file or directory\n");
}

TEST_F(FeedReaderTest, FolderIsRefused) {
    EXPECT_EQ(refusal(folder.path()),
        "quillmere-editor: can't read feed " + folder.path() + ": Is a directory\n");
}

}}
