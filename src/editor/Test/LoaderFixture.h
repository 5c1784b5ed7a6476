#ifndef Quillmere_editor_Test_LoaderFixture_h
#define Quillmere_editor_Test_LoaderFixture_h

#include <filesystem>
#include <mutex>
#include <string>
#include <vector>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>
#include <imgui.h>

#include "QuillmereEditor/EditorView.h"
#include "QuillmereEditor/Tools/Log.h"
#include "editor/ModuleLoader.h"
#include "editor/consoleLog.h"
#include "host/EditorData.h"
#include "host/QuillmereEditorApplication.h"
#include "moduleConf.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine {

/** @brief A host without pictures and a clock that a test sets */
struct LoaderFixture: ::testing::Test {
    LoaderFixture() {
        application.editor = Corrade::Containers::pointer<Editor>();
        ensureLogCallback(application);
    }

    ~LoaderFixture() override {
        setLogCallback(nullptr, nullptr);
        ImGui::DestroyContext(context);
    }

    /** @brief Put a fixture into the folder as a linker does that writes a new file and renames it */
    void install(const std::string& fixture, const std::string& name) {
        installFrom(QUILLMERE_FIXTURES "/" + fixture, name);
    }

    /** @brief The same with a module from any folder */
    void installFrom(const std::string& from, const std::string& name) {
        namespace Fs = std::filesystem;
        for(const char* const suffix: {".conf", ".so"}) {
            const std::string file = name + suffix;
            Fs::copy_file(from + "/" + file, folder.file(file + ".new"));
            Fs::rename(folder.file(file + ".new"), folder.file(file));
        }
    }

    /** @brief Let the `.conf` of an installed module claim something else */
    void claim(const std::string& name, const std::string& key, const std::string& value) {
        const std::string file = name + ".conf";
        folder.write(file, withValue(Testing::readFile(folder.file(file)), key, value));
    }

    /** @brief Let the loader look until a change has settled */
    bool settle(ModuleLoader& loader) {
        bool hasChanged = false;
        for(int i = 0; i != 2; ++i)
            hasChanged |= loader.poll(now += ModuleLoader::PollInterval);
        return hasChanged;
    }

    std::vector<std::string> titles(const ModuleLoader& loader) {
        std::vector<std::string> out;
        for(const EditorView* const panel: loader.panels())
            out.push_back(panel->title());
        return out;
    }

    /** @brief The console's lines without their time, that is from the level on */
    std::vector<std::string> lines() {
        const std::lock_guard<std::mutex> lock{application.logMutex};
        std::vector<std::string> out;
        for(std::size_t i = 0; i != application.consoleLines.size(); ++i)
            out.push_back(application.consoleLines.get(i) + 25);
        return out;
    }

    Testing::TemporaryFolder folder;
    ImGuiContext* context = ImGui::CreateContext();
    EditorData data;
    QuillmereEditorApplication application;
    PanelHost host{context, &data, &application};
    ModuleLoader::Clock::time_point now{std::chrono::hours{1}};
};

}

#endif
