#include <atomic>
#include <cstddef>
#include <functional>
#include <string>

#include <gtest/gtest.h>
#include <imgui.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/Ui.h"
#include "host/ProjectFile.h"
#include "testing/HeadlessFrame.h"
#include "testing/sanitizer.h"

/* Counts what all of the process allocates, RapidJSON and Dear ImGui included. That takes the place
   of malloc() itself, which the sanitizers have taken already. */

namespace {

std::atomic<int> allocationCount{0};

}

#if defined(__GLIBC__) && !QUILLMERE_IS_SANITIZED
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* data, std::size_t size);

void* malloc(const std::size_t size) {
    ++allocationCount;
    return __libc_malloc(size);
}

void* calloc(const std::size_t count, const std::size_t size) {
    ++allocationCount;
    return __libc_calloc(count, size);
}

void* realloc(void* const data, const std::size_t size) {
    ++allocationCount;
    return __libc_realloc(data, size);
}
}
#endif

namespace QuillmereEngine { namespace {

using Testing::HeadlessFrame;

struct UiAllocationTest: ::testing::Test {
    UiAllocationTest() {
        ui.project = &project;
        ui.changeManager = &manager;
        rapidjson::MemoryPoolAllocator<>& pool = project.allocator();
        rapidjson::Value objects{rapidjson::kObjectType};
        for(int i = 0; i != 1000; ++i) {
            const std::string objectKey = id(i);
            rapidjson::Value object;
            object.SetObject();
            object.AddMember("number", rapidjson::Value{i}, pool);
            rapidjson::Value vector{rapidjson::kArrayType};
            for(int j = 0; j != 4; ++j)
                vector.PushBack(rapidjson::Value{0.5 * j}, pool);
            object.AddMember("vector", vector, pool);
            objects.AddMember(
                rapidjson::Value{objectKey.data(), rapidjson::SizeType(objectKey.size()), pool},
                object, pool);
        }
        project.document->AddMember("objects", objects, pool);
    }

    /* Longer than what a string holds without memory of its own */
    static std::string id(const int i) {
        return "C0FFEE00-0000-4000-8000-" + std::to_string(100000000000 + i);
    }

    void draw() {
        ImGui::Begin("Panel");
        ui.pushScope("objects").pushScope(key.c_str());
        ui.inputFloat("number");
        ui.inputInt("number", 1, 0);
        ui.inputFloat2("vector");
        ui.inputFloat3("vector");
        ui.inputFloat4("vector");
        ui.inputInt2("vector");
        ui.inputInt3("vector");
        ui.inputInt4("vector");
        ui.colorEdit3("vector");
        ui.colorEdit4("vector");
        ui.inputFloat("missing");
        ui.pushScope(12ul).popScope();
        ui.popScope().popScope();
        ImGui::End();
    }

    HeadlessFrame frame;
    ProjectFile project;
    ChangeManager manager{project};
    Ui ui;
    const std::string key = id(777);
};

TEST_F(UiAllocationTest, SteadyFrameAllocatesNothing) {
    const std::function<void()> content = [this] { draw(); };
    frame.run(10, content);
    const int before = allocationCount;
    frame.run(10, content);
    EXPECT_EQ(allocationCount - before, 0);
}

TEST_F(UiAllocationTest, CounterSeesAllKinds) {
    if(Testing::IsSanitized)
        GTEST_SKIP() << "malloc() belongs to the sanitizer";
    const int before = allocationCount;
    ImGui::MemFree(ImGui::MemAlloc(1));
    const rapidjson::Pointer pointer{"/a"};
    const std::string text(pointer.GetTokenCount() * 100, 'x');
    EXPECT_GE(allocationCount - before, 3) << text;
}

}}
