#include "editor/JournalWriter.h"

#include <algorithm>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "editor/JournalThread.h"

namespace QuillmereEngine { namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using Clock = JournalWriter::Clock;

/* A disk: what was written is lost with the power, what was synced isn't */
struct FakeDisk {
    std::string written, synced;
    std::string openProblem, writeProblem, syncProblem;
    /* How many bytes of a write that fails get through */
    std::size_t room = 0;
    int syncCount = 0;
    bool isRemoved = false;
};

class FakeFile: public JournalFile {
public:
    explicit FakeFile(FakeDisk& disk): _disk(disk) {}

    bool write(
        const std::uint64_t offset, const std::string_view bytes, std::string& problem) override {
        problem = _disk.writeProblem;
        const std::string_view through = problem.empty() ? bytes : bytes.substr(0, _disk.room);
        _disk.written.resize(std::max<std::size_t>(_disk.written.size(), offset + through.size()));
        _disk.written.replace(offset, through.size(), through);
        return problem.empty();
    }

    bool sync(std::string& problem) override {
        ++_disk.syncCount;
        problem = _disk.syncProblem;
        if(problem.empty())
            _disk.synced = _disk.written;
        return problem.empty();
    }

    void remove() override { _disk.isRemoved = true; }

private:
    FakeDisk& _disk;
};

struct JournalWriterTest: ::testing::Test {
    JournalWriter::Opener opener() {
        return [this](std::string& problem) {
            problem = disk.openProblem;
            return problem.empty() ? std::make_unique<FakeFile>(disk) : nullptr;
        };
    }

    void append(const std::string& bytes) { writer.append(bytes, ++changes, now); }

    /* Works as its thread does: not before it's due */
    void moveTo(const Clock::time_point time) {
        now = time;
        writer.work(now);
    }

    FakeDisk disk;
    std::vector<std::string> reports;
    JournalWriter writer{
        [this](const JournalEvent event, const std::string& name, const std::string& problem) {
            reports.push_back(
                name + (event == JournalEvent::Stopped ? " stopped: " + problem : " goes on"));
        }};
    Clock::time_point now{1h};
    std::uint64_t changes = 0;
};

TEST_F(JournalWriterTest, NothingIsDueWithoutOrders) {
    EXPECT_EQ(writer.due(), Clock::time_point::max());
    writer.begin("j", opener(), 0);
    EXPECT_EQ(writer.due(), Clock::time_point::max());
}

TEST_F(JournalWriterTest, ChangeIsSyncedWithinASecond) {
    writer.begin("j", opener(), 0);
    append("one");
    const Clock::time_point edit = now;
    EXPECT_LT(writer.due(), edit + 1s);
    moveTo(writer.due() - 1ns);
    EXPECT_EQ(disk.synced, "");
    EXPECT_EQ(writer.syncedChanges(), 0u);
    moveTo(writer.due());
    EXPECT_EQ(disk.synced, "one");
    EXPECT_EQ(writer.syncedChanges(), 1u);
    EXPECT_EQ(writer.due(), Clock::time_point::max());
}

/* A drag makes sixty changes a second. None of them waits for those after it. */
TEST_F(JournalWriterTest, ManyChangesShareTheSyncOfTheFirst) {
    writer.begin("j", opener(), 0);
    const Clock::time_point start = now;
    std::vector<Clock::time_point> edits;
    while(now < start + 10s) {
        append("x");
        edits.push_back(now);
        moveTo(now + 16ms);
        for(std::size_t i = 0; i != edits.size(); ++i)
            if(now - edits[i] > 1s) {
                ASSERT_GT(writer.syncedChanges(), i);
            }
    }
    EXPECT_GE(disk.syncCount, 18);
    EXPECT_LE(disk.syncCount, 20);
}

TEST_F(JournalWriterTest, FlushDoesNotWaitForTheTime) {
    writer.begin("j", opener(), 0);
    append("one");
    writer.flush(now);
    EXPECT_EQ(disk.synced, "one");
}

TEST_F(JournalWriterTest, WritesBehindWhatIsThere) {
    disk.written = "earlier torn";
    writer.begin("j", opener(), 8);
    append("one");
    append("two");
    writer.flush(now);
    EXPECT_EQ(disk.synced, "earlier onetwo");
}

TEST_F(JournalWriterTest, JournalThatIsRemovedAtOnceNeverGetsToTheDisk) {
    writer.begin("j", opener(), 0);
    append("one");
    writer.remove(now);
    moveTo(now);
    EXPECT_EQ(disk.written, "");
    EXPECT_FALSE(disk.isRemoved);
    EXPECT_EQ(writer.due(), Clock::time_point::max());
}

TEST_F(JournalWriterTest, RemovesWhatIsOnTheDisk) {
    writer.begin("j", opener(), 0);
    append("one");
    writer.flush(now);
    writer.remove(now);
    moveTo(now);
    EXPECT_TRUE(disk.isRemoved);
}

/* It used to stay, as nothing had been written to it yet */
TEST_F(JournalWriterTest, RemovesAnEarlierOneThatNothingWasAppendedTo) {
    writer.begin("j", opener(), 8);
    writer.remove(now);
    moveTo(now);
    EXPECT_TRUE(disk.isRemoved);
}

TEST_F(JournalWriterTest, FullDiskIsReportedOnceAndMissesNothingWhenThereIsRoom) {
    writer.begin("j", opener(), 0);
    append("one");
    writer.flush(now);
    disk.writeProblem = "No space left on device";
    disk.room = 2;
    append("two");
    writer.flush(now);
    append("three");
    moveTo(now + 2s);
    moveTo(now + JournalWriter::RetryDelay);
    EXPECT_THAT(reports, ElementsAre("j stopped: No space left on device"));
    EXPECT_EQ(disk.synced, "one");
    EXPECT_EQ(writer.syncedChanges(), 1u);

    disk.writeProblem.clear();
    moveTo(now + JournalWriter::RetryDelay);
    EXPECT_EQ(disk.synced, "onetwothree");
    EXPECT_EQ(writer.syncedChanges(), 3u);
    EXPECT_THAT(reports, ElementsAre("j stopped: No space left on device", "j goes on"));
}

TEST_F(JournalWriterTest, ChangesAfterAFailureDoNotHurryTheNextAttempt) {
    disk.writeProblem = "Input/output error";
    writer.begin("j", opener(), 0);
    append("one");
    writer.flush(now);
    disk.writeProblem.clear();
    append("two");
    moveTo(now + 1s);
    EXPECT_EQ(disk.synced, "");
    moveTo(now + JournalWriter::RetryDelay);
    EXPECT_EQ(disk.synced, "onetwo");
}

/* The system says once that it couldn't bring something to the disk, and drops it */
TEST_F(JournalWriterTest, AfterAFailedSyncAllIsWrittenAgain) {
    disk.syncProblem = "Input/output error";
    writer.begin("j", opener(), 0);
    append("one");
    writer.flush(now);
    EXPECT_EQ(writer.syncedChanges(), 0u);
    disk.written = "???";
    disk.syncProblem.clear();
    moveTo(now + JournalWriter::RetryDelay);
    EXPECT_EQ(disk.synced, "one");
    EXPECT_THAT(reports, ElementsAre("j stopped: Input/output error", "j goes on"));
}

TEST_F(JournalWriterTest, FileThatCannotBeOpenedIsTriedAgain) {
    disk.openProblem = "It's another editor's";
    writer.begin("j", opener(), 0);
    append("one");
    moveTo(writer.due());
    EXPECT_THAT(reports, ElementsAre("j stopped: It's another editor's"));
    disk.openProblem.clear();
    moveTo(writer.due());
    EXPECT_EQ(disk.synced, "one");
}

TEST_F(JournalWriterTest, TellsWhenSomethingIsDueEarlier) {
    int wakings = 0;
    writer.setWaker([&wakings] { ++wakings; });
    writer.begin("j", opener(), 0);
    EXPECT_EQ(wakings, 0);
    append("one");
    append("two");
    EXPECT_EQ(wakings, 1);
    writer.remove(now);
    EXPECT_EQ(wakings, 2);
}

/* With the real clock, but without a limit of time: it waits until the thread has done it */
TEST_F(JournalWriterTest, ThreadWorksWhenItIsDueAndDoesTheRestAtItsEnd) {
    JournalWriter quick{[](JournalEvent, const std::string&, const std::string&) {}, 1ms};
    {
        const JournalThread thread{quick};
        quick.begin("j", opener(), 0);
        for(std::uint64_t i = 1; i <= 100; ++i) {
            quick.append("x", i, Clock::now());
            while(i % 10 == 0 && quick.syncedChanges() < i)
                std::this_thread::yield();
        }
        quick.append("y", 101, Clock::now());
    }
    EXPECT_EQ(disk.synced, std::string(100, 'x') + "y");
}

}}
