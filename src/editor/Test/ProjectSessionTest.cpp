#include "editor/ProjectSession.h"

#include <filesystem>
#include <sstream>
#include <string>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/Tools/System.h"
#include "host/ProjectFile.h"
#include "testing/TemporaryFolder.h"

using namespace Corrade;

namespace QuillmereEngine { namespace {

struct ProjectSessionTest: ::testing::Test {
    ProjectSessionTest() { project.load(file); }

    void set(const char* const path, const int number, const bool isMerged = false) {
        changes.pushChange(path, rapidjson::Value{number}, isMerged);
    }

    /* The log goes to the standard streams, which aren't what is tested */
    bool save() { return session.save(); }

    Testing::TemporaryFolder folder;
    std::string file = folder.write("game.json", "{\n  \"a\": 1\n}\n");
    ProjectFile project;
    ChangeManager changes{project};
    ProjectSession session{project, changes, file};
};

TEST_F(ProjectSessionTest, LockedHistoryIsNeitherSteppedNorSaved) {
    set("/a", 2);
    set("/a", 3);
    session.undo();
    changes.setLocked(true);
    session.undo();
    session.redo();
    EXPECT_EQ(changes.appliedCount(), 1u);
    EXPECT_FALSE(save());
    EXPECT_EQ(Testing::readFile(file), "{\n  \"a\": 1\n}\n");
    changes.setLocked(false);
    session.redo();
    EXPECT_EQ(changes.appliedCount(), 2u);
    EXPECT_TRUE(save());
}

TEST_F(ProjectSessionTest, StartsUnchanged) {
    EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_EQ(session.name(), file);
    EXPECT_EQ(session.title(), file + " \xe2\x80\x93 Quillmere");
}

TEST_F(ProjectSessionTest, ChangeMarksTheTitle) {
    set("/a", 2);
    EXPECT_TRUE(session.hasUnsavedChanges());
    EXPECT_EQ(session.name(), file + "*");
    EXPECT_EQ(session.title(), file + "* \xe2\x80\x93 Quillmere");
}

TEST_F(ProjectSessionTest, ProjectWithoutFileHasNoNameUntilItChanges) {
    ProjectFile unnamed;
    ChangeManager history{unnamed};
    const ProjectSession unnamedSession{unnamed, history, ""};
    EXPECT_EQ(unnamedSession.title(), "Quillmere");
    history.pushChange("/a", rapidjson::Value{1}, false);
    EXPECT_EQ(unnamedSession.title(), "Unnamed* \xe2\x80\x93 Quillmere");
}

TEST_F(ProjectSessionTest, UndoGoesBackToTheSavedState) {
    set("/a", 2);
    session.undo();
    EXPECT_FALSE(session.hasUnsavedChanges());
    session.redo();
    EXPECT_TRUE(session.hasUnsavedChanges());
}

TEST_F(ProjectSessionTest, SaveWritesTheFileAndClearsTheMark) {
    set("/a", 2);
    EXPECT_TRUE(save());
    EXPECT_FALSE(session.hasUnsavedChanges());
    EXPECT_EQ(Testing::readFile(file), "{\n    \"a\": 2\n}\n");
    session.undo();
    EXPECT_TRUE(session.hasUnsavedChanges());
    session.redo();
    EXPECT_FALSE(session.hasUnsavedChanges());
}

TEST_F(ProjectSessionTest, FailedSaveKeepsTheMark) {
    const std::string missing = folder.file("missing/game.json");
    ProjectSession other{project, changes, missing};
    set("/a", 2);
    std::ostringstream error;
    {
        const Utility::Error redirect{&error};
        EXPECT_FALSE(other.save());
    }
    EXPECT_NE(error.str().find("ProjectFile::save(): can't write " + missing), std::string::npos);
    EXPECT_TRUE(other.hasUnsavedChanges());
}

/* Answers the next dialog with a file, "" to cancel it */
struct SaveDialog {
    explicit SaveDialog(std::string answer): file{std::move(answer)} {
        setDialogAnswer(
            [](const DialogRequest& request, void* const dialog) {
                auto& self = *static_cast<SaveDialog*>(dialog);
                self.isAsked = request.type == DialogType::SaveFile;
                Containers::Array<std::string> out;
                if(!self.file.empty())
                    arrayAppend(out, self.file);
                return out;
            },
            this);
    }
    ~SaveDialog() { setDialogAnswer(nullptr, nullptr); }

    std::string file;
    bool isAsked = false;
};

TEST_F(ProjectSessionTest, ProjectWithoutFileAsksForOneOnce) {
    ProjectSession unnamed{project, changes, ""};
    set("/a", 2);
    {
        const SaveDialog dialog{""};
        EXPECT_FALSE(unnamed.save());
        EXPECT_TRUE(dialog.isAsked);
        EXPECT_EQ(unnamed.name(), "Unnamed*");
    }
    const std::string chosen = folder.file("chosen.json");
    {
        const SaveDialog dialog{chosen};
        EXPECT_TRUE(unnamed.save());
    }
    EXPECT_EQ(Testing::readFile(chosen), "{\n    \"a\": 2\n}\n");
    EXPECT_EQ(unnamed.name(), chosen);
    const SaveDialog dialog{""};
    EXPECT_TRUE(unnamed.save());
    EXPECT_FALSE(dialog.isAsked);
}

TEST_F(ProjectSessionTest, MergeIntoTheSavedEntryIsAChange) {
    set("/b", 1);
    set("/a", 2, true);
    save();
    set("/a", 3, true);
    /* The history's own mark doesn't see it */
    ASSERT_FALSE(changes.hasUnsavedChanges());
    EXPECT_TRUE(session.hasUnsavedChanges());
    session.undo();
    session.redo();
    EXPECT_TRUE(session.hasUnsavedChanges());
    save();
    EXPECT_FALSE(session.hasUnsavedChanges());
}

TEST_F(ProjectSessionTest, MergeIntoANewerEntryCanBeUndone) {
    set("/b", 1);
    save();
    set("/a", 2, true);
    set("/a", 3, true);
    EXPECT_TRUE(session.hasUnsavedChanges());
    session.undo();
    EXPECT_FALSE(session.hasUnsavedChanges());
}

TEST_F(ProjectSessionTest, MergeIntoAnEntryBeforeTheSavedOneIsAChange) {
    set("/b", 1);
    set("/a", 2, true);
    save();
    set("/c", 1, true);
    /* Trades places with what was made since, so that undoing it doesn't undo that */
    set("/a", 3, true);
    session.undo();
    ASSERT_FALSE(changes.hasUnsavedChanges());
    EXPECT_TRUE(session.hasUnsavedChanges());
}

TEST_F(ProjectSessionTest, MergeBelowTheSavedEntryStaysAChangeAfterRedo) {
    set("/b", 1);
    set("/c", 1, true);
    set("/a", 2);
    save();
    session.undo();
    set("/c", 2, true);
    session.redo();
    ASSERT_FALSE(changes.hasUnsavedChanges());
    EXPECT_TRUE(session.hasUnsavedChanges());
}

TEST_F(ProjectSessionTest, ReplacedSavedEntryCannotBeReached) {
    set("/b", 1);
    save();
    session.undo();
    set("/c", 1);
    session.undo();
    /* The history takes it for the state before the first change */
    ASSERT_FALSE(changes.hasUnsavedChanges());
    EXPECT_TRUE(session.hasUnsavedChanges());
}

TEST_F(ProjectSessionTest, GroupIsUndoneToTheSavedState) {
    set("/b", 1);
    save();
    changes.beginGroup();
    set("/c", 1);
    set("/d", 1);
    changes.commit();
    EXPECT_TRUE(session.hasUnsavedChanges());
    session.undo();
    EXPECT_FALSE(session.hasUnsavedChanges());
}

TEST_F(ProjectSessionTest, NothingIsUndoneWhileTheHistoryIsReserved) {
    set("/a", 2);
    set("/b", 1);
    session.undo();
    const auto expectNoSteps = [this] {
        session.undo();
        EXPECT_EQ(changes.appliedCount(), 1);
        session.redo();
        EXPECT_EQ(changes.appliedCount(), 1);
    };
    changes.setLocked(true);
    expectNoSteps();
    changes.setLocked(false);
    changes.beginGroup();
    expectNoSteps();
    changes.commit();
    session.redo();
    EXPECT_EQ(changes.appliedCount(), 2);
    session.undo();
    EXPECT_EQ(changes.appliedCount(), 1);
}

TEST_F(ProjectSessionTest, RestartTakesTheDocumentAsSavedAndHearsOfChangesAgain) {
    set("/a", 2);
    save();
    set("/a", 3);
    session.restart();
    EXPECT_FALSE(session.hasUnsavedChanges());
    set("/b", 1);
    set("/a", 4, true);
    save();
    set("/a", 5, true);
    EXPECT_TRUE(session.hasUnsavedChanges());
}

}}
