#include "plugins/outline/OutlineView.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>

#include "testing/HeadlessFrameDrawing.h"
#include "testing/InputDriver.h"
#include "testing/ProjectHost.h"

namespace QuillmereEngine { namespace {

constexpr const char* Project = R"({
    "objects": {
        "1": {"name": "Island"},
        "2": {"name": "Tower", "mesh": "box"},
        "3": {"name": "Tower"},
        "4": {"name": "Pier", "deleted": true},
        "5": {"name": "a##b"},
        "lamp": {}
    },
    "meshes": {"box": {"name": "Box"}, "ball": {"name": "Ball"}}
})";

constexpr float RowHeight = 17.0f;

struct Outline {
    explicit Outline(const std::string& json): host{json} {
        host.init(view);
        input.idle(3);
    }
    ~Outline() { view.deinit(); }

    void draw() {
        ImGui::SetNextWindowPos({0.0f, 0.0f});
        ImGui::SetNextWindowSize({400.0f, 600.0f});
        view.draw();
        /* Where the panel's resources are dropped */
        ImGui::SetNextWindowPos({500.0f, 0.0f});
        ImGui::SetNextWindowSize({400.0f, 200.0f});
        ImGui::Begin("Selectors");
        host.ui().pushScope("objects").pushScope("2");
        host.ui().selectResource("mesh", "meshes", false);
        host.ui().selectResource("target", "objects", false);
        host.ui().popScope().popScope();
        ImGui::End();
    }

    ImVec2 at(const std::string& text, const char* const window = "Outline") {
        const std::optional<ImVec2> out = Testing::placeOfText(text, window);
        EXPECT_TRUE(out) << text << " isn't drawn in " << window;
        return out ? ImVec2{out->x + 3.0f, out->y + 3.0f} : ImVec2{};
    }

    bool shows(const std::string& text) { return bool(Testing::placeOfText(text, "Outline")); }

    Testing::ProjectHost host;
    OutlineView view{host.modules, "OutlineView"};
    Testing::InputDriver input{host.frame, [this] { draw(); }};
};

struct OutlineViewTest: ::testing::Test, Outline {
    OutlineViewTest(): Outline{Project} {}
};

TEST_F(OutlineViewTest, ObjectsAreListedInTheirOrder) {
    const float island = at("Island").y, tower = at("Tower").y, pier = at("Pier").y;
    EXPECT_LT(island, tower);
    EXPECT_LT(tower, pier);
}

TEST_F(OutlineViewTest, NameIsShownWholeAndKeyWhereThereIsNone) {
    EXPECT_TRUE(shows("a##b"));
    EXPECT_TRUE(shows("lamp"));
}

TEST_F(OutlineViewTest, ClickSelects) {
    input.click(at("Island"));
    EXPECT_EQ(host.data.selectedObject, "1");
    input.click(at("lamp"));
    EXPECT_EQ(host.data.selectedObject, "lamp");
    EXPECT_EQ(host.changes().changeCount(), 0);
}

TEST_F(OutlineViewTest, ObjectsOfOneNameAreToldApart) {
    input.click(at("Tower"));
    EXPECT_EQ(host.data.selectedObject, "3");
    const ImVec2 lower = at("Tower");
    input.click({lower.x, lower.y - RowHeight});
    EXPECT_EQ(host.data.selectedObject, "2");
}

TEST_F(OutlineViewTest, SelectedRowIsFilled) {
    input.click(at("Island"));
    input.moveTo({450.0f, 700.0f});
    const ImU32 color = ImGui::GetColorU32(ImGuiCol_TabActive);
    const auto rows = Testing::drawnRectangles(color, "Outline");
    ASSERT_EQ(rows.size(), 1);
    EXPECT_LE(rows[0].min.y, at("Island").y);
    EXPECT_GE(rows[0].max.y, at("Island").y);
}

TEST_F(OutlineViewTest, DeletedObjectIsDimmedAndSaysSo) {
    const auto dimmed = Testing::drawnGlyphs(ImGui::GetColorU32(ImGuiCol_TextDisabled), "Outline");
    std::string text;
    for(const Testing::DrawnQuad& quad: dimmed)
        text += char(quad.glyph);
    EXPECT_EQ(text, "Pier");
    input.moveTo(at("Pier"));
    input.idle(2);
    EXPECT_TRUE(Testing::placeOfText("Deleted"));
}

TEST_F(OutlineViewTest, ClickPicksWhileASelectorWaits) {
    host.data.selectedObject = "1";
    host.ui().pickingId = 12345;
    input.idle();
    input.click(at("Pier"));
    EXPECT_EQ(host.data.selectedObject, "1");
    EXPECT_STREQ(host.ui().pickedObject, "4");
    EXPECT_EQ(host.ui().pickedObject, host.data.pickedObject.c_str());
}

TEST_F(OutlineViewTest, PickGoesToTheSelector) {
    const auto button = Testing::placeOfText("-none-", "Selectors");
    ASSERT_TRUE(button);
    /* The selector's button is right of its combo box, behind the arrow */
    for(float x = 890.0f; x > 800.0f && !host.ui().pickingId; x -= 8.0f)
        input.click({x, button->y + 5.0f});
    ASSERT_TRUE(host.ui().pickingId);
    input.idle();
    EXPECT_TRUE(shows("Clickanobject,Escapetostop"));
    input.click(at("Island"));
    EXPECT_EQ(host.value("/objects/2/target"), "\"1\"");
    EXPECT_EQ(host.ui().pickingId, 0);
    EXPECT_EQ(host.ui().pickedObject, nullptr);
    EXPECT_EQ(host.data.selectedObject, "");
    input.idle();
    EXPECT_FALSE(shows("Clickanobject,Escapetostop"));
}

TEST_F(OutlineViewTest, EscapeStopsPicking) {
    host.ui().pickingId = 12345;
    input.idle();
    input.type(ImGuiKey_Escape);
    EXPECT_EQ(host.ui().pickingId, 0);
}

TEST_F(OutlineViewTest, ObjectIsDraggedOntoASelector) {
    const auto target = Testing::placeOfText("-none-", "Selectors");
    ASSERT_TRUE(target);
    input.drag(at("lamp"), {target->x + 5.0f, target->y + 5.0f});
    EXPECT_EQ(host.value("/objects/2/target"), "\"lamp\"");
    EXPECT_EQ(host.data.selectedObject, "");
}

/* Rows used to be told apart by their place */
TEST_F(OutlineViewTest, DraggedObjectStaysTheSameWhenRowsMove) {
    const auto target = Testing::placeOfText("-none-", "Selectors");
    ASSERT_TRUE(target);
    const ImVec2 from = at("Tower");
    input.moveTo(from);
    input.press();
    input.moveTo({from.x, from.y + 10.0f});
    host.changes().pushRemoval("/objects/1");
    input.moveTo({target->x + 5.0f, target->y + 5.0f});
    input.idle(2);
    input.release();
    EXPECT_EQ(host.value("/objects/2/target"), "\"3\"");
}

TEST_F(OutlineViewTest, NothingIsDraggedOrPickedForALockedHistory) {
    const auto target = Testing::placeOfText("-none-", "Selectors");
    ASSERT_TRUE(target);
    input.click(at("meshes"));
    const std::string before = host.document();
    host.changes().setLocked(true);
    input.drag(at("lamp"), {target->x + 5.0f, target->y + 5.0f});
    input.drag(at("Ball"), at("Box", "Selectors"));
    EXPECT_EQ(host.document(), before);
    host.ui().pickingId = 12345;
    input.idle();
    input.click(at("Island"));
    EXPECT_EQ(host.ui().pickedObject, nullptr);
    EXPECT_EQ(host.ui().pickingId, 12345);
    EXPECT_EQ(host.data.selectedObject, "");

    /* What isn't part of the document can still be done */
    host.ui().pickingId = 0;
    input.idle();
    input.click(at("Island"));
    EXPECT_EQ(host.data.selectedObject, "1");
    host.changes().setLocked(false);
    input.drag(at("lamp"), {target->x + 5.0f, target->y + 5.0f});
    EXPECT_EQ(host.value("/objects/2/target"), "\"lamp\"");
}

TEST_F(OutlineViewTest, ResourceIsDraggedOntoASelectorOfItsType) {
    EXPECT_FALSE(shows("Ball"));
    input.click(at("meshes"));
    const ImVec2 mesh = at("Box", "Selectors");
    input.drag(at("Ball"), mesh);
    EXPECT_EQ(host.value("/objects/2/mesh"), "\"ball\"");
    /* One of another type isn't taken */
    input.drag(at("Island"), mesh);
    EXPECT_EQ(host.value("/objects/2/mesh"), "\"ball\"");
    EXPECT_EQ(host.changes().changeCount(), 1);
}

TEST(OutlineViewDocumentTest, WhatIsNoObjectIsNotListed) {
    for(const char* const json: {"{}", "[]", "null", "{\"objects\": []}", "{\"objects\": {}}"}) {
        Outline outline{json};
        EXPECT_TRUE(outline.shows("Theprojecthasnoobjects.")) << json;
    }
    Outline odd{R"({"objects": {"1": 5, "2": null, "3": {"name": 7, "deleted": "yes"}}})"};
    for(const char* const key: {"1", "2", "3"})
        EXPECT_TRUE(odd.shows(key)) << key;
}

TEST(OutlineViewDocumentTest, ClosedProjectSaysSo) {
    Outline outline{"{}"};
    /* The selectors of the fixture would need a document */
    outline.host.project().document = nullptr;
    outline.host.frame.run(2, [&outline] { outline.view.draw(); });
    EXPECT_TRUE(outline.shows("Noprojectisopen."));
}

TEST(OutlineViewDocumentTest, WorkFollowsTheVisibleRows) {
    std::string json = "{\"objects\": {";
    for(int i = 0; i != 10'000; ++i)
        json += (i ? ", \"" : "\"") + std::to_string(i) + "\": {\"name\": \"Row\"}";
    Outline outline{json + "}}"};
    EXPECT_LT(Testing::drawnQuads("Outline").size(), 600 / 13 * 3 + 50);
    outline.input.moveTo({100.0f, 100.0f});
    outline.input.wheel(-100'000.0f);
    outline.input.idle(10);
    outline.input.click({100.0f, 590.0f - RowHeight});
    EXPECT_GT(std::atoi(outline.host.data.selectedObject.c_str()), 9'900);
}

}}
