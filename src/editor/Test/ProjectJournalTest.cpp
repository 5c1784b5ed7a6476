#include "editor/ProjectJournal.h"

#include <filesystem>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "EnvironmentVariable.h"
#include "JournaledProject.h"
#include "QuillmereEditor/Tools/Log.h"
#include "host/RapidJsonUtils.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/* An editor from its start to its end, which is a crash if nothing else is said */
struct Editing {
    explicit Editing(const std::string& path): project{path} {
        journal.emplace(project.file, project.changes, *project.session, project.loaded);
    }

    void set(const char* const path, const int value) {
        project.changes.pushChange(path, rapidjson::Value{value}, false);
    }

    std::string document() { return RapidJsonUtils::toJson(*project.file.document); }

    JournaledProject project;
    std::optional<ProjectJournal> journal;
};

struct ProjectJournalTest: ::testing::Test {
    ProjectJournalTest() {
        setLogCallback(
            [](const char* const line, void* const out) {
                static_cast<std::vector<std::string>*>(out)->push_back(line + 25);
            },
            &lines);
    }

    ~ProjectJournalTest() override { setLogCallback(nullptr, nullptr); }

    void crashAfterAChange() {
        Editing editor{path};
        editor.set("/a", 2);
    }

    bool hasJournal() const { return std::filesystem::exists(journal); }

    Testing::TemporaryFolder folder;
    const EnvironmentVariable data{"XDG_DATA_HOME", folder.file("data")};
    std::string path = folder.write("level.json", "{\"a\": 1}");
    std::string journal = journalPath(path);
    std::vector<std::string> lines;
};

TEST_F(ProjectJournalTest, NothingIsAskedWithoutAJournal) {
    const Editing editor{path};
    EXPECT_FALSE(editor.journal->isAsking());
    EXPECT_THAT(lines, IsEmpty());
}

TEST_F(ProjectJournalTest, RecoveredChangesCountAsUnsavedAndSurviveTheNextCrash) {
    crashAfterAChange();
    {
        Editing editor{path};
        ASSERT_TRUE(editor.journal->isAsking());
        EXPECT_EQ(editor.document(), "{\"a\":1}");
        editor.journal->answer(RecoveryAnswer::Recover);
        EXPECT_EQ(editor.document(), "{\"a\":2}");
        EXPECT_TRUE(editor.project.session->hasUnsavedChanges());
        EXPECT_THAT(lines, ElementsAre("[info] Recovered 1 change of " + path));
        editor.set("/b", 3);
    }
    Editing editor{path};
    editor.journal->answer(RecoveryAnswer::Recover);
    EXPECT_EQ(editor.document(), "{\"a\":2,\"b\":3}");
}

/* It used to stay, or to be followed by one of another state */
TEST_F(ProjectJournalTest, JournalGoesWhenWhatWasRecoveredIsUndone) {
    crashAfterAChange();
    {
        Editing editor{path};
        editor.journal->answer(RecoveryAnswer::Recover);
        editor.project.session->undo();
        editor.journal->frameDrawn();
        editor.journal.reset();
        EXPECT_FALSE(hasJournal());
    }
    crashAfterAChange();
    EXPECT_TRUE(Editing{path}.journal->isAsking());
}

TEST_F(ProjectJournalTest, DiscardedOneIsDeletedAndANewOneBegins) {
    crashAfterAChange();
    {
        Editing editor{path};
        editor.journal->answer(RecoveryAnswer::Discard);
        EXPECT_FALSE(hasJournal());
        editor.set("/a", 7);
    }
    Editing editor{path};
    editor.journal->answer(RecoveryAnswer::Recover);
    EXPECT_EQ(editor.document(), "{\"a\":7}");
}

TEST_F(ProjectJournalTest, KeptOneIsOfferedAgainAndNotWrittenOver) {
    crashAfterAChange();
    {
        Editing editor{path};
        editor.journal->answer(RecoveryAnswer::Keep);
        editor.set("/a", 9);
        editor.journal.reset();
        EXPECT_THAT(lines,
            ElementsAre("[info] The journal " + journal + " is kept",
                "[error] The journal " + journal +
                    " stopped: There is one from earlier. Until it goes on, changes that aren't "
                    "saved don't survive a crash"));
    }
    Editing editor{path};
    editor.journal->answer(RecoveryAnswer::Recover);
    EXPECT_EQ(editor.document(), "{\"a\":2}");
}

TEST_F(ProjectJournalTest, UnansweredOneIsOfferedAgain) {
    crashAfterAChange();
    { Editing editor{path}; }
    EXPECT_TRUE(Editing{path}.journal->isAsking());
}

TEST_F(ProjectJournalTest, ChangedDocumentIsNotRecoveredInto) {
    crashAfterAChange();
    Editing editor{path};
    editor.set("/a", 5);
    editor.journal->answer(RecoveryAnswer::Recover);
    EXPECT_EQ(editor.document(), "{\"a\":5}");
    EXPECT_TRUE(hasJournal());
    EXPECT_THAT(lines,
        ElementsAre("[error] The journal " + journal + " is kept: " + path +
                " was changed before its changes could be recovered",
            "[warn] Changes were made too early for a journal, it begins with the next save"));
}

TEST_F(ProjectJournalTest, OneOfAnotherStateIsRenamed) {
    crashAfterAChange();
    folder.write("level.json", "{\"a\": 100}");
    EXPECT_FALSE(Editing{path}.journal->isAsking());
    EXPECT_THAT(lines,
        ElementsAre("[warn] The journal " + journal + " continues another state of " + path +
            " than there is now, it was renamed to " + journal + ".1"));
    EXPECT_FALSE(hasJournal());
    EXPECT_TRUE(std::filesystem::exists(journal + ".1"));
}

TEST_F(ProjectJournalTest, OneOfAnotherVersionIsLeftAlone) {
    crashAfterAChange();
    std::string bytes = Testing::readFile(journal);
    bytes[8] = 7;
    folder.write(".level.json.journal", bytes);
    {
        Editing editor{path};
        EXPECT_FALSE(editor.journal->isAsking());
        editor.set("/a", 4);
    }
    EXPECT_EQ(Testing::readFile(journal), bytes);
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(
        lines[0], "[warn] The journal " + journal + " is left alone, its format has the version 7");
}

TEST_F(ProjectJournalTest, WhatIsNoJournalIsRenamed) {
    folder.write(".level.json.journal", "somebody's notes");
    EXPECT_FALSE(Editing{path}.journal->isAsking());
    EXPECT_THAT(lines,
        ElementsAre("[warn] The journal " + journal + " can't be read, it was renamed to " +
            journal + ".1"));
    EXPECT_EQ(Testing::readFile(journal + ".1"), "somebody's notes");
}

TEST_F(ProjectJournalTest, SecondEditorIsTold) {
    Editing first{path};
    first.set("/a", 2);
    while(!std::filesystem::exists(journal) || first.journal->writer().syncedChanges() == 0)
        std::this_thread::yield();
    const Editing second{path};
    EXPECT_FALSE(second.journal->isAsking());
    EXPECT_THAT(lines,
        ElementsAre("[warn] The journal " + journal +
            " is another editor's, which has the same project open. Of this one no change that "
            "isn't saved survives a crash"));
}

TEST_F(ProjectJournalTest, HeadlessEditorSaysThatItLeavesOneAlone) {
    reportIdleJournal(path);
    EXPECT_THAT(lines, IsEmpty());
    crashAfterAChange();
    const std::string bytes = Testing::readFile(journal);
    reportIdleJournal(path);
    EXPECT_THAT(lines,
        ElementsAre(
            "[warn] Headless, so the journal " + journal + " is neither recovered nor deleted"));
    EXPECT_EQ(Testing::readFile(journal), bytes);
}

/* A project without a file has its journal in the application's folder until it gets one */
struct UnnamedJournalTest: ProjectJournalTest {
    struct Unnamed {
        Unnamed() = default;

        std::string document() { return RapidJsonUtils::toJson(*file.document); }

        void set(const char* const path, const int value) {
            changes.pushChange(path, rapidjson::Value{value}, false);
        }

        ProjectFile file;
        ChangeManager changes{file};
        ProjectSession session{file, changes, ""};
        ProjectJournal journal{file, changes, session, {}};
    };

    std::string unnamed = folder.file("data/QuillmereEngine/unnamed.journal");
};

TEST_F(UnnamedJournalTest, IsRecovered) {
    {
        Unnamed editor;
        editor.set("/a", 2);
    }
    EXPECT_TRUE(std::filesystem::exists(unnamed));
    Unnamed editor;
    ASSERT_TRUE(editor.journal.isAsking());
    editor.journal.answer(RecoveryAnswer::Recover);
    EXPECT_EQ(editor.document(), "{\"a\":2}");
}

/* The editor ends when the file is there and the journal still is, too */
TEST_F(UnnamedJournalTest, IsNotOfferedWhenTheUsersFileHasAllOfIt) {
    const std::string chosen = folder.file("chosen.json");
    std::filesystem::create_directories(folder.file("data/QuillmereEngine"));
    {
        JournalWriter writer{[](JournalEvent, const std::string&, const std::string&) {}};
        ProjectFile file;
        ChangeManager changes{file};
        Journal announced{file, changes, writer};
        announced.start(unnamed, {});
        changes.pushChange("/a", rapidjson::Value{2}, false);
        announced.aboutToSave(chosen, RapidJsonUtils::toPrettyJson(*file.document));
        file.save(chosen);
    }
    std::filesystem::copy_file(unnamed, folder.file("copy"));
    EXPECT_FALSE(Unnamed().journal.isAsking());
    EXPECT_FALSE(std::filesystem::exists(unnamed));
    std::filesystem::copy_file(folder.file("copy"), unnamed);
    std::filesystem::remove(chosen);
    EXPECT_TRUE(Unnamed().journal.isAsking());
}

}}
