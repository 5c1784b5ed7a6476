#include "QuillmereEditor/EditorView.h"

#include <cstring>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/PluginManager/Manager.h>
#include <Corrade/PluginManager/Manager.hpp>
#include <Corrade/Utility/Debug.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <imgui.h>

#include "QuillmereEditor/Tools/Log.h"
#include "QuillmereEditor/Ui.h"
#include "host/EditorData.h"
#include "host/Events.h"
#include "host/QuillmereEditorApplication.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using namespace Corrade;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::TemporaryFolder;

struct TestView: EditorView {
    using EditorView::_application;
    using EditorView::_editorData;
    using EditorView::EditorView;

    const char* title() const override { return "Test"; }
    void draw() override {}

    void init(ImGuiContext* const context, EditorData* const data,
        QuillmereEditorApplication* const application) override {
        calls.emplace_back("init");
        EditorView::init(context, data, application);
    }

    void deinit() override {
        calls.emplace_back("deinit");
        EditorView::deinit();
    }

    std::vector<std::string> calls;
};

/* A manager that knows a plugin by the name of "TestView", which is never opened */
struct EditorViewTest: ::testing::Test {
    EditorViewTest() {
        folder.write("TestView.so", "");
        folder.write("TestView.conf", "");
        manager.setPluginDirectory(folder.path());
        context = ImGui::CreateContext();
        ImGui::SetCurrentContext(nullptr);
    }

    ~EditorViewTest() override {
        setLogCallback(nullptr, nullptr);
        ImGui::DestroyContext(context);
    }

    void logSilently(const char* const message) {
        ::testing::internal::CaptureStdout();
        log(LogLevel::Info, message);
        ::testing::internal::GetCapturedStdout();
    }

    TemporaryFolder folder;
    PluginManager::Manager<AbstractModule> manager{folder.path()};
    ImGuiContext* context;
    EditorData data;
    QuillmereEditorApplication application;
    std::ostringstream debug;
    Utility::Debug redirectDebug{&debug};
};

TEST_F(EditorViewTest, ConstructedViewIsBoundToNothing) {
    TestView view{manager, "TestView"};
    EXPECT_EQ(view._editorData, nullptr);
    EXPECT_EQ(view._application, nullptr);
    EXPECT_EQ(view.moduleType(), 1);
}

TEST_F(EditorViewTest, InitNamesTheViewAndBindsIt) {
    TestView view{manager, "TestView"};
    view.init(context, &data, &application);
    EXPECT_EQ(debug.str(), "Initializing View: TestView\n");
    EXPECT_EQ(ImGui::GetCurrentContext(), context);
    EXPECT_EQ(view._editorData, &data);
    EXPECT_EQ(view._application, &application);
}

TEST_F(EditorViewTest, InitSendsTheLogToTheConsole) {
    TestView view{manager, "TestView"};
    view.init(context, &data, &application);
    EXPECT_EQ(getLogCallback().second, &application);
    logSilently("for the console");
    ASSERT_EQ(application.consoleLines.size(), 1);
    EXPECT_STREQ(application.consoleLines.get(0) + 25, "[info] for the console");
}

TEST_F(EditorViewTest, LogOfManyThreadsArrivesWhole) {
    TestView view{manager, "TestView"};
    view.init(context, &data, &application);
    ::testing::internal::CaptureStdout();
    std::vector<std::thread> threads;
    for(int thread = 0; thread != 4; ++thread)
        threads.emplace_back([] {
            for(int i = 0; i != 500; ++i)
                log(LogLevel::Info, "x");
        });
    for(int i = 0; i != 100; ++i) {
        const std::lock_guard<std::mutex> lock{application.logMutex};
        for(std::size_t line = 0; line != application.consoleLines.size(); ++line)
            ASSERT_STREQ(application.consoleLines.get(line) + 25, "[info] x");
    }
    for(std::thread& thread: threads)
        thread.join();
    ::testing::internal::GetCapturedStdout();
    EXPECT_EQ(application.consoleLines.size(), 2000);
}

TEST_F(EditorViewTest, DeinitRemovesTheCallbackAndKeepsThePointers) {
    TestView view{manager, "TestView"};
    view.init(context, &data, &application);
    view.deinit();
    EXPECT_EQ(getLogCallback(), (std::pair<LogCallback, void*>{nullptr, nullptr}));
    EXPECT_EQ(view._editorData, &data);
    EXPECT_EQ(view._application, &application);
    logSilently("for nobody");
    EXPECT_TRUE(application.consoleLines.isEmpty());
}

TEST_F(EditorViewTest, LastInitOrDeinitOfAnyViewWins) {
    TestView a{manager, "TestView"}, b{manager, "TestView"};
    QuillmereEditorApplication other;
    a.init(context, &data, &application);
    b.init(context, &data, &other);
    EXPECT_EQ(getLogCallback().second, &other);
    a.deinit();
    EXPECT_EQ(getLogCallback().first, nullptr);
}

TEST_F(EditorViewTest, LoadWithoutStateDoesNothing) {
    TestView view{manager, "TestView"};
    view.load({});
    view.load();
    EXPECT_THAT(view.calls, IsEmpty());
    EXPECT_THAT(debug.str(), IsEmpty());
    EXPECT_EQ(view._application, nullptr);
}

TEST_F(EditorViewTest, UnloadForGoodKeepsEverythingAsItIs) {
    TestView view{manager, "TestView"};
    view.init(context, &data, &application);
    const Containers::Array<char> state = view.unload(true);
    EXPECT_EQ(state.size(), 0);
    EXPECT_EQ(state.data(), nullptr);
    EXPECT_THAT(view.calls, ElementsAre("init"));
    EXPECT_EQ(getLogCallback().second, &application);
}

TEST_F(EditorViewTest, UnloadForAReloadGivesTheHostsPointersAndLetsGo) {
    TestView view{manager, "TestView"};
    view.init(context, &data, &application);
    const Containers::Array<char> state = view.unload(false);
    ASSERT_EQ(state.size(), 24);
    void* pointers[3];
    std::memcpy(pointers, state.data(), sizeof(pointers));
    EXPECT_THAT(pointers, ElementsAre(context, &data, &application));
    EXPECT_THAT(view.calls, ElementsAre("init", "deinit"));
    EXPECT_EQ(getLogCallback().first, nullptr);
}

/* Any other would lie in the module that's about to be closed */
TEST_F(EditorViewTest, StateIsFreedWithTheDefaultDeleter) {
    TestView view{manager, "TestView"};
    view.init(context, &data, &application);
    EXPECT_EQ(view.unload(false).deleter(), nullptr);
}

TEST_F(EditorViewTest, NextInstanceIsInitializedFromTheState) {
    Containers::Array<char> state;
    {
        TestView former{manager, "TestView"};
        former.init(context, &data, &application);
        state = former.unload(false);
    }
    ImGui::SetCurrentContext(nullptr);

    TestView view{manager, "TestView"};
    view.load(state);
    EXPECT_THAT(view.calls, ElementsAre("init"));
    EXPECT_EQ(ImGui::GetCurrentContext(), context);
    EXPECT_EQ(view._editorData, &data);
    EXPECT_EQ(view._application, &application);
    logSilently("after the reload");
    EXPECT_EQ(application.consoleLines.size(), 1);
}

TEST_F(EditorViewTest, EventsAndUpdateDoNothing) {
    TestView view{manager, "TestView"};
    MouseMoveEvent move;
    MouseEvent mouse;
    MouseScrollEvent scroll;
    KeyEvent key;
    ExitEvent exit;
    view.update();
    view.mouseMoveEvent(move);
    view.mousePressEvent(mouse);
    view.mouseReleaseEvent(mouse);
    view.mouseScrollEvent(scroll);
    view.keyPressEvent(key);
    view.keyReleaseEvent(key);
    view.exitEvent(exit);
    EXPECT_FALSE(
        move.accepted || mouse.accepted || scroll.accepted || key.accepted || exit.accepted);
    EXPECT_THAT(view.calls, IsEmpty());
}

TEST_F(EditorViewTest, GivesTheApplicationsObjects) {
    application.editor.emplace();
    application.ui.emplace();
    TestView view{manager, "TestView"};
    view.init(context, &data, &application);
    EXPECT_EQ(&view.editor(), application.editor.get());
    EXPECT_EQ(&view.ui(), application.ui.get());
}

/* A pointer to a virtual member function holds the function's place in the table, in bytes and
   plus one (Itanium C++ ABI, 2.3) */
template<class F> std::size_t slotOf(const F function) {
    std::ptrdiff_t parts[2];
    static_assert(sizeof(function) == sizeof(parts), "");
    std::memcpy(parts, &function, sizeof(parts));
    return std::size_t(parts[0] - 1) / sizeof(void*);
}

/* Modules that were built earlier call by place. The destructor has the places 0 and 1,
   canBeDeleted() 2. */
TEST(EditorViewTableTest, VirtualFunctionsKeepTheirPlaces) {
    using View = EditorView;
    void (View::*const loadState)(Containers::ArrayView<char>) = &View::load;
    void (AbstractModule::*const load)() = &AbstractModule::load;
    const std::size_t slots[]{slotOf(loadState), slotOf(load), slotOf(&View::unload),
        slotOf(&View::moduleType), slotOf(&View::title), slotOf(&View::init), slotOf(&View::deinit),
        slotOf(&View::draw), slotOf(&View::update), slotOf(&View::mouseMoveEvent),
        slotOf(&View::mousePressEvent), slotOf(&View::mouseReleaseEvent),
        slotOf(&View::mouseScrollEvent), slotOf(&View::keyPressEvent),
        slotOf(&View::keyReleaseEvent), slotOf(&View::exitEvent)};
    EXPECT_THAT(slots, ElementsAre(3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18));
}

using EditorViewDeathTest = EditorViewTest;

TEST_F(EditorViewDeathTest, InitWithANullPointerNamesTheFirstOfThem) {
    TestView view{manager, "TestView"};
    EXPECT_DEATH(view.init(nullptr, &data, &application),
        "^EditorView::init\\(\\): ImGuiContext was nullptr\n$");
    EXPECT_DEATH(view.init(nullptr, nullptr, nullptr),
        "^EditorView::init\\(\\): ImGuiContext was nullptr\n$");
    EXPECT_DEATH(
        view.init(context, nullptr, nullptr), "^EditorView::init\\(\\): EditorData was nullptr\n$");
    EXPECT_DEATH(view.init(context, &data, nullptr),
        "^EditorView::init\\(\\): QuillmereEditor was nullptr\n$");
}

TEST_F(EditorViewDeathTest, ViewThatIsNotInitializedHasNoEditorAndNoUi) {
    TestView view{manager, "TestView"};
    EXPECT_DEATH(view.editor(), "^EditorView::editor\\(\\): the view isn't initialized\n$");
    EXPECT_DEATH(view.ui(), "^EditorView::ui\\(\\): the view isn't initialized\n$");
}

TEST_F(EditorViewDeathTest, MissingEditorAborts) {
    TestView view{manager, "TestView"};
    view.init(context, &data, &application);
    EXPECT_DEATH(view.editor(), "^Containers::Pointer: the pointer is null\n$");
}

TEST_F(EditorViewDeathTest, MissingUiAborts) {
    TestView view{manager, "TestView"};
    view.init(context, &data, &application);
    EXPECT_DEATH(view.ui(), "^Containers::Pointer: the pointer is null\n$");
}

}}
