/* A program that edits a project is killed at random moments, and what it left is recovered. How often
   is said by QUILLMERE_JOURNAL_KILLS, 20 times if it isn't set. */

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include "JournaledProject.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

namespace Fs = std::filesystem;

/* What the program said before it was killed */
struct Reports {
    std::uint64_t left = 0;
    std::uint64_t synced = 0;
    std::size_t count = 0;
};

/* The program with a pipe from its standard output. The log is in there, too. */
class Victim {
public:
    explicit Victim(const std::string& project, const std::uint32_t seed) {
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        const std::string seedText = std::to_string(seed);
        _id = fork();
        if(_id == 0) {
            dup2(ends[1], STDOUT_FILENO);
            close(ends[0]);
            close(ends[1]);
            execl(QUILLMERE_JOURNAL_VICTIM, QUILLMERE_JOURNAL_VICTIM, project.c_str(),
                seedText.c_str(), nullptr);
            _exit(127);
        }
        close(ends[1]);
        _output = ends[0];
    }

    ~Victim() { close(_output); }

    Victim(const Victim&) = delete;
    Victim& operator=(const Victim&) = delete;

    /** @brief Kill it some time after its first words, and give what it said until then */
    Reports killAfter(const std::chrono::microseconds time) {
        std::string said;
        char buffer[4096];
        ssize_t size = read(_output, buffer, sizeof(buffer));
        if(size > 0)
            said.append(buffer, std::size_t(size));
        std::thread killer{[this, time] {
            std::this_thread::sleep_for(time);
            kill(_id, SIGKILL);
        }};
        while((size = read(_output, buffer, sizeof(buffer))) > 0)
            said.append(buffer, std::size_t(size));
        killer.join();
        int status = 0;
        waitpid(_id, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << said;
        return parsed(said);
    }

private:
    static Reports parsed(const std::string& said) {
        Reports out;
        std::istringstream lines{said};
        for(std::string line; std::getline(lines, line);) {
            std::uint64_t number = 0;
            if(std::sscanf(line.c_str(), "E %lu", &number) == 1) {
                out.left = number;
                ++out.count;
            } else if(std::sscanf(line.c_str(), "S %lu", &number) == 1) {
                out.synced = number;
            }
        }
        return out;
    }

    pid_t _id = 0;
    int _output = -1;
};

struct JournalCrashTest: ::testing::Test {
    void recover(JournaledProject& opened, const std::string& journal) {
        const FoundJournal found{journal, opened.loaded};
        ASSERT_TRUE(
            found.finding() == JournalFinding::None || found.finding() == JournalFinding::Changes)
            << "finding " << int(found.finding()) << " " << found.problem();
        if(found.finding() == JournalFinding::None)
            return;
        opened.changes.beginGroup();
        EXPECT_TRUE(found.apply(opened.file, opened.changes).isComplete);
        opened.changes.commit();
    }

    /* All states that the program went through, the i-th after i writings, and one edit further than
       it said. Begins with copies of the files with which it began. */
    std::vector<std::string> statesOf(const std::uint32_t seed, const Reports& reports) {
        JournaledProject again{before.file("level.json")};
        std::vector<std::string> out{stateOf(again.file)};
        again.reached = [&] { out.push_back(stateOf(again.file)); };
        recover(again, before.file(".level.json.journal"));
        RandomEdits edits{again.file, again.changes, seed};
        for(std::size_t i = 0; i != reports.count; ++i)
            if(edits.step())
                again.session->save();
        return out;
    }

    void copyFiles() {
        for(const char* const name: {"level.json", ".level.json.journal"}) {
            Fs::remove(before.file(name));
            if(Fs::exists(folder.file(name)))
                Fs::copy_file(folder.file(name), before.file(name));
        }
    }

    Testing::TemporaryFolder folder, before;
    std::string project = folder.write("level.json", R"({"list": [1, 2], "plain": {"a": 0.1}})");
};

std::size_t killCount() {
    const char* const text = std::getenv("QUILLMERE_JOURNAL_KILLS");
    return text ? std::strtoul(text, nullptr, 10) : 20;
}

TEST_F(JournalCrashTest, KilledProgramLeavesAStateThatItHadAndNoneBeforeTheLastSync) {
    std::mt19937 random{1};
    std::size_t syncs = 0, recoveries = 0, saves = 0, edits = 0, lost = 0;
    for(std::size_t i = 0; i != killCount(); ++i) {
        SCOPED_TRACE(i);
        copyFiles();
        const auto seed = std::uint32_t(random());
        Victim victim{project, seed};
        const Reports reports = victim.killAfter(std::chrono::microseconds{random() % 80000});
        ASSERT_GT(reports.count, 0u);

        JournaledProject left{project};
        ASSERT_NO_FATAL_FAILURE(recover(left, journalPath(project)));
        const std::string state = stateOf(left.file);
        const std::vector<std::string> states = statesOf(seed, reports);
        ASSERT_FALSE(HasFatalFailure());
        ASSERT_LE(reports.synced, reports.left + states.size());
        std::size_t found = states.size() - 1;
        while(found > reports.synced && states[found] != state)
            --found;
        ASSERT_EQ(states[found], state) << "synced " << reports.synced << " of " << reports.left;

        edits += reports.count;
        syncs += reports.synced != 0;
        recoveries += left.stateNumber() != 0;
        lost += states.size() - 1 - found;
        saves += Testing::readFile(project) != Testing::readFile(before.file("level.json"));
    }
    std::printf("%zu kills, %zu edits, %zu after a sync, %zu with changes to recover, %zu after a "
                "save, %zu writings lost\n",
        killCount(), edits, syncs, recoveries, saves, lost);
    /* Or nothing was tested */
    EXPECT_GT(syncs, 0u);
    EXPECT_GT(recoveries, 0u);
    EXPECT_GT(saves, 0u);
}

}}
