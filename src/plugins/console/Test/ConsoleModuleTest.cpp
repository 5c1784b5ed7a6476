#include <cstring>
#include <dlfcn.h>
#include <sstream>
#include <string>
#include <type_traits>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/PluginManager/Manager.hpp>
#include <Corrade/PluginManager/PluginMetadata.h>
#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>
#include <imgui.h>

#include "QuillmereEditor/EditorView.h"
#include "host/EditorData.h"
#include "host/QuillmereEditorApplication.h"
#include "plugins/console/ConsoleView.h"

using namespace Corrade;
using namespace QuillmereEngine;

namespace {

const std::string File = QUILLMERE_MODULE_DIR "/ConsoleView.so";

/* The module as the linker sees it */
class Module {
public:
    Module(): _handle{dlopen(File.c_str(), RTLD_NOW | RTLD_LOCAL)} {
        EXPECT_TRUE(_handle) << dlerror();
    }
    ~Module() { dlclose(_handle); }

    template<class Function> Function* entry(const char* const name) const {
        return reinterpret_cast<Function*>(dlsym(_handle, name));
    }

private:
    void* _handle;
};

TEST(ConsoleModuleTest, EntryPointsTellVersionAndInterface) {
    const Module module;
    EXPECT_EQ(module.entry<int()>("pluginVersion")(), 7);
    const char* const interface = module.entry<const char*()>("pluginInterface")();
    EXPECT_STREQ(interface, "com.quillmere.QuillmereEditor.AbstractModule/1.1");
    EXPECT_EQ(Containers::StringView{interface}, AbstractModule::pluginInterface());
    module.entry<void()>("pluginInitializer")();
    module.entry<void()>("pluginFinalizer")();
}

TEST(ConsoleModuleTest, InstancerMakesAPanel) {
    PluginManager::Manager<AbstractModule> manager{QUILLMERE_MODULE_DIR};
    const Module module;
    using Instancer = void*(PluginManager::AbstractManager&, const Containers::StringView&);
    auto* const panel = static_cast<EditorView*>(static_cast<AbstractModule*>(
        module.entry<Instancer>("pluginInstancer")(manager, "ConsoleView")));
    EXPECT_EQ(panel->plugin(), "ConsoleView");
    EXPECT_STREQ(panel->title(), "Console");
    EXPECT_EQ(panel->moduleType(), 1);
    EXPECT_FALSE(panel->canBeDeleted());
    panel->load();
    delete panel;
}

TEST(ConsoleModuleTest, ManagerLoadsAndUnloads) {
    std::ostringstream out;
    const Utility::Error redirectError{&out};
    PluginManager::Manager<AbstractModule> manager{QUILLMERE_MODULE_DIR};
    ASSERT_NE(manager.metadata("ConsoleView"), nullptr);
    for(int i = 0; i != 2; ++i) {
        {
            const Containers::Pointer<AbstractModule> panel = manager.loadAndInstantiate(
                "ConsoleView");
            ASSERT_TRUE(bool(panel));
            EXPECT_EQ(manager.unload("ConsoleView"), PluginManager::LoadState::Used);
        }
        EXPECT_EQ(manager.unload("ConsoleView"), PluginManager::LoadState::NotLoaded);
        EXPECT_EQ(dlopen(File.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr);
    }
}

/* What a reload does: the panel of the new instance is bound to the same host */
TEST(ConsoleModuleTest, StateSurvivesReload) {
    ImGuiContext* const context = ImGui::CreateContext();
    EditorData data;
    QuillmereEditorApplication application;
    PluginManager::Manager<AbstractModule> manager{QUILLMERE_MODULE_DIR};
    std::ostringstream out;
    const Utility::Debug redirectDebug{&out};
    Containers::Array<char> state;
    {
        Containers::Pointer<AbstractModule> panel = manager.loadAndInstantiate("ConsoleView");
        static_cast<EditorView&>(*panel).init(context, &data, &application);
        state = panel->unload(false);
    }
    ASSERT_EQ(manager.unload("ConsoleView"), PluginManager::LoadState::NotLoaded);
    EXPECT_EQ(state.size(), 24);
    ImGui::SetCurrentContext(nullptr);
    {
        Containers::Pointer<AbstractModule> panel = manager.loadAndInstantiate("ConsoleView");
        panel->load(state);
        EXPECT_EQ(ImGui::GetCurrentContext(), context);
        static_cast<EditorView&>(*panel).deinit();
    }
    EXPECT_EQ(out.str(), "Initializing View: ConsoleView\nInitializing View: ConsoleView\n");
    ImGui::DestroyContext(context);
}

/* In the Itanium C++ ABI a pointer to a virtual member function holds its place in the table, plus
   one */
template<class Function> std::size_t slot(const Function function) {
    std::size_t parts[2];
    static_assert(sizeof(function) == sizeof(parts), "expected the Itanium C++ ABI");
    std::memcpy(parts, &function, sizeof(parts));
    EXPECT_EQ(parts[0] % sizeof(void*), 1);
    return parts[0] / sizeof(void*);
}

/* Host and module may come from different builds, so the order is part of the interface. The two
   destructors come first. */
TEST(ConsoleModuleTest, VirtualFunctionsHaveTheirPlaces) {
    using Load = void (AbstractModule::*)(Containers::ArrayView<char>);
    using LoadNothing = void (AbstractModule::*)();
    EXPECT_EQ(slot(&PluginManager::AbstractPlugin::canBeDeleted), 2);
    EXPECT_EQ(slot(Load{&AbstractModule::load}), 3);
    EXPECT_EQ(slot(LoadNothing{&AbstractModule::load}), 4);
    EXPECT_EQ(slot(&AbstractModule::unload), 5);
    EXPECT_EQ(slot(&AbstractModule::moduleType), 6);
    EXPECT_EQ(slot(&EditorView::title), 7);
    EXPECT_EQ(slot(&EditorView::init), 8);
    EXPECT_EQ(slot(&EditorView::deinit), 9);
    EXPECT_EQ(slot(&EditorView::draw), 10);
    EXPECT_EQ(slot(&EditorView::update), 11);
    EXPECT_EQ(slot(&EditorView::mouseMoveEvent), 12);
    EXPECT_EQ(slot(&EditorView::mousePressEvent), 13);
    EXPECT_EQ(slot(&EditorView::mouseReleaseEvent), 14);
    EXPECT_EQ(slot(&EditorView::mouseScrollEvent), 15);
    EXPECT_EQ(slot(&EditorView::keyPressEvent), 16);
    EXPECT_EQ(slot(&EditorView::keyReleaseEvent), 17);
    EXPECT_EQ(slot(&EditorView::exitEvent), 18);
}

TEST(ConsoleModuleTest, ClassesDeriveFromOneAnother) {
    EXPECT_TRUE((std::is_base_of_v<EditorView, ConsoleView>));
    EXPECT_TRUE((std::is_base_of_v<AbstractModule, EditorView>));
    EXPECT_TRUE((std::is_base_of_v<PluginManager::AbstractPlugin, AbstractModule>));
    EXPECT_TRUE((std::has_virtual_destructor_v<ConsoleView>));
}

}
