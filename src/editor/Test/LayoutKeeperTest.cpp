#include "editor/LayoutKeeper.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <imgui.h>

#include "QuillmereEditor/Tools/Log.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

struct LayoutKeeperTest: ::testing::Test {
    LayoutKeeperTest() {
        ImGuiIO& io = ImGui::GetIO();
        io.IniFilename = nullptr;
        unsigned char* pixels;
        int width, height;
        io.Fonts->GetTexDataAsRGBA32(&pixels, &width, &height);
    }

    ~LayoutKeeperTest() override { ImGui::DestroyContext(context); }

    /* One frame with one window. Gives the window's place in x, y and size in z, w. */
    ImVec4 frame(LayoutKeeper& keeper, const WorkArea area) {
        ImGuiIO& io = ImGui::GetIO();
        io.DisplaySize = {float(area.width), float(area.height) + 20.0f};
        io.DeltaTime = 1.0f;
        ImGui::NewFrame();
        keeper.arrange(area);
        ImGui::Begin("Panel");
        const ImVec2 position = ImGui::GetWindowPos(), size = ImGui::GetWindowSize();
        ImGui::End();
        ImGui::Render();
        keeper.saveIfDue();
        return {position.x, position.y, size.x, size.y};
    }

    Testing::TemporaryFolder folder;
    std::string file = folder.write("layout.ini",
        "[Window][Panel]\nPos=50,0\nSize=50,100\nCollapsed=0\n\n"
        "[Quillmere][WorkArea]\nSize=100,100\n");
    ImGuiContext* context = ImGui::CreateContext();
};

void expectPlace(const ImVec4& place, const ImVec4& expected) {
    EXPECT_EQ(place.x, expected.x);
    EXPECT_EQ(place.y, expected.y);
    EXPECT_EQ(place.z, expected.z);
    EXPECT_EQ(place.w, expected.w);
}

TEST_F(LayoutKeeperTest, UsersLayoutIsFittedToTheArea) {
    LayoutKeeper keeper{file};
    expectPlace(frame(keeper, {600, 400}), {300.0f, 0.0f, 300.0f, 400.0f});
}

TEST_F(LayoutKeeperTest, WindowsFollowTheArea) {
    LayoutKeeper keeper{file};
    frame(keeper, {600, 400});
    expectPlace(frame(keeper, {1000, 800}), {500.0f, 0.0f, 500.0f, 800.0f});
}

TEST_F(LayoutKeeperTest, MinimizingAndBackChangesNothing) {
    LayoutKeeper keeper{file};
    frame(keeper, {600, 400});
    keeper.arrange({0, -20});
    expectPlace(frame(keeper, {600, 400}), {300.0f, 0.0f, 300.0f, 400.0f});
}

TEST_F(LayoutKeeperTest, ChangedLayoutIsKeptInAFolderThatIsMade) {
    const std::string kept = folder.file("data/QuillmereEngine/layout.ini");
    LayoutKeeper keeper{kept};
    frame(keeper, {600, 400});
    ImGui::SetWindowPos("Panel", {7.0f, 8.0f});
    frame(keeper, {600, 400});
    keeper.saveIfChanged();
    EXPECT_THAT(Testing::readFile(kept), ::testing::HasSubstr("[Window][Panel]\nPos=7,8\n"));
    EXPECT_THAT(
        Testing::readFile(kept), ::testing::HasSubstr("[Quillmere][WorkArea]\nSize=600,400\n"));
}

TEST_F(LayoutKeeperTest, WithoutAFileNothingIsKept) {
    LayoutKeeper keeper{""};
    frame(keeper, {600, 400});
    ImGui::SetWindowPos("Panel", {7.0f, 8.0f});
    frame(keeper, {600, 400});
    keeper.saveIfChanged();
    using Iterator = std::filesystem::directory_iterator;
    EXPECT_EQ(std::distance(Iterator{folder.path()}, Iterator{}), 1);
}

/* Logged lines from their level on */
std::vector<std::string> linesOf(const std::function<void()>& run) {
    std::vector<std::string> out;
    setLogCallback(
        [](const char* const line, void* const lines) {
            static_cast<std::vector<std::string>*>(lines)->push_back(line + 25);
        },
        &out);
    run();
    setLogCallback(nullptr, nullptr);
    return out;
}

TEST_F(LayoutKeeperTest, LayoutThatCanNotBeReadIsReportedAndLeftAlone) {
    const std::string unreadable = folder.file("folder");
    std::filesystem::create_directory(unreadable);
    LayoutKeeper keeper{unreadable};
    EXPECT_THAT(linesOf([&] {
        frame(keeper, {600, 400});
        ImGui::SetWindowPos("Panel", {7.0f, 8.0f});
        frame(keeper, {600, 400});
        keeper.saveIfChanged();
    }),
        ::testing::Contains("[warn] Can't read the layout " + unreadable + ": Is a directory"));
    EXPECT_TRUE(std::filesystem::is_empty(unreadable));
}

TEST_F(LayoutKeeperTest, MissingLayoutIsNotWorthALine) {
    LayoutKeeper keeper{folder.file("no/layout.ini")};
    EXPECT_THAT(linesOf([&] {
        frame(keeper, {600, 400});
    }),
        ::testing::Not(::testing::Contains(::testing::HasSubstr(folder.path()))));
}

}}
