#include "plugins/history/HistoryView.h"

#include <cmath>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "testing/HeadlessFrameDrawing.h"
#include "testing/InputDriver.h"
#include "testing/ProjectHost.h"

namespace QuillmereEngine { namespace {

using ::testing::ElementsAre;

constexpr float RowHeight = 17.0f;
constexpr float PanelWidth = 600.0f, PanelHeight = 400.0f;
constexpr const char* Rows = "rows";

struct HistoryViewTest: ::testing::Test {
    HistoryViewTest() { host.init(view); }
    ~HistoryViewTest() override { view.deinit(); }

    void draw() {
        ImGui::SetNextWindowPos({0.0f, 0.0f});
        ImGui::SetNextWindowSize({PanelWidth, PanelHeight});
        view.draw();
    }

    void push(const std::string& path, const int value, const bool merge = false) {
        host.changes().pushChange(path.c_str(), rapidjson::Value{value}, merge);
    }

    void push(const int count) {
        for(int i = 1; i <= count; ++i)
            push("/entry" + std::to_string(i), i);
    }

    /* Entries 1, 2-4 in a group, 5 */
    void pushGroup() {
        push("/entry1", 1);
        host.changes().beginGroup();
        for(int i = 2; i <= 4; ++i)
            push("/entry" + std::to_string(i), i);
        host.changes().commit();
        push("/entry5", 5);
    }

    ImVec2 at(const std::string& text) {
        const std::optional<ImVec2> out = Testing::placeOfText(text, Rows);
        EXPECT_TRUE(out) << text << " isn't drawn";
        return out ? ImVec2{out->x + 3.0f, out->y + 3.0f} : ImVec2{};
    }

    bool shows(const std::string& text) { return bool(Testing::placeOfText(text, Rows)); }

    void click(const std::string& text) {
        input.idle(2);
        input.click(at(text));
    }

    void filter(const char* const text) {
        input.click({100.0f, 35.0f});
        input.type(ImGuiKey_A, ImGuiKeyModFlags_Ctrl);
        input.type(ImGuiKey_Delete);
        input.text(text);
        input.idle(2);
    }

    /* Which entries are drawn in a colour, as they're spelled */
    std::string textIn(const ImU32 color) {
        std::string out;
        for(const Testing::DrawnQuad& quad: Testing::drawnGlyphs(color, Rows))
            out += char(quad.glyph);
        return out;
    }

    std::string dimmed() { return textIn(ImGui::GetColorU32(ImGuiCol_TextDisabled)); }

    /* Tops of the filled rows, which are those of the present state */
    std::vector<Testing::DrawnQuad> positions() {
        input.moveTo({PanelWidth + 100.0f, 100.0f});
        return Testing::drawnRectangles(ImGui::GetColorU32(ImGuiCol_TabActive), Rows);
    }

    bool isAtPosition(const std::string& text) {
        const auto rows = positions();
        const float y = at(text).y;
        return rows.size() == 1 && rows[0].min.y <= y && y <= rows[0].max.y;
    }

    ImGuiWindow* rowsWindow() {
        for(ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows)
            if(std::string{window->Name}.find("/rows_") != std::string::npos)
                return window;
        return nullptr;
    }

    std::size_t applied() { return host.changes().appliedCount(); }

    Testing::ProjectHost host{"{\"objects\": {\"1\": {\"name\": \"Tower\"}}}"};
    HistoryView view{host.modules, "HistoryView"};
    Testing::InputDriver input{host.frame, [this] { draw(); }};
};

TEST_F(HistoryViewTest, EmptyHistoryHasTheStateBeforeIt) {
    input.idle(2);
    EXPECT_TRUE(isAtPosition("Beforeallchanges"));
    EXPECT_FALSE(shows("Create"));
}

TEST_F(HistoryViewTest, ListsKindPathAndValues) {
    host.changes().pushChange("/objects/1/name", "Pier", false);
    push("/new", 7);
    host.changes().pushRemoval("/new");
    input.idle(2);
    EXPECT_LT(at("Change/objects/1/name\"Tower\"->\"Pier\"").y, at("Create/new7").y);
    EXPECT_LT(at("Create/new7").y, at("Remove/new7").y);
    EXPECT_LT(at("Beforeallchanges").y, at("Change").y);
}

TEST_F(HistoryViewTest, HugeValuesAreShownInShort) {
    host.changes().pushChange("/text", std::string(1'000'000, 'x').c_str(), false);
    rapidjson::Document array;
    array.SetArray();
    for(int i = 0; i != 10'000; ++i)
        array.PushBack(i, array.GetAllocator());
    host.changes().pushChange("/array", array, false);
    host.changes().pushChange(("/" + std::string(100'000, 'k') + "end").c_str(), array, false);
    input.idle(2);
    EXPECT_TRUE(shows("kkend"));
    EXPECT_LT(Testing::drawnQuads(Rows).size(), 500u);
    input.moveTo(at("/array"));
    input.idle(2);
    EXPECT_TRUE(Testing::placeOfText("Create/array"));
    EXPECT_LT(Testing::drawnQuads().size(), 1'500u);
}

TEST_F(HistoryViewTest, TooltipShowsWhatARowLeavesOut) {
    push("/short", 1);
    push("/" + std::string(60, 'k') + "/name", 2);
    host.changes().pushChange("/text", (std::string(80, 'x') + "end").c_str(), false);
    input.idle(2);
    input.moveTo(at("/short"));
    input.idle(2);
    EXPECT_FALSE(Testing::placeOfText("New:"));
    input.moveTo(at("/name"));
    input.idle(2);
    EXPECT_TRUE(Testing::placeOfText("Create/kkk"));
    EXPECT_TRUE(Testing::placeOfText("New:2"));
    input.moveTo(at("/text"));
    input.idle(2);
    EXPECT_TRUE(Testing::placeOfText("xxxend\""));
}

TEST_F(HistoryViewTest, LinesInPathsAndValuesStayInTheirRow) {
    host.changes().pushChange("/a\nb", "c\nd", false);
    input.idle(2);
    EXPECT_TRUE(shows("/a\\nb\"c\\nd\""));
}

TEST_F(HistoryViewTest, ClickWalksBackAndForth) {
    push(5);
    click("/entry2");
    EXPECT_EQ(applied(), 2u);
    EXPECT_EQ(host.value("/entry3"), "");
    EXPECT_TRUE(isAtPosition("/entry2"));
    click("/entry4");
    EXPECT_EQ(applied(), 4u);
    EXPECT_EQ(host.value("/entry4"), "4");
    click("Beforeallchanges");
    EXPECT_EQ(applied(), 0u);
    EXPECT_TRUE(isAtPosition("Beforeallchanges"));
    click("/entry5");
    EXPECT_EQ(applied(), 5u);
    EXPECT_EQ(host.changes().changeCount(), 5u);
}

TEST_F(HistoryViewTest, ClickIntoAGroupGoesToItsEnd) {
    pushGroup();
    click("/entry2");
    EXPECT_EQ(applied(), 4u);
    EXPECT_TRUE(isAtPosition("/entry4"));
    click("/entry1");
    click("/entry3");
    EXPECT_EQ(applied(), 4u);
}

TEST_F(HistoryViewTest, UndoneRowsAreDimmed) {
    push(3);
    input.idle(2);
    EXPECT_EQ(dimmed(), "");
    click("/entry1");
    input.idle();
    EXPECT_EQ(dimmed(), "Create/entry22Create/entry33");
}

TEST_F(HistoryViewTest, GroupHasABracket) {
    pushGroup();
    input.idle(2);
    const auto lines = Testing::drawnRectangles(ImGui::GetColorU32(ImGuiCol_TextDisabled), Rows);
    ASSERT_EQ(lines.size(), 5u) << "three pieces and two ends";
    const ImVec4 box = Testing::boundingBox(lines);
    EXPECT_GT(box.y, at("/entry1").y);
    EXPECT_LT(box.y, at("/entry2").y);
    EXPECT_GT(box.w, at("/entry4").y);
    EXPECT_LT(box.w, at("/entry5").y);
    EXPECT_LT(box.z, at("Create").x);
    /* One piece joins the next */
    float height = 0.0f;
    for(const Testing::DrawnQuad& line: lines)
        if(line.max.y - line.min.y > 1.0f)
            height += line.max.y - line.min.y;
    EXPECT_EQ(height, box.w - box.y);
}

TEST_F(HistoryViewTest, NeighbouringGroupsHaveTwoBracketsAndOneChangeNone) {
    for(int group = 0; group != 3; ++group) {
        host.changes().beginGroup();
        for(int i = 0; i != (group == 2 ? 1 : 2); ++i)
            push("/entry" + std::to_string(group * 2 + i), 1);
        host.changes().commit();
    }
    input.idle(2);
    const auto lines = Testing::drawnRectangles(ImGui::GetColorU32(ImGuiCol_TextDisabled), Rows);
    EXPECT_EQ(lines.size(), 8u) << "two pieces and two ends each";
}

TEST_F(HistoryViewTest, BracketJoinsWhatTheFilterLeaves) {
    pushGroup();
    filter("entry3");
    EXPECT_FALSE(shows("/entry2"));
    const auto lines = Testing::drawnRectangles(ImGui::GetColorU32(ImGuiCol_TextDisabled), Rows);
    EXPECT_EQ(lines.size(), 3u) << "both ends at one row, which isn't the whole group";
    click("/entry3");
    EXPECT_EQ(applied(), 4u);
}

TEST_F(HistoryViewTest, SavedStateIsMarked) {
    input.idle(2);
    EXPECT_NEAR(at("saved").y, at("Before").y, 4.0f);
    push(3);
    host.changes().markSave();
    push("/later", 1);
    input.idle(2);
    EXPECT_NEAR(at("saved").y, at("/entry3").y, 4.0f);
    EXPECT_EQ(at("2savedCreate/entry3").x, at("3Create/later").x) << "the values are in a column";
    /* The mark stays where it is, but not what was saved */
    host.changes().undoLast();
    push("/entry2", 5, true);
    input.idle();
    EXPECT_FALSE(shows("saved"));
}

TEST_F(HistoryViewTest, LockedHistoryIsDisabled) {
    push(3);
    input.idle(2);
    const ImVec2 first = at("/entry1");
    for(const bool isLocked: {true, false}) {
        host.changes().setLocked(isLocked);
        if(!isLocked)
            host.changes().beginGroup();
        input.idle();
        EXPECT_EQ(textIn(ImGui::GetColorU32(ImGuiCol_Text)), "");
        const ImU32 faded = ImGui::GetColorU32(ImGuiCol_Text, ImGui::GetStyle().DisabledAlpha);
        EXPECT_NE(textIn(faded), "");
        input.click(first);
        input.type(ImGuiKey_UpArrow);
        EXPECT_EQ(applied(), 3u);
    }
    host.changes().commit();
    input.click(first);
    EXPECT_EQ(applied(), 1u);
}

TEST_F(HistoryViewTest, FilterShowsMatchingPaths) {
    push(12);
    filter("ENTRY1");
    EXPECT_TRUE(shows("Beforeallchanges"));
    EXPECT_TRUE(shows("/entry1"));
    EXPECT_TRUE(shows("/entry12"));
    EXPECT_FALSE(shows("/entry2"));
    push("/entry13", 1);
    push("/entry2", 1);
    input.idle(2);
    EXPECT_TRUE(shows("/entry13"));
    EXPECT_FALSE(shows("/entry2"));
    filter("");
    EXPECT_TRUE(shows("/entry2"));
}

TEST_F(HistoryViewTest, ValueMergedIntoAFilteredEntryIsShown) {
    push("/a", 0);
    push("/entry1", 111);
    filter("entry");
    EXPECT_TRUE(shows("/entry1111"));
    push("/entry1", 222, true);
    ASSERT_EQ(host.changes().changeCount(), 2u);
    input.idle();
    EXPECT_TRUE(shows("/entry1222"));
    EXPECT_FALSE(shows("/entry1111"));
}

TEST_F(HistoryViewTest, PresentStateBetweenFilteredRowsIsALine) {
    push(5);
    filter("entry2");
    EXPECT_TRUE(positions().empty());
    const auto lines = Testing::drawnRectangles(ImGui::GetColorU32(ImGuiCol_NavHighlight), Rows);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_GT(lines[0].min.y, at("/entry2").y);
    EXPECT_LT(lines[0].min.y, at("/entry2").y + RowHeight);
    click("/entry2");
    EXPECT_EQ(applied(), 2u);
    EXPECT_TRUE(isAtPosition("/entry2"));
    EXPECT_TRUE(Testing::drawnRectangles(ImGui::GetColorU32(ImGuiCol_NavHighlight), Rows).empty());
}

TEST_F(HistoryViewTest, ArrowsGoFromStateToState) {
    pushGroup();
    click("/entry5");
    const std::size_t up[]{4, 1, 0, 0}, down[]{1, 4, 5, 5};
    for(const std::size_t state: up) {
        input.type(ImGuiKey_UpArrow);
        EXPECT_EQ(applied(), state);
    }
    for(const std::size_t state: down) {
        input.type(ImGuiKey_DownArrow);
        EXPECT_EQ(applied(), state);
    }
    filter("entry1");
    input.type(ImGuiKey_UpArrow);
    EXPECT_EQ(applied(), 5u) << "the arrow is the filter's";
    input.click({100.0f, PanelHeight - 20.0f});
    input.type(ImGuiKey_UpArrow);
    EXPECT_EQ(applied(), 1u);
}

TEST_F(HistoryViewTest, FollowsThePresentState) {
    push(1000);
    input.idle(3);
    EXPECT_TRUE(shows("/entry1000"));
    for(int i = 0; i != 900; ++i)
        host.changes().undoLast();
    input.idle(3);
    EXPECT_TRUE(isAtPosition("/entry100"));
    /* The user's scrolling isn't taken back while nothing changes */
    input.moveTo({100.0f, 200.0f});
    input.wheel(-1000.0f);
    input.idle(5);
    EXPECT_TRUE(shows("/entry1000"));
    host.changes().redoLastUndo();
    input.idle(3);
    EXPECT_TRUE(isAtPosition("/entry101"));
}

TEST_F(HistoryViewTest, WalkThatIsRefusedEnds) {
    push(2);
    host.changes().addChangeHandler(
        "entry2",
        [](const Change&, Corrade::Containers::ArrayView<const std::string>, void*) {
            throw std::runtime_error{"no"};
        },
        nullptr);
    click("Beforeallchanges");
    EXPECT_EQ(applied(), 1u);
    const std::lock_guard<std::mutex> lock{host.application.logMutex};
    ASSERT_EQ(host.application.consoleLines.size(), 1u);
    EXPECT_THAT(host.application.consoleLines.get(0),
        ::testing::HasSubstr("History: a handler of the project failed: no"));
}

TEST_F(HistoryViewTest, WorkFollowsTheVisibleRows) {
    for(int group = 0; group != 1000; ++group) {
        if(group % 2)
            host.changes().beginGroup();
        for(int i = 0; i != 100; ++i)
            push("/objects/" + std::to_string(group) + "/" + std::to_string(i), i);
        if(group % 2)
            host.changes().commit();
    }
    input.idle(4);
    const std::size_t visibleRows = std::size_t(PanelHeight / RowHeight) + 2;
    for(const char* const text: {"", "/9"}) {
        filter(text);
        for(const float scroll: {0.0f, 0.3f, 1.0f}) {
            ImGuiWindow* const window = rowsWindow();
            ASSERT_TRUE(window);
            ImGui::SetScrollY(window, std::floor(window->ScrollMax.y * scroll));
            input.idle(3);
            EXPECT_GT(window->ScrollMax.y, 10'000.0f);
            EXPECT_GT(Testing::drawnVertices(Rows).size(), 4 * 20 * visibleRows / 2);
            EXPECT_LT(Testing::drawnVertices(Rows).size(), 4 * 40 * visibleRows);
        }
    }
    /* The last row is one of the filter's, and it's where it's seen */
    click("/999/99");
    EXPECT_EQ(applied(), 100'000u);
    EXPECT_TRUE(isAtPosition("/999/99"));
}

TEST_F(HistoryViewTest, StacksAreBalancedInEachState) {
    const auto drawChecked = [this] {
        draw();
        const ImGuiContext& context = *ImGui::GetCurrentContext();
        EXPECT_EQ(context.CurrentWindowStack.Size, 1);
        EXPECT_EQ(context.ColorStack.Size, 0);
        EXPECT_EQ(context.StyleVarStack.Size, 0);
        EXPECT_EQ(context.DisabledStackSize, 0);
        EXPECT_EQ(context.CurrentWindow->IDStack.Size, 1);
    };
    host.frame.run(3, drawChecked);
    pushGroup();
    host.changes().undoLast();
    host.frame.run(3, drawChecked);
    host.changes().setLocked(true);
    host.frame.run(3, drawChecked);
    ImGui::SetWindowCollapsed("History", true);
    host.frame.run(3, drawChecked);
    ImGui::SetWindowCollapsed("History", false);
    host.application.changeManager = nullptr;
    host.frame.run(3, drawChecked);
    EXPECT_TRUE(Testing::placeOfText("Noprojectisopen.", "History"));
}

TEST_F(HistoryViewTest, ReloadedPanelFollowsTheSameHistory) {
    push(3);
    input.idle(2);
    const Corrade::Containers::Array<char> state = view.unload(false);
    HistoryView next{host.modules, "HistoryView"};
    {
        std::ostream* const silence = nullptr;
        const Corrade::Utility::Debug redirectDebug{silence};
        next.load(
            Corrade::Containers::ArrayView<char>{const_cast<char*>(state.data()), state.size()});
    }
    host.frame.run(3, [&next] { next.draw(); });
    EXPECT_TRUE(shows("/entry3"));
    next.deinit();
}

}}
