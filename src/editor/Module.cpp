#include "editor/Module.h"

#include <exception>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <utility>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/PluginManager/Manager.hpp>
#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/DebugStl.h>

#include "QuillmereEditor/EditorView.h"
#include "QuillmereEditor/Tools/Log.h"
#include "editor/ModuleCopy.h"
#include "editor/consoleLog.h"
#include "host/AbstractModule.h"
#include "host/QuillmereEditorApplication.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

/* The plugin manager's messages as one line that names the original instead of the copy */
std::string oneLine(std::string text, const std::string& folder, const std::string& original) {
    while(!text.empty() && text.back() == '\n')
        text.pop_back();
    for(std::size_t i; (i = text.find('\n')) != std::string::npos;)
        text.replace(i, 1, "; ");
    for(std::size_t i; (i = text.find(folder)) != std::string::npos;)
        text.replace(i, folder.size(), original);
    return text;
}

}

Module::Module(std::string path, const PanelHost& host):
    _path{std::move(path)},
    _name{std::filesystem::path{_path}.stem().string()},
    _host{host} {}

Module::~Module() {
    try {
        if(_instance)
            _instance->unload(true);
    } catch(...) {
        /* It ends either way, and there is nothing to be kept */
    }
    destroy();
}

std::string Module::open(const ModuleCopy& copy) {
    CORRADE_ASSERT(!_manager, "Module::open(): expected" << _name << "to be closed", {});

    std::ostringstream messages;
    {
        Utility::Error redirectError{&messages};
        Utility::Warning redirectWarning{&messages};
        try {
            createPanel(copy.folder());
        } catch(const std::exception& error) {
            messages << error.what();
        } catch(...) {
            messages << "it threw an exception of an unknown type";
        }
    }
    if(_panel)
        return {};

    destroy();
    ensureLogCallback(*_host.application);
    const std::string folder = std::filesystem::path{_path}.parent_path().string();
    return oneLine(messages.str(), copy.folder(), folder);
}

void Module::createPanel(const std::string& folder) {
    _manager = Containers::pointer<Manager>(Containers::StringView{folder});
    _instance = _manager->loadAndInstantiate(_name);
    if(!_instance)
        return;
    if(const int type = _instance->moduleType(); type != int(ModuleType::EditorView))
        throw std::runtime_error{"expected a panel, module type " +
            std::to_string(int(ModuleType::EditorView)) + ", but got type " + std::to_string(type)};
    bindPanel();
}

void Module::bindPanel() {
    auto& panel = static_cast<EditorView&>(*_instance);
    if(_state.data())
        panel.load(_state);
    else {
        panel.load();
        panel.init(_host.context, _host.data, _host.application);
    }
    _panel = &panel;
    _state = {};
}

void Module::close() {
    if(_instance)
        saveState();
    destroy();
    ensureLogCallback(*_host.application);
}

void Module::saveState() {
    try {
        _state = _instance->unload(false);
    } catch(const std::exception& error) {
        log(LogLevel::Error, ("Module " + _name + " lost its state: " + error.what()).c_str());
    }
    /* Here and not only after the file is closed, which takes a while */
    ensureLogCallback(*_host.application);
}

void Module::destroy() {
    /* Their code is the module's, also that which destroys them */
    if(_instance)
        _host.application->forgetChangeHandlers(*_instance);
    _panel = nullptr;
    _instance = nullptr;
    _manager = nullptr;
}

}
