#include "editor/Journal.h"

#include <filesystem>
#include <memory>
#include <random>
#include <string>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>

#include "JournaledProject.h"
#include "editor/JournalRecovery.h"
#include "host/RapidJsonUtils.h"
#include "testing/TemporaryFolder.h"
#include "testing/sanitizer.h"

using namespace Corrade;

namespace QuillmereEngine { namespace {

void ignore(JournalEvent, const std::string&, const std::string&) {}

/* An editor with a journal, without its thread. It crashes when it's destroyed. */
struct Editing {
    explicit Editing(const std::string& path): project{path} {
        journal.start(journalPath(path), project.loaded);
        project.session->setJournal(&journal);
    }

    void set(const char* const path, const int value) {
        project.changes.pushChange(path, rapidjson::Value{value}, false);
    }

    void sync() { writer.flush(JournalWriter::Clock::now()); }

    JournaledProject project;
    JournalWriter writer{ignore};
    Journal journal{project.file, project.changes, writer};
};

struct JournalTest: ::testing::Test {
    bool hasJournal() const { return std::filesystem::exists(journal); }

    JournalFinding finding() {
        return FoundJournal{journal, JournaledProject{path}.loaded}.finding();
    }

    /* What the next editor has after it recovered */
    std::string recovered() {
        JournaledProject next{path};
        const FoundJournal found{journal, next.loaded};
        if(found.finding() == JournalFinding::Changes) {
            next.changes.beginGroup();
            EXPECT_TRUE(found.apply(next.file, next.changes).isComplete);
            next.changes.commit();
        }
        return RapidJsonUtils::toJson(*next.file.document);
    }

    Testing::TemporaryFolder folder;
    std::string path = folder.write("level.json", "{\"a\": 1}");
    std::string journal = folder.file(".level.json.journal");
};

TEST_F(JournalTest, LiesBesideTheFileAndNotBesideALinkToIt) {
    std::filesystem::create_symlink(path, folder.file("link.json"));
    EXPECT_EQ(journalPath(path), journal);
    EXPECT_EQ(journalPath(folder.file("link.json")), journal);
}

TEST_F(JournalTest, ComesWithTheFirstChange) {
    Editing editor{path};
    editor.sync();
    EXPECT_FALSE(hasJournal());
    editor.set("/a", 2);
    editor.sync();
    EXPECT_TRUE(hasJournal());
    EXPECT_EQ(editor.writer.syncedChanges(), 1u);
}

TEST_F(JournalTest, HoldsWhatWasUndoneAndRedone) {
    {
        Editing editor{path};
        editor.set("/a", 2);
        editor.set("/b", 3);
        editor.project.changes.undoLast();
        editor.project.changes.undoLast();
        editor.project.changes.redoLastUndo();
        editor.sync();
    }
    EXPECT_EQ(recovered(), "{\"a\":2}");
}

TEST_F(JournalTest, HoldsAnOpenGroup) {
    {
        Editing editor{path};
        editor.project.changes.beginGroup();
        editor.set("/a", 2);
        editor.set("/b", 3);
        editor.sync();
    }
    EXPECT_EQ(recovered(), "{\"a\":2,\"b\":3}");
}

TEST_F(JournalTest, GoesWithASaveAndTheNextOneContinuesThatFile) {
    {
        Editing editor{path};
        editor.set("/a", 2);
        editor.sync();
        EXPECT_TRUE(editor.project.session->save());
        editor.sync();
        EXPECT_FALSE(hasJournal());
        editor.set("/b", 3);
        editor.sync();
    }
    EXPECT_EQ(finding(), JournalFinding::Changes);
    EXPECT_EQ(recovered(), "{\"a\":2,\"b\":3}");
}

/* Between the announcement of a save and the moment in which the file is replaced */
TEST_F(JournalTest, CrashBeforeTheFileIsReplacedRecoversAll) {
    {
        Editing editor{path};
        editor.project.changes.pushChange("/list/0", rapidjson::Value{1}, false);
        editor.journal.aboutToSave(
            path, RapidJsonUtils::toPrettyJson(*editor.project.file.document));
    }
    EXPECT_EQ(recovered(), "{\"a\":1,\"list\":[1]}");
}

/* Applied twice there would be two elements */
TEST_F(JournalTest, CrashBeforeTheJournalGoesRecoversNothingTwice) {
    {
        Editing editor{path};
        editor.project.changes.pushChange("/list/0", rapidjson::Value{1}, false);
        editor.sync();
        editor.journal.aboutToSave(
            path, RapidJsonUtils::toPrettyJson(*editor.project.file.document));
        editor.project.file.save(path);
    }
    EXPECT_TRUE(hasJournal());
    EXPECT_EQ(finding(), JournalFinding::None);
    EXPECT_EQ(recovered(), "{\"a\":1,\"list\":[1]}");
}

TEST_F(JournalTest, ChangesAfterAFailedSaveAreNotLost) {
    {
        Editing editor{path};
        editor.set("/b", 1);
        editor.journal.aboutToSave(
            path, RapidJsonUtils::toPrettyJson(*editor.project.file.document));
        editor.set("/c", 2);
        editor.sync();
    }
    EXPECT_EQ(recovered(), "{\"a\":1,\"b\":1,\"c\":2}");
}

TEST_F(JournalTest, FileThatSomebodyChangedIsAnotherState) {
    {
        Editing editor{path};
        editor.set("/a", 2);
        editor.sync();
    }
    folder.write("level.json", "{\"a\": 5}");
    EXPECT_EQ(finding(), JournalFinding::OtherState);
    EXPECT_EQ(recovered(), "{\"a\":5}");
}

TEST_F(JournalTest, GoesWhenEverythingIsUndone) {
    Editing editor{path};
    editor.set("/a", 2);
    editor.sync();
    editor.project.session->undo();
    editor.journal.nothingUnsaved();
    editor.sync();
    EXPECT_FALSE(hasJournal());
}

/* The history counts the document as saved, but members have changed places, and what comes next is
   made in that document */
TEST_F(JournalTest, StaysWhenUndoingDidNotRestoreTheDocument) {
    folder.write("level.json", "{\"a\": 1, \"b\": 2}");
    {
        Editing editor{path};
        editor.project.changes.pushRemoval("/a");
        editor.project.session->undo();
        ASSERT_FALSE(editor.project.session->hasUnsavedChanges());
        editor.journal.nothingUnsaved();
        editor.set("/c", 3);
        editor.sync();
    }
    EXPECT_EQ(recovered(), "{\"b\":2,\"a\":1,\"c\":3}");
}

TEST_F(JournalTest, DiscardedOneGoesAndNoneComesBeforeTheNextSave) {
    Editing editor{path};
    editor.set("/a", 2);
    editor.sync();
    editor.journal.discard();
    editor.set("/a", 3);
    editor.sync();
    EXPECT_FALSE(hasJournal());
    editor.project.session->save();
    editor.set("/a", 4);
    editor.sync();
    EXPECT_TRUE(hasJournal());
}

TEST_F(JournalTest, DocumentThatChangedBeforeTheStartHasNoJournal) {
    JournaledProject project{path};
    JournalWriter writer{ignore};
    Journal late{project.file, project.changes, writer};
    project.changes.pushChange("/a", rapidjson::Value{2}, false);
    EXPECT_FALSE(late.start(journal, project.loaded));
    project.changes.pushChange("/a", rapidjson::Value{3}, false);
    writer.flush({});
    EXPECT_FALSE(hasJournal());
}

TEST_F(JournalTest, SecondEditorLeavesTheFirstOnesAlone) {
    std::string report;
    {
        Editing first{path};
        first.set("/a", 2);
        first.sync();
        EXPECT_EQ(finding(), JournalFinding::InUse);

        JournaledProject project{path};
        JournalWriter writer{[&](JournalEvent, const std::string&, const std::string& problem) {
            report = problem;
        }};
        Journal second{project.file, project.changes, writer};
        second.start(journal, project.loaded);
        project.changes.pushChange("/a", rapidjson::Value{7}, false);
        writer.flush({});
        second.discard();
        writer.flush({});
        EXPECT_EQ(report, "It's another editor's");
        EXPECT_TRUE(hasJournal());
    }
    EXPECT_EQ(recovered(), "{\"a\":2}");
}

TEST_F(JournalTest, OneFromEarlierIsNotOverwritten) {
    {
        Editing editor{path};
        editor.set("/a", 2);
        editor.sync();
    }
    const std::string before = Testing::readFile(journal);
    Editing next{path};
    next.set("/a", 9);
    next.sync();
    EXPECT_EQ(Testing::readFile(journal), before);
}

TEST_F(JournalTest, RecoveredChangesAreUndoneAsOne) {
    {
        Editing editor{path};
        editor.set("/a", 2);
        editor.set("/b", 3);
        editor.project.changes.pushChange("/b", rapidjson::Value{4}, true);
        editor.sync();
    }
    JournaledProject next{path};
    const FoundJournal found{journal, next.loaded};
    next.changes.beginGroup();
    const FoundJournal::Applied applied = found.apply(next.file, next.changes);
    next.changes.commit();
    EXPECT_TRUE(applied.isUndoable);
    EXPECT_EQ(applied.changeCount, 3u);
    EXPECT_TRUE(next.session->hasUnsavedChanges());
    next.session->undo();
    EXPECT_EQ(RapidJsonUtils::toJson(*next.file.document), "{\"a\":1}");
    EXPECT_FALSE(next.session->hasUnsavedChanges());
}

/* A merge into an entry that made an element inserts once more */
TEST_F(JournalTest, RepeatedInsertionIsRecoveredAsItWas) {
    {
        Editing editor{path};
        editor.set("/a", 2);
        editor.project.changes.pushChange("/list/0", rapidjson::Value{1}, true);
        editor.project.changes.pushChange("/list/0", rapidjson::Value{2}, true);
        ASSERT_EQ(
            RapidJsonUtils::toJson(*editor.project.file.document), "{\"a\":2,\"list\":[2,1]}");
        editor.sync();
    }
    EXPECT_EQ(recovered(), "{\"a\":2,\"list\":[2,1]}");
}

/* Whatever is edited, wherever the journal is cut off and whatever becomes of its bytes: what is
   recovered is a state that there was */
struct RandomJournalTest: JournalTest, ::testing::WithParamInterface<std::uint32_t> {
    RandomJournalTest() {
        std::ostream* const silence = nullptr;
        const Utility::Error redirect{silence};
        Editing editor{path};
        states.push_back(stateOf(editor.project.file));
        editor.project.reached = [&] { states.push_back(stateOf(editor.project.file)); };
        RandomEdits edits{editor.project.file, editor.project.changes, GetParam()};
        for(int i = 0; i != 60; ++i)
            edits.step();
        editor.sync();
        bytes = Testing::readFile(journal);
    }

    /* The number of the state that is recovered, all of them if it's none that there was */
    std::size_t recoveredFrom(const std::string& damaged) {
        folder.write(".level.json.journal", damaged);
        JournaledProject next{path};
        const FoundJournal found{journal, next.loaded};
        if(found.finding() == JournalFinding::Changes) {
            next.changes.beginGroup();
            EXPECT_TRUE(found.apply(next.file, next.changes).isComplete);
            next.changes.commit();
        }
        const std::size_t number = next.stateNumber();
        return number < states.size() && stateOf(next.file) == states[number] ? number
                                                                              : states.size();
    }

    std::vector<std::string> states;
    std::string bytes;
};

TEST_P(RandomJournalTest, WholeJournalGivesTheLastState) {
    EXPECT_EQ(recoveredFrom(bytes), states.size() - 1);
}

TEST_P(RandomJournalTest, CutOffJournalGivesAnEarlierState) {
    std::mt19937 random{GetParam()};
    std::size_t last = 0;
    for(std::size_t size = 0; size < bytes.size(); size += 1 + random() % 100) {
        const std::size_t number = recoveredFrom(bytes.substr(0, size));
        ASSERT_LT(number, states.size()) << size;
        ASSERT_GE(number, last) << size;
        last = number;
    }
    EXPECT_GT(last, 0u);
}

TEST_P(RandomJournalTest, FlippedBitGivesTheStateBeforeIt) {
    std::mt19937 random{GetParam()};
    for(int i = 0; i != (Testing::IsSanitized ? 20 : 100); ++i) {
        const std::size_t place = random() % bytes.size();
        std::string damaged = bytes;
        damaged[place] = char(damaged[place] ^ 1 << random() % 8);
        const std::size_t number = recoveredFrom(damaged);
        ASSERT_LT(number, states.size() - 1) << place;
        ASSERT_EQ(number, recoveredFrom(bytes.substr(0, place))) << place;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomJournalTest, ::testing::Range(1u, 6u));

}}
