#include <atomic>
#include <cstdlib>
#include <new>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>

#include "plugins/console/Test/ConsolePanel.h"
#include "testing/HeadlessFrameDrawing.h"

/* Counts what a frame allocates, by the operators of C++ and by Dear ImGui */

using namespace QuillmereEngine;
using namespace QuillmereEngine::Testing;

namespace {

std::atomic<int> allocationCount{0};

void* countedAllocation(const std::size_t size) {
    ++allocationCount;
    void* const out = std::malloc(size ? size : 1);
    if(!out)
        std::abort();
    return out;
}

}

void* operator new(const std::size_t size) { return countedAllocation(size); }
void* operator new[](const std::size_t size) { return countedAllocation(size); }
void operator delete(void* const data) noexcept { std::free(data); }
void operator delete[](void* const data) noexcept { std::free(data); }
void operator delete(void* const data, std::size_t) noexcept { std::free(data); }
void operator delete[](void* const data, std::size_t) noexcept { std::free(data); }

namespace {

class ConsoleAllocationTest: public testing::Test {
protected:
    ConsoleAllocationTest() {
        for(int i = 0; i != 5000; ++i) {
            const std::string tag = i % 3 ? "[info]" : "[error]";
            panel->consoleLines().append(
                ("[2024-03-07 09:05:02.045]" + tag + " line " + std::to_string(i)).c_str(), -1);
        }
        panel->settle();
    }

    ~ConsoleAllocationTest() override { delete panel; }

    int countInFrames() {
        panel->input.idle(20);
        const int before = allocationCount;
        panel->input.idle(20);
        return allocationCount - before;
    }

    static void* allocate(const std::size_t size, void*) { return countedAllocation(size); }
    static void release(void* const data, void*) { std::free(data); }

    /* Before the panel, which makes the context */
    const bool isHooked = [] {
        ImGui::SetAllocatorFunctions(allocate, release);
        return true;
    }();
    ConsolePanel* const panel = new ConsolePanel;
};

TEST_F(ConsoleAllocationTest, CounterSeesBothKinds) {
    const int before = allocationCount;
    ImGui::MemFree(ImGui::MemAlloc(1));
    delete new StringArray;
    EXPECT_EQ(allocationCount - before, 2);
}

TEST_F(ConsoleAllocationTest, InactiveFrameAllocatesNothing) { EXPECT_EQ(countInFrames(), 0); }

TEST_F(ConsoleAllocationTest, FilteredFrameAllocatesNothing) {
    for(const DrawnQuad& i: drawnQuads("Console"))
        if(i.glyph == 'W') {
            panel->input.click(i.min);
            break;
        }
    EXPECT_EQ(countInFrames(), 0);
}

TEST_F(ConsoleAllocationTest, ActiveFrameAllocatesNothing) {
    panel->input.click({600.0f, 400.0f});
    panel->input.type(ImGuiKey_A, ImGuiKeyModFlags_Ctrl);
    ASSERT_TRUE(panel->frame.io().WantTextInput);
    EXPECT_EQ(countInFrames(), 0);
}

}
