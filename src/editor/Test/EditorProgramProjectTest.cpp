/* The real program: a project edited by replayed input, undone, saved, left */

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "EditorProcess.h"
#include "host/ProjectFile.h"
#include "host/RapidJsonUtils.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using ::testing::HasSubstr;

/* Writes a replay file, each event in a frame of its own */
class Replay {
public:
    Replay& move(const int x, const int y) {
        return add("move " + std::to_string(x) + " " + std::to_string(y));
    }

    /* Too far from one another to make a double click */
    Replay& click(const int x, const int y) { return move(x, y).add("down left").add("up left"); }

    /* And some frames until the field that it opens has the keyboard */
    Replay& doubleClick(const int x, const int y) {
        click(x, y).add("down left").add("up left");
        _frame += 4;
        return *this;
    }

    Replay& drag(const int x, const int y, const int distance) {
        move(x, y).add("down left");
        for(int i = 1; i <= 5; ++i)
            move(x + distance * i / 5, y);
        return add("up left");
    }

    Replay& key(const std::string& name) {
        return add("key " + name + " down").add("key " + name + " up");
    }

    Replay& ctrl(const std::string& name) {
        return add("key ctrl down").key(name).add("key ctrl up");
    }

    Replay& ctrlShift(const std::string& name) {
        return add("key shift down").ctrl(name).add("key shift up");
    }

    Replay& text(const std::string& text) { return add("text " + text); }

    const std::string& file() const { return _file; }

private:
    Replay& add(const std::string& event) {
        _file += "frame " + std::to_string(_frame) + " " + event + "\n";
        ++_frame;
        return *this;
    }

    int _frame = 5;
    std::string _file;
};

/* The lighthouse of the sample in a window of 1280x720 */
struct EditorProgramProjectTest: ::testing::Test {
    static constexpr int LighthouseX = 60, LighthouseY = 60, NameX = 985, NameY = 45;
    static constexpr int ActiveX = 837, ActiveY = 126, FieldX = 1010;
    static constexpr int TranslationY = 179, RotationY = 207, ScaleY = 235;
    static constexpr int LayerX = 1124, LayerY = 399, ColorX = 1005, ColorY = 347;

    EditorRun run(const Replay& replay, std::vector<std::string> more = {}) {
        more.insert(more.begin(),
            {"--modules", QUILLMERE_MODULES, "--input", folder.write("input", replay.file()),
                project});
        return runEditorProgram(std::move(more));
    }

    Replay edits() {
        Replay out;
        out.click(LighthouseX, LighthouseY).click(ActiveX, ActiveY);
        out.doubleClick(NameX, NameY).text("Tower").key("enter");
        out.drag(FieldX, TranslationY, 40).drag(FieldX, RotationY, -60).drag(FieldX, ScaleY, 30);
        out.drag(ColorX, ColorY, -50).click(LayerX, LayerY);
        /* Away from all fields, so that none is hovered or active */
        return out.move(400, 600);
    }

    /* A member of the lighthouse, as JSON */
    static std::string valueIn(const std::string& file, const std::string& member) {
        ProjectFile loaded;
        EXPECT_TRUE(loaded.load(file));
        const rapidjson::Value* const out = loaded.getValue(("/objects/2/" + member).c_str(), true);
        return out ? RapidJsonUtils::toJson(*out) : "";
    }

    std::string value(const std::string& member) const { return valueIn(project, member); }

    std::string saved() const { return Testing::readFile(project); }

    const std::string original = Testing::readFile(QUILLMERE_SAMPLE_PROJECT);
    Testing::TemporaryFolder folder;
    std::string project = folder.write("sample.json", original);
};

TEST_F(EditorProgramProjectTest, SampleIsSavedAsItIs) {
    const EditorRun result = run(Replay{}.ctrl("s"));
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_THAT(result.out + result.error, HasSubstr("[info] Saved " + project));
    EXPECT_EQ(saved(), original);
}

TEST_F(EditorProgramProjectTest, NoDialogWaitsForAnAnswerHeadless) {
    const EditorRun result = runEditorProgram({"--modules", QUILLMERE_MODULES, "--input",
        folder.write("input", Replay{}.ctrl("s").file())});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(
        result.error, HasSubstr("[warn] Headless, so this dialog is cancelled: Save project"));
}

TEST_F(EditorProgramProjectTest, EditsAreSaved) {
    EXPECT_EQ(run(edits().ctrl("s")).status, 0);
    EXPECT_EQ(value("name"), "\"Tower\"");
    EXPECT_EQ(value("active"), "false");
    EXPECT_EQ(value("layers"), "7");
    EXPECT_EQ(value("mesh"), "\"tower\"");
    for(const char* const member: {"translation", "rotation", "scale", "color"})
        EXPECT_NE(value(member), valueIn(QUILLMERE_SAMPLE_PROJECT, member)) << member;
}

TEST_F(EditorProgramProjectTest, NothingIsSavedUnasked) {
    EXPECT_EQ(run(edits()).status, 0);
    EXPECT_EQ(saved(), original);
}

TEST_F(EditorProgramProjectTest, UndoingEverythingGivesTheSameBytes) {
    Replay replay = edits().ctrl("s");
    for(int i = 0; i != 10; ++i)
        replay.ctrl("z");
    EXPECT_EQ(run(replay.ctrl("s")).status, 0);
    EXPECT_EQ(saved(), original);
}

TEST_F(EditorProgramProjectTest, RedoByBothKeysGivesTheEditsAgain) {
    run(edits().ctrl("s"));
    const std::string edited = saved();
    ASSERT_NE(edited, original);
    for(const bool isByY: {false, true}) {
        project = folder.write("sample.json", original);
        Replay replay = edits();
        for(int i = 0; i != 10; ++i)
            replay.ctrl("z");
        for(int i = 0; i != 10; ++i)
            isByY ? replay.ctrl("y") : replay.ctrlShift("z");
        run(replay.ctrl("s"));
        EXPECT_EQ(saved(), edited) << isByY;
    }
}

TEST_F(EditorProgramProjectTest, KeysBelongToTheFieldThatIsEdited) {
    /* A name in the middle of being changed: the keys undo in the field only, and don't save */
    Replay replay;
    replay.click(LighthouseX, LighthouseY).click(ActiveX, ActiveY);
    replay.doubleClick(NameX, NameY).text("Tower").ctrl("s").ctrl("z");
    EXPECT_EQ(run(replay).status, 0);
    EXPECT_EQ(saved(), original);
    /* The click before is still there once the field is left */
    EXPECT_EQ(run(replay.key("escape").move(400, 600).ctrl("s")).status, 0);
    EXPECT_NE(saved(), original);
}

TEST_F(EditorProgramProjectTest, UnsavedChangesAreAskedAboutBeforeQuitting) {
    EXPECT_EQ(run(edits().ctrl("q")).status, 0);
    EXPECT_EQ(saved(), original);
    EXPECT_EQ(run(edits().ctrl("q").key("enter")).status, 0);
    EXPECT_EQ(value("name"), "\"Tower\"");
}

TEST_F(EditorProgramProjectTest, CancelledQuestionGoesOnEditing) {
    const EditorRun result = run(edits().ctrl("q").key("escape").ctrl("s"));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(value("name"), "\"Tower\"");
}

TEST_F(EditorProgramProjectTest, WithoutChangesQuittingIsNotAskedAbout) {
    /* What comes after the end isn't played any more */
    EXPECT_EQ(
        run(Replay{}.ctrl("q").click(LighthouseX, LighthouseY).click(ActiveX, ActiveY).ctrl("s"))
            .status,
        0);
    EXPECT_EQ(saved(), original);
}

}}
