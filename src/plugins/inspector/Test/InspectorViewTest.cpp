#include "plugins/inspector/InspectorView.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <string>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/Change.h"
#include "QuillmereEditor/Tools/System.h"
#include "testing/HeadlessFrameDrawing.h"
#include "testing/InputDriver.h"
#include "testing/ProjectHost.h"

using namespace Corrade;

namespace QuillmereEngine { namespace {

constexpr const char* Project = R"({
    "objects": {
        "1": {
            "name": "Lamp", "type": "fixture", "active": true, "translation": [1.0, 2.0, 3.0],
            "rotation": [0.0, 0.0, 0.0], "scale": [1.0, 1.0, 1.0], "layers": 5, "color": [1, 0.5, 0.25],
            "lightType": "spot", "mesh": "box", "material": "brass", "target": "2",
            "texture": "lamp.png", "animation": "", "shadows": 1, "tags": ["night", "harbour"], "notes": "a\nb"
        },
        "2": {"name": "Boat"},
        "3": {"name": ""},
        "4": {},
        "a/b~c": {"name": "Odd", "x/y~z": true, "": 7}
    },
    "meshes": {"box": {"name": "Box"}, "ball": {"name": "Ball"}},
    "animations": {"turning": {"name": "Turning"}},
    "materials": {"brass": {"name": "Brass"}}
})";

struct Inspector {
    explicit Inspector(const std::string& json, const std::string& selected):
        host{json, {1000.0f, 2000.0f}} {
        host.init(view);
        select(selected);
    }
    ~Inspector() { view.deinit(); }

    void draw() {
        ImGui::SetNextWindowPos({0.0f, 0.0f});
        ImGui::SetNextWindowSize({width, 1900.0f});
        view.draw();
        if(drawMore)
            drawMore();
    }

    void select(const std::string& object) {
        host.data.selectedObject = object;
        input.idle(3);
    }

    ImVec2 at(const std::string& text) {
        const std::optional<ImVec2> out = Testing::placeOfText(text);
        EXPECT_TRUE(out) << text << " isn't drawn";
        return out ? ImVec2{out->x + 3.0f, out->y + 3.0f} : ImVec2{};
    }

    /* Beside a label, in the column of the values */
    ImVec2 valueAt(const std::string& label) { return {174.0f, at(label).y}; }

    bool shows(const std::string& text) { return bool(Testing::placeOfText(text)); }

    /* Clicks a field's item that opens a list, and one of the list */
    void choose(const std::string& label, const std::string& item) {
        input.click(valueAt(label));
        const std::optional<ImVec2> place = Testing::placeOfText(item, "##Combo_00");
        ASSERT_TRUE(place) << item;
        input.click({place->x + 3.0f, place->y + 3.0f});
    }

    void expectChange(const char* const path, const std::string& value) {
        ASSERT_NE(host.changes().changeCount(), 0) << path;
        EXPECT_STREQ(host.changes().lastChange().path.data(), path);
        EXPECT_EQ(host.value(path), value);
    }

    float width = 500.0f;
    /* Beside the panel */
    std::function<void()> drawMore;
    Testing::ProjectHost host;
    InspectorView view{host.modules, "InspectorView"};
    Testing::InputDriver input{host.frame, [this] { draw(); }};
};

struct InspectorViewTest: ::testing::Test, Inspector {
    InspectorViewTest(): Inspector{Project, "1"} {}
};

TEST_F(InspectorViewTest, WithoutASelectedObjectThereIsNothingToEdit) {
    for(const char* const object: {"", "gone"}) {
        select(object);
        EXPECT_TRUE(shows("Noobjectisselected.")) << object;
        EXPECT_FALSE(shows("Transform"));
    }
    EXPECT_STREQ(host.ui().scope.data(), "");
}

TEST_F(InspectorViewTest, KnownMembersAreShown) {
    for(const char* const text: {"Lamp", "active", "translation", "rotation", "scale", "mesh",
            "Box", "material", "Brass", "color", "texture", "lamp.png", "layers", "shadows",
            "casts", "lightType", "spot", "target", "Boat", "tags", "night", "harbour", "notes"})
        EXPECT_TRUE(shows(text)) << text;
    EXPECT_FALSE(shows("Other"));
}

TEST_F(InspectorViewTest, IdAndTypeAreShownPlainly) {
    select("a/b~c");
    EXPECT_FLOAT_EQ(at("a/b~c").x, at("Odd").x);
    select("1");
    input.doubleClick(at("fixture"));
    input.text("x");
    EXPECT_EQ(host.changes().changeCount(), 0);
}

TEST_F(InspectorViewTest, ObjectWithoutMembersCanBeEdited) {
    select("2");
    input.click(at("active"));
    EXPECT_EQ(host.value("/objects/2/active"), "true");
    EXPECT_FALSE(shows("lightType"));
    EXPECT_FALSE(shows("color"));
}

TEST_F(InspectorViewTest, NameIsRenamed) {
    input.doubleClick(at("Lamp"));
    input.idle(2);
    input.text("Lantern");
    input.type(ImGuiKey_Enter);
    EXPECT_EQ(host.value("/objects/1/name"), "\"Lantern\"");
    host.changes().undoLast();
    EXPECT_EQ(host.value("/objects/1/name"), "\"Lamp\"");
}

TEST_F(InspectorViewTest, ObjectWithoutANameIsNamed) {
    for(const char* const object: {"3", "4"}) {
        select(object);
        /* Or it would be the third and fourth click */
        input.idle(30);
        input.doubleClick(at("unnamed"));
        input.idle(3);
        EXPECT_FALSE(shows("unnamed"));
        input.text("Buoy");
        input.type(ImGuiKey_Enter);
        EXPECT_EQ(host.value((std::string{"/objects/"} + object + "/name").c_str()), "\"Buoy\"");
        EXPECT_EQ(host.ui().renamingId, 0);
        input.idle(2);
        EXPECT_TRUE(shows("Buoy"));
    }
    EXPECT_EQ(host.changes().changeCount(), 2);
}

/* Down to where nothing is left for the values */
TEST_F(InspectorViewTest, NarrowPanelIsDrawn) {
    for(const float size: {20.0f, 60.0f, 150.0f}) {
        width = size;
        input.idle(2);
        input.click({15.0f, 60.0f});
        EXPECT_TRUE(host.ui().flagStack.isEmpty());
        EXPECT_STREQ(host.ui().scope.data(), "");
    }
    EXPECT_EQ(host.changes().changeCount(), 0);
}

TEST_F(InspectorViewTest, DraggedTranslationIsOneStep) {
    const std::string before = host.document();
    const ImVec2 field = valueAt("translation");
    input.moveTo(field);
    input.press();
    for(int i = 1; i != 10; ++i)
        input.moveTo({field.x + float(i) * 10.0f, field.y});
    input.release();
    EXPECT_NE(host.document(), before);
    const std::string path{host.changes().lastChange().path.data()};
    EXPECT_EQ(path, "/objects/1/translation");
    while(host.changes().appliedCount())
        host.changes().undoLast();
    EXPECT_EQ(host.document(), before);
}

TEST_F(InspectorViewTest, LightTypeIsChosenFromItsNames) {
    input.click(at("spot"));
    input.click(at("directional"));
    EXPECT_EQ(host.value("/objects/1/lightType"), "\"directional\"");
}

TEST_F(InspectorViewTest, MeshAndMaterialAreChosenFromTheirLists) {
    choose("mesh", "Ball");
    expectChange("/objects/1/mesh", "\"ball\"");
    choose("material", "-none-");
    expectChange("/objects/1/material", "null");
    EXPECT_EQ(host.changes().changeCount(), 2);
}

TEST_F(InspectorViewTest, TargetIsChosenAndAnAnimationByItsName) {
    choose("target", "Odd");
    expectChange("/objects/1/target", "\"a/b~c\"");
    choose("animation", "Turning");
    expectChange("/objects/1/animation", "\"Turning\"");
}

TEST_F(InspectorViewTest, MeshTakesADrop) {
    drawMore = [] {
        ImGui::SetNextWindowPos({600.0f, 0.0f});
        ImGui::Begin("Source");
        ImGui::Button("Ball to drag");
        if(ImGui::BeginDragDropSource()) {
            ImGui::SetDragDropPayload("meshes", "ball", 5);
            ImGui::EndDragDropSource();
        }
        ImGui::End();
    };
    input.idle(2);
    input.moveTo(at("Balltodrag"));
    input.press();
    input.moveTo(valueAt("mesh"));
    /* The panel is drawn before what is dragged */
    input.idle(2);
    input.release();
    expectChange("/objects/1/mesh", "\"ball\"");
}

TEST_F(InspectorViewTest, TextureIsChosenWithTheDialog) {
    setDialogAnswer(
        [](const DialogRequest& request, void*) {
            EXPECT_EQ(request.type, DialogType::OpenFiles);
            EXPECT_EQ(request.title, "Choose a texture");
            EXPECT_EQ(request.defaultPath, "lamp.png");
            return Containers::Array<std::string>{Corrade::DirectInit, 1, "other.png"};
        },
        nullptr);
    const ImVec2 button = at("...");
    input.click({button.x, button.y});
    setDialogAnswer(nullptr, nullptr);
    expectChange("/objects/1/texture", "\"other.png\"");
}

/* The texture's button used to be cut, and the tags' ones ended somewhere */
TEST_F(InspectorViewTest, ButtonsBesideTheFieldsEndWithThem) {
    for(const float size: {300.0f, 500.0f, 900.0f}) {
        width = size;
        input.idle(2);
        float fieldsEnd = 0.0f;
        for(const Testing::DrawnQuad& quad:
            Testing::drawnRectangles(ImGui::GetColorU32(ImGuiCol_FrameBg), "Inspector"))
            fieldsEnd = std::max(fieldsEnd, quad.max.x);
        EXPECT_LT(fieldsEnd, size - ImGui::GetStyle().WindowPadding.x);
        for(const char* const button: {"...", "-"})
            EXPECT_NEAR(at(button).x - 3.0f + ImGui::CalcTextSize(button).x +
                    ImGui::GetStyle().FramePadding.x,
                fieldsEnd, 1.0f)
                << button << " " << size;
    }
}

TEST_F(InspectorViewTest, LayerIsToggled) {
    const ImVec2 label = at("layers");
    for(const Testing::DrawnText& text: Testing::drawnTexts("Inspector"))
        if(text.text == "1" && std::abs(text.position.y - label.y) < 10.0f)
            input.click({text.position.x + 2.0f, text.position.y + 4.0f});
    expectChange("/objects/1/layers", "7");
}

TEST_F(InspectorViewTest, NotesAreTyped) {
    input.click({valueAt("notes").x, at("notes").y});
    input.type(ImGuiKey_End, ImGuiKeyModFlags_Ctrl);
    input.text("c");
    expectChange("/objects/1/notes", R"("a\nbc")");
}

TEST_F(InspectorViewTest, ColorIsDragged) {
    const ImVec2 red = at("R:255");
    input.drag(red, {red.x - 10.0f, red.y});
    ASSERT_EQ(host.changes().changeCount(), 1);
    EXPECT_STREQ(host.changes().lastChange().path.data(), "/objects/1/color");
}

TEST_F(InspectorViewTest, LockedHistoryKeepsTheTags) {
    const std::string before = host.document();
    input.click(valueAt("tags"));
    input.text("new");
    input.click(at("night"));
    host.changes().setLocked(true);
    input.click(at("+"));
    input.click(at("-"));
    EXPECT_EQ(host.document(), before);
    EXPECT_EQ(host.changes().changeCount(), 0);
    host.changes().setLocked(false);
    input.click(at("+"));
    EXPECT_EQ(host.value("/objects/1/tags"), R"(["night","harbour","new"])");
}

TEST_F(InspectorViewTest, BothShadowBitsAreToggled) {
    input.click(at("receives"));
    EXPECT_EQ(host.value("/objects/1/shadows"), "3");
    input.click(at("casts"));
    EXPECT_EQ(host.value("/objects/1/shadows"), "2");
}

TEST_F(InspectorViewTest, TagIsAddedAndRemovedInItsPlace) {
    const std::string before = host.document();
    const ImVec2 field = valueAt("tags");
    input.click(field);
    input.text("new");
    input.click(at("+"));
    EXPECT_EQ(host.value("/objects/1/tags"), R"(["night","harbour","new"])");
    /* Without a text there's nothing to add */
    input.click(at("+"));
    EXPECT_EQ(host.changes().changeCount(), 1);
    input.click(at("night"));
    input.click(at("-"));
    EXPECT_EQ(host.value("/objects/1/tags"), R"(["harbour","new"])");
    /* And none that is selected now */
    input.click(at("-"));
    EXPECT_EQ(host.changes().changeCount(), 2);
    host.changes().undoLast();
    host.changes().undoLast();
    EXPECT_EQ(host.document(), before);
}

TEST_F(InspectorViewTest, LastTagLeavesAnEmptyListInItsPlace) {
    for(const char* const tag: {"night", "harbour"}) {
        input.click(at(tag));
        input.click(at("-"));
    }
    EXPECT_EQ(host.value("/objects/1/tags"), "[]");
}

TEST_F(InspectorViewTest, SelectedTagBelongsToItsObject) {
    input.click(at("night"));
    select("2");
    select("1");
    input.click(at("-"));
    EXPECT_EQ(host.changes().changeCount(), 0);
}

TEST_F(InspectorViewTest, KeysThatNeedEscapesAreEdited) {
    select("a/b~c");
    EXPECT_TRUE(shows("Odd"));
    EXPECT_TRUE(shows("x/y~z"));
    input.click(valueAt("x/y~z"));
    EXPECT_EQ(host.value("/objects/a~1b~0c/x~1y~0z"), "false");
    host.changes().undoLast();
    EXPECT_EQ(host.value("/objects/a~1b~0c/x~1y~0z"), "true");
}

TEST_F(InspectorViewTest, WaitingSelectorThatIsNotDrawnStopsToWait) {
    ImVec2 button = valueAt("target");
    for(button.x = 495.0f; button.x > 420.0f && !host.ui().pickingId; button.x -= 8.0f)
        input.click(button);
    ASSERT_TRUE(host.ui().pickingId);
    input.idle(10);
    EXPECT_TRUE(host.ui().pickingId);
    host.ui().pickedObject = "2";
    select("");
    EXPECT_EQ(host.ui().pickingId, 0);
    EXPECT_EQ(host.ui().pickedObject, nullptr);
}

TEST_F(InspectorViewTest, SelectorOfAnotherPanelGoesOnWaiting) {
    host.ui().pickingId = 12345;
    select("2");
    select("");
    EXPECT_EQ(host.ui().pickingId, 12345);
}

TEST_F(InspectorViewTest, HandlerThatThrowsLeavesNothingOpen) {
    host.changes().addChangeHandler(
        "shadows", [](auto&&...) { throw std::runtime_error{"no"}; }, nullptr);
    const ImVec2 box = at("receives");
    input.moveTo(box);
    input.press();
    bool hasThrown = false;
    host.frame.io().MouseDown[0] = false;
    host.frame.run([&] {
        ImGui::SetNextWindowPos({950.0f, 1950.0f});
        ImGui::Begin("Around", nullptr, ImGuiWindowFlags_NoFocusOnAppearing);
        const ImGuiStackSizes before = [] {
            ImGuiStackSizes out;
            out.SetToCurrentState();
            return out;
        }();
        try {
            draw();
        } catch(const std::runtime_error&) {
            hasThrown = true;
        }
        ImGuiStackSizes after;
        after.SetToCurrentState();
        EXPECT_EQ(before.SizeOfIDStack, after.SizeOfIDStack);
        EXPECT_EQ(before.SizeOfStyleVarStack, after.SizeOfStyleVarStack);
        EXPECT_EQ(before.SizeOfItemFlagsStack, after.SizeOfItemFlagsStack);
        ImGui::End();
    });
    EXPECT_TRUE(hasThrown);
    EXPECT_STREQ(host.ui().scope.data(), "");
    EXPECT_TRUE(host.ui().flagStack.isEmpty());
    EXPECT_FALSE(host.ui().flags);
}

struct ColorRow {
    const char* name;
    const char* json;
    const char* first;
};

struct InspectorColorTest: ::testing::TestWithParam<ColorRow> {};

TEST_P(InspectorColorTest, WidgetFollowsTheSize) {
    Inspector inspector{
        std::string{R"({"objects": {"1": {"color": )"} + GetParam().json + "}}}", "1"};
    EXPECT_TRUE(inspector.shows("color"));
    EXPECT_TRUE(inspector.shows(GetParam().first)) << GetParam().first;
    EXPECT_EQ(inspector.shows("A:255"), std::string{GetParam().name} == "Four");
}

constexpr ColorRow ColorRows[]{
    {"Three", "[1, 0, 0]", "R:255"},
    {"Four", "[1, 0, 0, 1]", "R:255"},
    {"Two", "[0.5, 0.25]", "0.500"},
    {"Five", "[1, 2, 3, 4, 5]", "color(5elements)"},
    {"Name", "\"red\"", "red"},
    {"Null", "null", "null"},
};

INSTANTIATE_TEST_SUITE_P(All, InspectorColorTest, ::testing::ValuesIn(ColorRows),
    [](const auto& row) { return row.param.name; });

TEST(InspectorUnknownTest, MembersGetTheWidgetOfTheirShape) {
    Inspector inspector{R"({"objects": {"1": {"health": 100, "mass": 2.5, "motto": "onward",
        "cell": [12, -4], "range": [0.5, 2.25, 1.0], "isBoss": true, "nothing": null,
        "inventory": {"oil": 0.75}}}})",
        "1"};
    for(const char* const text: {"health", "100", "mass", "2.500", "motto", "onward", "cell", "-4",
            "range", "2.250", "isBoss", "nothing", "null", "inventory(1member)"})
        EXPECT_TRUE(inspector.shows(text)) << text;
    EXPECT_FALSE(inspector.shows("oil"));

    inspector.input.click(inspector.valueAt("isBoss"));
    EXPECT_EQ(inspector.host.value("/objects/1/isBoss"), "false");
    inspector.input.click(inspector.at("inventory"));
    inspector.input.idle();
    EXPECT_TRUE(inspector.shows("oil"));
    inspector.input.doubleClick(inspector.valueAt("oil"));
    inspector.input.text("3");
    inspector.input.type(ImGuiKey_Enter);
    EXPECT_EQ(inspector.host.value("/objects/1/inventory/oil"), "3.0");
}

TEST(InspectorUnknownTest, LongListIsCut) {
    std::string json = R"({"objects": {"1": {"list": [)";
    for(int i = 0; i != 300; ++i)
        json += (i ? "," : "") + std::to_string(i);
    Inspector inspector{json + "]}}}", "1"};
    inspector.input.click(inspector.at("list"));
    inspector.input.moveTo({100.0f, 1000.0f});
    inspector.input.wheel(-10'000.0f);
    inspector.input.idle(5);
    EXPECT_TRUE(inspector.shows("...and44more"));
}

TEST(InspectorUnknownTest, AnyShapeOfAnyMemberIsShownWithoutWriting) {
    const Utility::Warning redirectWarning{nullptr};
    for(const char* const json: {"null", "true", "7", "-1.5", "1e300", "18446744073709551615",
            "\"text\"", "[]", "[1]", "[1, \"2\", null]", "[1, 2, 3, 4, 5]", "[[1], {}]", "{}",
            R"({"a": {"b": [1, {"c": null}]}})"}) {
        std::string object;
        for(const char* const key: {"active", "animation", "color", "layers", "lightType",
                "material", "mesh", "name", "notes", "rotation", "scale", "shadows", "tags",
                "target", "texture", "translation", "type", "other"})
            object += (object.empty() ? "\"" : ",\"") + std::string{key} + "\":" + json;
        Inspector inspector{R"({"objects": {"1": {)" + object + "}}}", "1"};
        EXPECT_EQ(inspector.host.changes().changeCount(), 0) << json;
        EXPECT_STREQ(inspector.host.ui().scope.data(), "") << json;
        EXPECT_TRUE(inspector.shows("notes")) << json;
    }
    for(const char* const json: {"[]", "null", R"({"objects": []})", R"({"objects": {"1": 5}})",
            R"({"objects": [{"name": "element"}]})"}) {
        Inspector inspector{json, "1"};
        EXPECT_TRUE(inspector.shows("Noobjectisselected.")) << json;
    }
}

}}
