#include <functional>
#include <string>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>
#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/Test/UiPanel.h"
#include "QuillmereEditor/Tools/System.h"
#include "QuillmereEditor/Ui.h"
#include "host/ResourceManager.h"
#include "host/ValueAccess.h"
#include "testing/HeadlessFrameDrawing.h"

namespace QuillmereEngine { namespace {

using namespace Corrade;
using Testing::DrawnText;
using Testing::drawnTexts;
using Testing::UiPanel;

constexpr const char* Resources =
    R"("objects":{"o1":{"name":"Lamp"},"o2":{"name":"Old","deleted":true},"o3":{"name":"Lamp"},)"
    R"("o4":"plain"},"meshes":{"m1":{"name":"Cube"},"m2":{"name":"Ball"},"m3":7})";

struct MeshManager: AbstractResourceManager {
    const char* typeName() const override { return "meshes"; }
};

/* A reference called v */
struct UiResourcesTest: ::testing::Test {
    void show(const std::string& value, std::function<bool()> draw) {
        panel.setDocument("{" + std::string{Resources} + R"(,"v":)" + value + "}");
        panel.show([this, draw = std::move(draw)] {
            changed += draw();
            panel.mark();
        });
    }

    void showMesh(const std::string& value) {
        show(value, [this] { return panel.ui.selectResource("v", "meshes", false); });
    }

    void showObject(const std::string& value, const bool byName = false) {
        show(value, [this, byName] { return panel.ui.selectResource("v", "objects", byName); });
    }

    std::string value() const {
        const std::string document = panel.document();
        const std::size_t begin = document.rfind("\"v\":") + 4;
        return document.substr(begin, document.size() - begin - 1);
    }

    bool isShown(const std::string& text, const char* const window = "Panel") const {
        for(const DrawnText& drawn: drawnTexts(window))
            if(drawn.text == text)
                return true;
        return false;
    }

    static std::vector<std::string> items() {
        std::vector<std::string> out;
        for(const DrawnText& text: drawnTexts("##Combo_00"))
            out.push_back(text.text);
        return out;
    }

    /* In the value's column, whatever else is in the row */
    void open() { panel.input.click({panel.size.x * 0.33f + 20.0f, panel.box().center().y}); }

    void choose(const std::string& item) {
        open();
        panel.clickItem(item, "##Combo_00");
    }

    UiPanel panel;
    int changed = 0;
};

TEST_F(UiResourcesTest, NameOfTheReferredResourceIsShown) {
    showMesh(R"("m2")");
    EXPECT_TRUE(isShown("Ball"));
    EXPECT_TRUE(isShown("v"));
    panel.input.moveTo(panel.box().center());
    panel.input.idle(3);
    EXPECT_EQ(panel.tooltip(), "id:m2");
    panel.input.hold(ImGuiKeyModFlags_Ctrl);
    panel.input.idle(3);
    EXPECT_EQ(panel.tooltip(), "/v");
}

TEST_F(UiResourcesTest, NoReferenceIsNone) {
    showMesh("null");
    EXPECT_TRUE(isShown("-none-"));
    EXPECT_FALSE(isShown("?"));
    panel.input.moveTo(panel.box().center());
    panel.input.idle(3);
    EXPECT_EQ(panel.tooltip(), "");
    EXPECT_EQ(panel.warnings, "");
}

TEST_F(UiResourcesTest, AllResourcesAreListedInTheirOrder) {
    showMesh(R"("m2")");
    open();
    EXPECT_EQ(items(), (std::vector<std::string>{"-none-", "Cube", "Ball"}));
}

TEST_F(UiResourcesTest, ChoosingWritesTheId) {
    showMesh(R"("m2")");
    choose("Cube");
    EXPECT_EQ(panel.lastChange(), R"(Change /v: "m2" -> "m1")");
    EXPECT_EQ(changed, 1);
    choose("Ball");
    EXPECT_EQ(value(), R"("m2")");
    EXPECT_EQ(panel.manager.changeCount(), 2) << "never merged";
}

TEST_F(UiResourcesTest, ChoosingNoneWritesNull) {
    showMesh(R"("m2")");
    choose("-none-");
    EXPECT_EQ(panel.lastChange(), R"(Change /v: "m2" -> null)");
    EXPECT_EQ(changed, 1);
}

TEST_F(UiResourcesTest, ItemsTellTheirIds) {
    showMesh(R"("m2")");
    open();
    for(const DrawnText& text: drawnTexts("##Combo_00"))
        if(text.text == "Cube")
            panel.input.moveTo({text.position.x + 3.0f, text.position.y + 3.0f});
    panel.input.idle(3);
    EXPECT_EQ(panel.tooltip(), "id:m1");
}

TEST_F(UiResourcesTest, EqualNamesAreItemsOfTheirOwn) {
    showObject(R"("o1")");
    open();
    std::vector<ImVec2> positions;
    for(const DrawnText& text: drawnTexts("##Combo_00"))
        if(text.text == "Lamp")
            positions.push_back(text.position);
    ASSERT_EQ(positions.size(), 2u);
    panel.input.click({positions[1].x + 2.0f, positions[1].y + 4.0f});
    EXPECT_EQ(value(), R"("o3")");
}

TEST_F(UiResourcesTest, DanglingIdIsWarnedOf) {
    showMesh(R"("gone")");
    bool isWarningShown = false;
    for(const DrawnText& text: drawnTexts("Panel"))
        if(text.color == 0xff00ccff) {
            isWarningShown = true;
            panel.input.moveTo({text.position.x + 2.0f, text.position.y + 2.0f});
        }
    EXPECT_TRUE(isWarningShown);
    panel.input.idle(3);
    EXPECT_EQ(panel.tooltip(), "Unknownresource!");
    EXPECT_EQ(value(), R"("gone")");
    open();
    EXPECT_EQ(items().size(), 3u);
    panel.clickItem("Cube", "##Combo_00");
    EXPECT_EQ(value(), R"("m1")");
}

TEST_F(UiResourcesTest, NameWithoutResourceIsNoneWithoutAWarning) {
    show(R"("Gone")", [this] { return panel.ui.selectResourceName("v", "meshes"); });
    EXPECT_TRUE(isShown("-none-"));
    for(const DrawnText& text: drawnTexts("Panel"))
        EXPECT_NE(text.color, 0xff00ccff);
    EXPECT_EQ(value(), R"("Gone")");
}

TEST_F(UiResourcesTest, ChoosingByNameWritesTheName) {
    MeshManager manager;
    const std::function<bool()> draws[]{[&] { return panel.ui.selectResourceName("v", "meshes"); },
        [&] { return panel.ui.selectResourceName("v", manager); },
        [&] { return panel.ui.selectResource("v", manager, true); }};
    for(const auto& draw: draws) {
        show(R"("Ball")", draw);
        EXPECT_TRUE(isShown("Ball"));
        panel.input.moveTo(panel.box().center());
        panel.input.idle(3);
        EXPECT_EQ(panel.tooltip(), "id:m2");
        choose("Cube");
        EXPECT_EQ(panel.lastChange(), R"(Change /v: "Ball" -> "Cube")");
    }
}

/* The handler runs before the list ends, and sees the IDs that are left until then */
TEST_F(UiResourcesTest, ChosenKeyStaysAnIdUntilTheListEnds) {
    int idCount = 0;
    panel.manager.addChangeHandler(
        "v",
        [&](const Change&, Containers::ArrayView<const std::string>, void*) {
            idCount = ImGui::GetCurrentWindow()->IDStack.Size;
        },
        nullptr);
    int counts[2];
    for(const bool byName: {false, true}) {
        show(
            R"("Ball")", [this, byName] { return panel.ui.selectResource("v", "meshes", byName); });
        choose("Cube");
        counts[byName] = idCount;
    }
    EXPECT_EQ(counts[true], counts[false] + 1);
}

TEST_F(UiResourcesTest, ManagerNamesItsType) {
    MeshManager manager;
    show(R"("m2")", [&] { return panel.ui.selectResource("v", manager, false); });
    choose("Cube");
    EXPECT_EQ(value(), R"("m1")");
}

TEST_F(UiResourcesTest, FilterHidesResources) {
    show(R"("m2")", [this] {
        return panel.ui.selectResource("v", "meshes", false, [](ValueAccess& resource) {
            return std::string{resource["name"].asString()} == "Ball";
        });
    });
    open();
    EXPECT_EQ(items(), (std::vector<std::string>{"-none-", "Ball"}));
}

TEST_F(UiResourcesTest, DeletedObjectsAreHidden) {
    ObjectResourceManager manager;
    show(R"("o2")", [&] { return panel.ui.selectObjectResource("v", manager, false); });
    EXPECT_TRUE(isShown("Old")) << "a reference to one is shown all the same";
    open();
    EXPECT_EQ(items(), (std::vector<std::string>{"-none-", "Lamp", "Lamp"}));
}

/* Of which only what can be seen is drawn */
TEST_F(UiResourcesTest, LongListIsScrolledAndKeepsItsWidth) {
    const std::string longName(100, 'W');
    std::string json = R"({"meshes":{)";
    for(int i = 0; i != 500; ++i)
        json += "\"m" + std::to_string(i) + R"(":{"name":"Mesh)" + std::to_string(i) + "\"},";
    panel.setDocument(json + R"("last":{"name":")" + longName + R"("}},"v":null})");
    panel.show([this] {
        panel.ui.selectResource("v", "meshes", false);
        panel.mark();
    });
    open();
    EXPECT_LT(items().size(), 50u);
    ImGuiWindow& popup = *ImGui::GetCurrentContext()->OpenPopupStack.back().Window;
    const float width = popup.Size.x;
    EXPECT_GT(width, ImGui::CalcTextSize(longName.c_str()).x);

    ImGui::SetScrollY(&popup, popup.ScrollMax.y);
    panel.input.idle(3);
    EXPECT_EQ(items().back(), longName);
    EXPECT_FLOAT_EQ(popup.Size.x, width);
    panel.clickItem("Mesh499", "##Combo_00");
    EXPECT_EQ(value(), R"("m499")");
}

TEST_F(UiResourcesTest, TypeWithoutResourcesListsNone) {
    for(const char* const type: {"sounds", "v"}) {
        show(R"("m2")", [&] { return panel.ui.selectResource("v", type, false); });
        open();
        EXPECT_EQ(items(), (std::vector<std::string>{"-none-"}));
        panel.input.click({600.0f, 400.0f});
    }
}

TEST_F(UiResourcesTest, SelectorHasAMenu) {
    showMesh(R"("m2")");
    panel.input.moveTo(panel.box().center());
    panel.input.type(ImGuiKey_C, ImGuiKeyModFlags_Super);
    EXPECT_EQ(panel.frame.clipboard, R"("m2")");
}

/* The button is the last thing that a selector of objects draws */
TEST_F(UiResourcesTest, MenuOfAnObjectIsAtItsButton) {
    showObject(R"("o1")");
    panel.input.moveTo(panel.box().center());
    panel.input.type(ImGuiKey_C, ImGuiKeyModFlags_Super);
    EXPECT_EQ(panel.frame.clipboard, R"("o1")");
    panel.frame.clipboard.clear();
    panel.input.moveTo({panel.size.x * 0.33f + 20.0f, panel.box().center().y});
    panel.input.type(ImGuiKey_C, ImGuiKeyModFlags_Super);
    EXPECT_EQ(panel.frame.clipboard, "");
}

TEST_F(UiResourcesTest, WithoutLabelTheWidgetStartsTheRow) {
    const std::function<bool()> draws[]{
        [this] { return panel.ui.selectResource("v", "meshes", false); },
        [this] { return panel.ui.selectResource("v", "objects", false); },
        [this] { return panel.ui.fileSelect("v", "Title", {}); }};
    for(const auto& draw: draws) {
        show("null", draw);
        EXPECT_TRUE(isShown("v")) << &draw - draws;
        show("null", [&] {
            panel.ui.pushFlags(Ui::Flag::NoLabel);
            const bool result = draw();
            panel.ui.popFlags();
            return result;
        });
        EXPECT_FALSE(isShown("v")) << &draw - draws;
        const auto frames = Testing::drawnRectangles(ImGui::GetColorU32(ImGuiCol_FrameBg), "Panel");
        ASSERT_FALSE(frames.empty()) << &draw - draws;
        EXPECT_FLOAT_EQ(frames[0].min.x, ImGui::GetStyle().WindowPadding.x) << &draw - draws;
    }
}

TEST_F(UiResourcesTest, KeysWithSlashesAreFound) {
    panel.setDocument(R"({"meshes":{"a/b~c":{"name":"Odd"}},"v":"a/b~c"})");
    panel.show([this] {
        panel.ui.selectResource("v", "meshes", false);
        panel.mark();
    });
    EXPECT_TRUE(isShown("Odd"));
}

/* A change may move all that the list is drawn from: here the first value of its kind in the root */
TEST_F(UiResourcesTest, ReferenceThatIsNotThereYetCanBeChosen) {
    panel.setDocument("{" + std::string{Resources} + "}");
    for(const bool byName: {false, true}) {
        const char* const label = byName ? "byName" : "byId";
        panel.show([&] {
            panel.ui.selectResource(label, "meshes", byName);
            panel.mark();
        });
        choose("Ball");
        EXPECT_EQ(panel.lastChange(),
            byName ? R"(Create /byName: () -> "Ball")" : R"(Create /byId: () -> "m2")");
    }
}

/* Something of a type to drag, beside a selector */
struct UiDropTest: UiResourcesTest {
    void showWithSource(const char* const type, const bool byName, const std::string& data) {
        show(R"("m1")", [=] {
            ImGui::Button("Source");
            panel.mark("source");
            if(ImGui::BeginDragDropSource()) {
                ImGui::SetDragDropPayload(type, data.empty() ? nullptr : data.data(), data.size());
                ImGui::EndDragDropSource();
            }
            return panel.ui.selectResource("v", "meshes", byName);
        });
    }

    void drop() {
        panel.input.moveTo(panel.box("source").center());
        panel.input.press();
        panel.input.moveTo(panel.box().center());
        panel.input.idle(2);
        panel.input.release();
        panel.input.idle();
    }
};

TEST_F(UiDropTest, DroppedIdIsWritten) {
    showWithSource("meshes", false, std::string{"m2\0", 3});
    drop();
    EXPECT_EQ(panel.lastChange(), R"(Change /v: "m1" -> "m2")");
    EXPECT_EQ(changed, 1);
    EXPECT_EQ(panel.manager.changeCount(), 1);
}

TEST_F(UiDropTest, DroppedIdIsWrittenByNameToo) {
    showWithSource("meshes", true, std::string{"m2\0", 3});
    drop();
    EXPECT_EQ(value(), R"("m2")");
}

TEST_F(UiDropTest, OtherTypesAreNotTaken) {
    showWithSource("objects", false, std::string{"m2\0", 3});
    drop();
    EXPECT_EQ(panel.manager.changeCount(), 0);
}

TEST_F(UiDropTest, DataWithoutAnEndIsNoId) {
    for(const std::string& data: {std::string{"m2"}, std::string{}}) {
        showWithSource("meshes", false, data);
        drop();
        EXPECT_EQ(panel.manager.changeCount(), 0);
        EXPECT_EQ(changed, 0);
    }
}

/* The button is the last item of a selector of objects */
struct UiPickTest: UiResourcesTest {
    float buttonAlpha() const {
        for(const DrawnText& text: drawnTexts("Panel"))
            if(text.text == "?")
                return float(text.color >> 24) / 255.0f;
        return 0.0f;
    }
};

TEST_F(UiPickTest, PressWaitsUntilAnObjectIsPicked) {
    showObject(R"("o1")");
    const float alpha = buttonAlpha();
    panel.input.click(panel.box().center());
    EXPECT_NE(panel.ui.pickingId, 0u);
    EXPECT_EQ(panel.manager.changeCount(), 0);
    EXPECT_NEAR(buttonAlpha(), alpha * 0.5f, 0.01f);

    const std::string picked = "o3";
    panel.ui.pickedObject = picked.c_str();
    panel.input.idle();
    EXPECT_EQ(panel.lastChange(), R"(Change /v: "o1" -> "o3")");
    EXPECT_EQ(changed, 1);
    EXPECT_EQ(panel.ui.pickingId, 0u);
    EXPECT_EQ(panel.ui.pickedObject, nullptr);
    panel.input.idle(2);
    EXPECT_NEAR(buttonAlpha(), alpha, 0.01f);
    EXPECT_EQ(panel.manager.changeCount(), 1);
}

TEST_F(UiPickTest, WaitingButtonIsDisabled) {
    showObject(R"("o1")");
    panel.input.click(panel.box().center());
    const ImGuiID waiting = panel.ui.pickingId;
    panel.input.click(panel.box().center());
    EXPECT_EQ(panel.ui.pickingId, waiting);
    panel.input.moveTo(panel.box().center());
    panel.input.press();
    EXPECT_EQ(ImGui::GetCurrentContext()->ActiveId, 0u);
    panel.input.release();
}

TEST_F(UiPickTest, ObjectPickedInTheFrameOfThePressIsTaken) {
    showObject(R"("o1")");
    panel.ui.pickedObject = "o3";
    panel.input.idle(2);
    EXPECT_EQ(panel.manager.changeCount(), 0) << "nobody waits";
    panel.input.click(panel.box().center());
    EXPECT_EQ(value(), R"("o3")");
    EXPECT_EQ(panel.ui.pickingId, 0u);
}

TEST_F(UiPickTest, PickedByNameIsTheEntryItself) {
    for(const char* const picked: {"o4", "o1", "gone"}) {
        showObject(R"("Lamp")", true);
        panel.input.click(panel.box().center());
        panel.ui.pickedObject = picked;
        panel.input.idle();
        EXPECT_EQ(value(), picked == std::string{"o4"} ? R"("plain")" : R"("")");
    }
}

TEST_F(UiPickTest, OnlyTheWaitingSelectorTakesIt) {
    panel.setDocument("{" + std::string{Resources} + R"(,"a":"o1","b":"o1"})");
    panel.show([this] {
        for(const char* const label: {"a", "b"}) {
            panel.ui.selectResource(label, "objects", false);
            panel.mark(label);
        }
    });
    panel.input.click(panel.box("b").center());
    panel.ui.pickedObject = "o3";
    panel.input.idle(2);
    EXPECT_EQ(panel.manager.changeCount(), 1);
    EXPECT_EQ(panel.lastChange(), R"(Change /b: "o1" -> "o3")");
}

TEST_F(UiPickTest, OtherTypesHaveNoButton) {
    showMesh(R"("m1")");
    EXPECT_FALSE(isShown("?"));
    showObject(R"("o1")");
    EXPECT_TRUE(isShown("?"));
}

TEST_F(UiPickTest, ButtonHasRoomInTheRow) {
    float comboRight = 0.0f;
    show(R"("o1")", [&] {
        ImGui::PushItemWidth(200.0f);
        const bool result = panel.ui.selectResource("v", "objects", false);
        ImGui::PopItemWidth();
        return result;
    });
    for(const Testing::DrawnQuad& quad:
        Testing::drawnRectangles(ImGui::GetColorU32(ImGuiCol_FrameBg), "Panel"))
        comboRight = quad.max.x;
    const ImGuiStyle& style = ImGui::GetStyle();
    const float height = ImGui::GetFontSize() + 2.0f * style.FramePadding.y;
    const float width = panel.size.x - 2.0f * style.WindowPadding.x;
    const float left = width * 0.33f;
    EXPECT_GT(comboRight, 0.0f);
    EXPECT_LE(comboRight, left + 200.0f - height - style.ItemSpacing.x);
    EXPECT_NEAR(panel.box().min.x, left + 200.0f - height - 1.0f, 1.0f);
}

/* A path, and an answer in place of the desktop's dialog */
struct UiFileSelectTest: UiResourcesTest {
    UiFileSelectTest() { setDialogAnswer(answer, this); }
    ~UiFileSelectTest() override { setDialogAnswer(nullptr, nullptr); }

    static Containers::Array<std::string> answer(const DialogRequest& request, void* const test) {
        auto& self = *static_cast<UiFileSelectTest*>(test);
        ++self.asked;
        self.type = request.type;
        self.title = request.title;
        self.defaultPath = request.defaultPath;
        self.filters.assign(request.filters.begin(), request.filters.end());
        Containers::Array<std::string> out{Corrade::ValueInit, self.chosen.size()};
        for(std::size_t i = 0; i != out.size(); ++i)
            out[i] = self.chosen[i];
        return out;
    }

    void showFile(const std::string& json) {
        show(json, [this] {
            const char* const patterns[]{"Images", "*.png *.jpg"};
            return panel.ui.fileSelect("v", "Choose an image", patterns);
        });
    }

    void pressButton() { panel.input.click(panel.box().center()); }

    void clickField() {
        const Testing::ScreenBox button = panel.box();
        panel.input.click({button.min.x - 30.0f, button.center().y});
    }

    int asked = 0;
    DialogType type = DialogType::Folder;
    std::string title, defaultPath;
    std::vector<std::string> filters, chosen;
};

TEST_F(UiFileSelectTest, ChosenFileIsWrittenOnce) {
    showFile(R"("old/file.png")");
    EXPECT_TRUE(isShown("old/file.png"));
    chosen = {"new/file.png", "other.png"};
    pressButton();
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(type, DialogType::OpenFiles);
    EXPECT_EQ(title, "Choose an image");
    EXPECT_EQ(defaultPath, "old/file.png");
    EXPECT_EQ(filters, (std::vector<std::string>{"Images", "*.png *.jpg"}));
    EXPECT_EQ(panel.lastChange(), R"(Change /v: "old/file.png" -> "new/file.png")");
    EXPECT_EQ(panel.manager.changeCount(), 1);
    EXPECT_EQ(changed, 1);
}

TEST_F(UiFileSelectTest, ChosenFilesMerge) {
    panel.manager.pushChange("/objects", rapidjson::Value{0}, false);
    panel.manager.pushChange("/objects", rapidjson::Value{0}, false);
    showFile("null");
    for(const char* const file: {"a", "b"}) {
        chosen = {file};
        pressButton();
    }
    EXPECT_EQ(panel.lastChange(), R"(Change /v: null -> "b")");
    EXPECT_EQ(panel.manager.changeCount(), 3);
}

TEST_F(UiFileSelectTest, CancelledDialogWritesNothing) {
    showFile("null");
    pressButton();
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(defaultPath, "");
    EXPECT_EQ(value(), "null");
    EXPECT_EQ(panel.manager.changeCount(), 0);
    EXPECT_EQ(changed, 0);
}

TEST_F(UiFileSelectTest, TypingIsNotRecorded) {
    showFile(R"("file")");
    clickField();
    panel.input.type(ImGuiKey_End);
    const int before = changed;
    panel.input.text("s");
    EXPECT_GT(changed, before);
    EXPECT_EQ(panel.manager.changeCount(), 0);
    EXPECT_EQ(value(), R"("file")");
    panel.input.type(ImGuiKey_Enter);
    panel.input.idle(2);
    EXPECT_TRUE(isShown("file"));
}

/* The field is told of a byte more than the array's size */
TEST_F(UiFileSelectTest, LongTextStaysInTheBuffer) {
    showFile(R"("")");
    EXPECT_EQ(panel.ui.textBuffer.size(), 2);
    clickField();
    for(int i = 0; i != 300; ++i)
        panel.input.text("x");
    panel.input.text(std::string(1000, 'y').c_str());
    EXPECT_EQ(panel.manager.changeCount(), 0);
    EXPECT_EQ(panel.ui.textBuffer.data(), std::string(300, 'x') + std::string(1000, 'y'));
    EXPECT_GE(panel.ui.textBuffer.size(), 1301);
    EXPECT_LE(panel.ui.textBuffer.size(), 1310) << "one byte more at most for each edit that fit";
}

TEST_F(UiFileSelectTest, IdleFramesDontGrowTheBuffer) {
    showFile(R"("some/file.png")");
    const std::size_t size = panel.ui.textBuffer.size();
    const char* const data = panel.ui.textBuffer.data();
    panel.input.idle(10);
    EXPECT_EQ(panel.ui.textBuffer.size(), size);
    EXPECT_EQ(panel.ui.textBuffer.data(), data);
    EXPECT_GT(
        Containers::arrayCapacity<Containers::ArrayMallocAllocator>(panel.ui.textBuffer), size);
}

TEST_F(UiFileSelectTest, ButtonHasRoomInTheRow) {
    show(R"("file")", [&] {
        ImGui::PushItemWidth(200.0f);
        const bool result = panel.ui.fileSelect("v", "Title", {});
        ImGui::PopItemWidth();
        return result;
    });
    const auto frames = Testing::drawnRectangles(ImGui::GetColorU32(ImGuiCol_FrameBg), "Panel");
    ASSERT_EQ(frames.size(), 1u);
    const ImGuiStyle& style = ImGui::GetStyle();
    const float labelHeight = ImGui::GetFontSize() + 2.0f * style.FramePadding.y;
    EXPECT_NEAR(
        frames[0].max.x - frames[0].min.x, 200.0f - labelHeight - style.ItemSpacing.x - 1.0f, 0.5f);
    EXPECT_NEAR(panel.box().min.x, frames[0].max.x + style.ItemSpacing.x, 0.5f);
}

TEST_F(UiFileSelectTest, HasAPathButNoMenu) {
    showFile(R"("file")");
    panel.input.moveTo(panel.box().center());
    panel.input.press(1);
    panel.input.release(1);
    panel.input.idle(2);
    EXPECT_TRUE(ImGui::GetCurrentContext()->OpenPopupStack.empty());
    panel.input.hold(ImGuiKeyModFlags_Ctrl);
    panel.input.idle(3);
    EXPECT_EQ(panel.tooltip(), "/v");
}

}}
