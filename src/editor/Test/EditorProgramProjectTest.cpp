/* The real program: a project edited by replayed input, undone, saved, left */

#include <fstream>
#include <iterator>
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

    /* Slow enough that what's dragged is seen by what it's dropped on */
    Replay& dragTo(const int x, const int y, const int toX, const int toY) {
        move(x, y).add("down left").move((x + toX) / 2, (y + toY) / 2).move(toX, toY);
        _frame += 3;
        return add("up left");
    }

    Replay& wheel(const int notches) {
        add("wheel " + std::to_string(notches));
        _frame += 10;
        return *this;
    }

    Replay& key(const std::string& name) {
        return add("key " + name + " down").add("key " + name + " up");
    }

    Replay& super(const std::string& name) {
        return add("key super down").key(name).add("key super up");
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
    static constexpr int LighthouseX = 60, LighthouseY = 60, NameX = 985, NameY = 45, IdY = 73;
    static constexpr int ActiveX = 837, ActiveY = 126, FieldX = 1010;
    static constexpr int TranslationY = 179, RotationY = 207, ScaleY = 235;
    static constexpr int ComboX = 1100, MeshY = 291, MaterialY = 319, FirstMaterialY = 367;
    static constexpr int MeshesX = 100, MeshesY = 245, FirstMeshY = 269;
    /* Below the hint that is shown meanwhile */
    static constexpr int PickX = 1248, TargetY = 514, KeeperY = 161;
    static constexpr int TagsY = 544, AddTagX = 1226, RemoveTagX = 1250;
    static constexpr int FirstTagX = 850, FirstTagY = 568, NotesY = 676;
    static constexpr int LampY = 81, LightTypeY = 486, PointLightY = 534, IntensityY = 649;
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

    /* By the lists, a drop, a pick, the clipboard, tags and notes */
    Replay otherEdits() {
        Replay out;
        out.click(LighthouseX, LighthouseY);
        out.click(ComboX, MaterialY).click(ComboX, FirstMaterialY);
        out.click(MeshesX, MeshesY).dragTo(MeshesX, FirstMeshY, ComboX, MeshY);
        out.click(PickX, TargetY).click(LighthouseX, KeeperY);
        out.move(FieldX, TranslationY).super("c").move(FieldX, ScaleY).super("v");
        out.click(FieldX, TagsY).text("tall").click(AddTagX, TagsY);
        out.click(FirstTagX, FirstTagY).click(RemoveTagX, TagsY);
        out.click(ComboX, NotesY).key("home").text("Note: ");
        /* Or the keys would be the field's */
        return out.click(NameX, IdY).move(400, 600);
    }

    /* Of the lamp: what it has and the lighthouse hasn't */
    Replay lampEdits() {
        Replay out;
        out.click(LighthouseX, LampY).click(ComboX, LightTypeY).click(ComboX, PointLightY);
        out.move(ComboX, MeshY).wheel(-30).drag(ComboX, IntensityY, 30);
        return out.move(400, 600);
    }

    /* All changes of a run are taken back, after a save in between that shows that there are some */
    void expectUndoneByteByByte(Replay replay, const int steps) {
        replay.ctrl("s");
        for(int i = 0; i != steps; ++i)
            replay.ctrl("z");
        EXPECT_EQ(run(replay.ctrl("s")).status, 0);
        EXPECT_EQ(saved(), original);
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

TEST_F(EditorProgramProjectTest, EditsOfReferencesTagsAndNotesAreSaved) {
    EXPECT_EQ(run(otherEdits().ctrl("s")).status, 0);
    EXPECT_EQ(value("material"), "\"rock\"");
    EXPECT_EQ(value("mesh"), "\"island\"");
    EXPECT_EQ(value("target"), "\"6\"");
    EXPECT_EQ(value("scale"), "[1.5,2.75,-0.5]");
    EXPECT_EQ(value("tags"), R"(["landmark","tall"])");
    EXPECT_EQ(value("notes"), R"("Note: The stairs inside are a mesh of their own.")");
}

TEST_F(EditorProgramProjectTest, EditsOfALightAreSaved) {
    EXPECT_EQ(run(lampEdits().ctrl("s")).status, 0);
    ProjectFile loaded;
    ASSERT_TRUE(loaded.load(project));
    EXPECT_STREQ(loaded.getValue("/objects/3/lightType", false)->GetString(), "point");
    EXPECT_NE(loaded.getValue("/objects/3/intensity", false)->GetDouble(), 850.0);
}

TEST_F(EditorProgramProjectTest, NothingIsSavedUnasked) {
    EXPECT_EQ(run(edits()).status, 0);
    EXPECT_EQ(saved(), original);
}

TEST_F(EditorProgramProjectTest, UndoingEverythingGivesTheSameBytes) {
    expectUndoneByteByByte(edits(), 10);
    expectUndoneByteByByte(otherEdits(), 15);
    expectUndoneByteByByte(lampEdits(), 10);
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

TEST_F(EditorProgramProjectTest, HeadlessLeavesAnEarlierJournalUntouched) {
    const std::string content = "of an editor that was killed";
    const std::string file = project.substr(project.rfind('/') + 1);
    const std::string journal = folder.write("." + file + ".journal", content);

    const EditorRun out = runEditorProgram({"--modules", QUILLMERE_MODULES, project});
    EXPECT_EQ(out.status, 0) << out.error;
    const std::string all = out.out + out.error;
    const std::size_t first = all.find(journal);
    ASSERT_NE(first, std::string::npos) << all;
    EXPECT_THAT(all, HasSubstr("the journal " + journal + " is neither recovered nor deleted"));
    EXPECT_EQ(all.find(journal, first + 1), std::string::npos) << all;
    std::ifstream left{journal};
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>{left}, {}), content);
    EXPECT_EQ(saved(), original);
}

}}
