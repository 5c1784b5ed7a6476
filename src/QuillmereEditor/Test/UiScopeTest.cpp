#include <algorithm>
#include <cstdint>
#include <string>

#include <Corrade/Containers/GrowableArray.h>
#include <gtest/gtest.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/Test/UiPanel.h"
#include "QuillmereEditor/Ui.h"

namespace QuillmereEngine { namespace {

using namespace Corrade;
using Testing::HeadlessFrame;

/* A window that's being drawn, as scopes are IDs, too */
struct UiScopeTest: ::testing::Test {
    UiScopeTest() {
        ImGui::SetCurrentContext(frame.context());
        ImGui::NewFrame();
        ImGui::Begin("Window");
        idsBefore = idCount();
    }

    ~UiScopeTest() override {
        ImGui::End();
        ImGui::Render();
    }

    static int idCount() { return ImGui::GetCurrentWindow()->IDStack.Size; }
    static ImGuiID currentId() { return ImGui::GetCurrentWindow()->IDStack.back(); }

    HeadlessFrame frame;
    Ui ui;
    int idsBefore = 0;
};

TEST_F(UiScopeTest, SegmentsAreAppendedAndRemoved) {
    ui.pushScope("objects");
    EXPECT_STREQ(ui.scope.data(), "/objects");
    ui.pushScope(3ul);
    EXPECT_STREQ(ui.scope.data(), "/objects/3");
    ui.popScope();
    EXPECT_STREQ(ui.scope.data(), "/objects");
    ui.popScope();
    EXPECT_STREQ(ui.scope.data(), "");
    EXPECT_EQ(idCount(), idsBefore);
}

TEST_F(UiScopeTest, CallsCanBeChained) {
    EXPECT_EQ(&ui.pushScope("a").pushScope(18446744073709551615ul), &ui);
    EXPECT_STREQ(ui.scope.data(), "/a/18446744073709551615");
    EXPECT_EQ(&ui.popScope().popScope(), &ui);
    EXPECT_STREQ(ui.scope.data(), "");
}

TEST_F(UiScopeTest, FirstSlashIsNotDoubled) {
    ui.pushScope("x").pushScope("/abs");
    EXPECT_STREQ(ui.scope.data(), "/x/abs");
    EXPECT_EQ(idCount(), idsBefore + 2);
    ui.popScope().popScope();
}

TEST_F(UiScopeTest, EachSegmentNeedsAPop) {
    ui.pushScope("a/b");
    EXPECT_STREQ(ui.scope.data(), "/a/b");
    EXPECT_EQ(idCount(), idsBefore + 2);
    ui.popScope();
    EXPECT_STREQ(ui.scope.data(), "/a");
    ui.popScope();
    EXPECT_STREQ(ui.scope.data(), "");
    EXPECT_EQ(idCount(), idsBefore);
}

TEST_F(UiScopeTest, SegmentsAreIdsOfTheirOwn) {
    ui.pushScope("a/b");
    const ImGuiID joined = currentId();
    ui.popScope().popScope();
    ImGui::PushID("a");
    ImGui::PushID("b");
    EXPECT_EQ(currentId(), joined);
    ImGui::PopID();
    ImGui::PopID();
}

TEST_F(UiScopeTest, EmptySegmentsInFrontAreNoIds) {
    ui.pushScope("//a");
    EXPECT_STREQ(ui.scope.data(), "//a");
    EXPECT_EQ(idCount(), idsBefore + 1);
    EXPECT_EQ(currentId(), ImGui::GetCurrentWindow()->IDStack[idsBefore]);
    ui.popScope();
    EXPECT_STREQ(ui.scope.data(), "/");
    EXPECT_EQ(idCount(), idsBefore);
    *ui.scope.data() = '\0';
}

TEST_F(UiScopeTest, EmptySegmentAtTheEndIsAnId) {
    ui.pushScope("a/");
    EXPECT_STREQ(ui.scope.data(), "/a/");
    EXPECT_EQ(idCount(), idsBefore + 2);
    ui.popScope();
    EXPECT_STREQ(ui.scope.data(), "/a");
    ui.popScope();
    EXPECT_STREQ(ui.scope.data(), "");
}

TEST_F(UiScopeTest, EmptyNameIsASegment) {
    ui.pushScope("");
    EXPECT_STREQ(ui.scope.data(), "/");
    EXPECT_EQ(idCount(), idsBefore + 1);
    ui.popScope();
    EXPECT_STREQ(ui.scope.data(), "");
}

TEST_F(UiScopeTest, IdIsThatOfTheLastSegmentInItsStack) {
    ImGui::PushID("a");
    const ImGuiID expected = ImGui::GetID("b");
    ImGui::PopID();
    unsigned int id = 0;
    ui.pushScope("a/b", &id);
    EXPECT_EQ(id, expected);
    EXPECT_EQ(currentId(), expected);
    ui.popScope().popScope();
    ui.pushScope("a", nullptr).popScope();
}

/* As with Dear ImGui's own IDs, so that an item may have the ID of what it's in */
TEST_F(UiScopeTest, ActiveIdOfTheLastSegmentStaysActive) {
    for(const bool wanted: {false, true}) {
        ImGui::SetActiveID(ImGui::GetID("a"), ImGui::GetCurrentWindow());
        unsigned int id = 0;
        for(int i = 0; i != 3; ++i) {
            ImGui::End();
            ImGui::Render();
            ImGui::NewFrame();
            ImGui::Begin("Window");
            ui.pushScope("a", wanted ? &id : nullptr).popScope();
        }
        EXPECT_EQ(ImGui::GetActiveID(), ImGui::GetID("a"));
    }
    ImGui::ClearActiveID();
}

TEST_F(UiScopeTest, IndexHasTheIdOfItsDigits) {
    unsigned int id = 0;
    const ImGuiID expected = ImGui::GetID("12");
    ui.pushScope(12ul, &id).popScope();
    EXPECT_EQ(id, expected);
}

TEST_F(UiScopeTest, BufferGrowsInStepsOf64) {
    ui.scope = Containers::Array<char>{Corrade::ValueInit, 10};
    ui.pushScope("345678");
    EXPECT_EQ(ui.scope.size(), 10);
    ui.pushScope("abc");
    EXPECT_STREQ(ui.scope.data(), "/345678/abc");
    EXPECT_EQ(ui.scope.size(), 74);
    EXPECT_TRUE(
        std::all_of(ui.scope.begin() + 11, ui.scope.end(), [](const char c) { return c == '\0'; }));
    EXPECT_TRUE(Containers::arrayIsGrowable<Containers::ArrayMallocAllocator>(ui.scope));
    ui.popScope().popScope();
}

TEST_F(UiScopeTest, BufferGrowsToWhatALongNameNeeds) {
    ui.scope = Containers::Array<char>{Corrade::ValueInit, 10};
    const std::string name(100, 'x');
    ui.pushScope(name.c_str());
    EXPECT_EQ(ui.scope.size(), 102);
    EXPECT_EQ(ui.scope.data(), "/" + name);
    ui.popScope();
    EXPECT_EQ(ui.scope.size(), 102);
}

TEST_F(UiScopeTest, BufferThatIsLargeEnoughStays) {
    ui.scope = Containers::Array<char>{Corrade::ValueInit, 5};
    const char* const data = ui.scope.data();
    ui.pushScope("abc");
    EXPECT_EQ(ui.scope.size(), 5);
    EXPECT_EQ(ui.scope.data(), data);
    EXPECT_STREQ(ui.scope.data(), "/abc");
    ui.popScope();
}

TEST_F(UiScopeTest, FlagsAddUpUntilTheyArePopped) {
    EXPECT_EQ(ui.flags, Ui::Flags{});
    ui.pushFlags(Ui::Flag::NoLabel);
    ui.pushFlags({});
    EXPECT_EQ(ui.flags, Ui::Flag::NoLabel);
    EXPECT_EQ(ui.flagStack.size(), 2);
    ui.popFlags();
    EXPECT_EQ(ui.flags, Ui::Flag::NoLabel);
    ui.popFlags();
    EXPECT_EQ(ui.flags, Ui::Flags{});
    EXPECT_TRUE(ui.flagStack.isEmpty());
    EXPECT_TRUE(Containers::arrayIsGrowable<Containers::ArrayMallocAllocator>(ui.flagStack));
}

TEST_F(UiScopeTest, FlagsKeepAllBits) {
    ui.pushFlags(Ui::Flag(0x80000000u));
    EXPECT_EQ(std::uint32_t(ui.flags), 0x80000000u);
    ui.popFlags();
}

using UiScopeDeathTest = UiScopeTest;

TEST_F(UiScopeDeathTest, PopWithoutPush) {
    EXPECT_DEATH(ui.popScope(), "^Ui::popScope\\(\\): push/pop mismatch\n$");
    ui.pushScope("a").popScope();
    EXPECT_DEATH(ui.popScope(), "^Ui::popScope\\(\\): push/pop mismatch\n$");
}

TEST_F(UiScopeDeathTest, PopOfFlagsWithoutPush) {
    EXPECT_DEATH(ui.popFlags(), "^Containers::Array::back\\(\\): array is empty\n$");
}

struct TextResizeTest: ::testing::Test {
    int call(const int size, const int event = ImGuiInputTextFlags_CallbackResize) {
        ImGuiInputTextCallbackData data;
        data.EventFlag = event;
        data.BufSize = size;
        data.Buf = array.data();
        data.UserData = &array;
        const int result = Ui::textResizeCallback(&data);
        buffer = data.Buf;
        return result;
    }

    Containers::Array<char> array{Corrade::DirectInit, 4, 'x'};
    char* const before = array.data();
    const char* buffer = nullptr;
};

TEST_F(TextResizeTest, LargerSizeGrowsTheArray) {
    EXPECT_EQ(call(9), 0);
    EXPECT_EQ(array.size(), 9);
    EXPECT_EQ(buffer, array.data());
    EXPECT_EQ(std::string(array.data(), 9), std::string("xxxx\0\0\0\0\0", 9));
}

TEST_F(TextResizeTest, SmallerOrEqualSizeChangesNothing) {
    for(const int size: {-1, 0, 3, 4}) {
        EXPECT_EQ(call(size), 0);
        EXPECT_EQ(array.size(), 4);
        EXPECT_EQ(array.data(), before);
        EXPECT_EQ(buffer, before);
    }
}

TEST_F(TextResizeTest, OtherEventsChangeNothing) {
    EXPECT_EQ(call(9, ImGuiInputTextFlags_CallbackEdit), 0);
    EXPECT_EQ(array.size(), 4);
    EXPECT_EQ(buffer, before);
}

}}
