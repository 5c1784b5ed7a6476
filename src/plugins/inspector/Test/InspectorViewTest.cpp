#include "plugins/inspector/InspectorView.h"

#include <sstream>
#include <stdexcept>
#include <string>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/Change.h"
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
            "texture": "lamp.png", "shadows": 1, "tags": ["night", "harbour"], "notes": "a\nb"
        },
        "2": {"name": "Boat"},
        "a/b~c": {"name": "Odd", "x/y~z": true, "": 7}
    },
    "meshes": {"box": {"name": "Box"}},
    "materials": {"brass": {"name": "Brass"}}
})";

struct Inspector {
    explicit Inspector(const std::string& json, const std::string& selected):
        host{json, {600.0f, 2000.0f}} {
        host.init(view);
        select(selected);
    }
    ~Inspector() { view.deinit(); }

    void draw() {
        ImGui::SetNextWindowPos({0.0f, 0.0f});
        ImGui::SetNextWindowSize({500.0f, 1900.0f});
        view.draw();
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
        ImGui::SetNextWindowPos({550.0f, 1950.0f});
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
            "range", "2.250", "isBoss", "nothing", "null", "inventory(1members)"})
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
