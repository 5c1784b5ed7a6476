#include "editor/runEditor.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <utility>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/ScopeGuard.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/DebugStl.h>
#include <imgui.h>

#include "QuillmereEditor/Tools/Log.h"
#include "QuillmereEditor/Tools/System.h"
#include "editor/BackEnd.h"
#include "editor/CommandLine.h"
#include "editor/EditorHost.h"
#include "editor/Style.h"
#include "editor/files.h"
#include "host/ProjectFile.h"
#include "host/Version.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

using Utility::Error;

constexpr int ExitSuccess = 0;
/* script/run tells by it that there's no display */
constexpr int ExitNoRendering = 1;
constexpr int ExitBadInput = 2;

bool checkOptions(const CommandLine& line) {
    const bool isFolderMissing = line.serve && line.project.empty();
    if(isFolderMissing)
        Error{} << "quillmere-editor: --serve needs a project, whose folder it serves";
    return !isFolderMissing;
}

bool readReplay(const CommandLine& line, HostOptions& options) {
    if(line.input.empty())
        return true;
    std::string problem;
    const std::optional<std::string> text = readWholeFile(line.input, problem);
    if(!text) {
        Error{} << "quillmere-editor: can't read input" << line.input << Error::nospace << ":"
                << problem;
        return false;
    }
    std::optional<std::vector<ReplayEvent>> events = parseReplay(*text, line.input);
    if(events)
        options.replay = std::move(*events);
    return bool(events);
}

bool readScript(const CommandLine& line, HostOptions& options) {
    if(line.script.empty())
        return true;
    std::string problem;
    options.script = readWholeFile(line.script, problem);
    options.scriptName = line.script;
    if(!options.script)
        Error{} << "quillmere-editor: can't read script" << line.script << Error::nospace << ":"
                << problem;
    return bool(options.script);
}

bool loadProject(const CommandLine& line, HostOptions& options) {
    options.projectFile = line.project;
    if(line.project.empty())
        return true;
    options.project = Containers::pointer<ProjectFile>();
    return options.project->load(line.project, [&options](const Containers::StringView text) {
        options.projectIdentity = FileIdentity::of({text.data(), text.size()});
    });
}

bool findModules(const CommandLine& line, HostOptions& options) {
    options.modules = line.modules.empty() ? defaultModuleFolder() : line.modules;
    std::error_code error;
    if(std::filesystem::is_directory(options.modules, error))
        return true;
    Error{} << "quillmere-editor: module folder" << options.modules
            << (std::filesystem::exists(options.modules, error) ? "is not a folder"
                                                                : "does not exist");
    return false;
}

/* All that may be wrong is looked at before anything opens */
std::optional<HostOptions> checkInput(const CommandLine& line) {
    HostOptions options;
    options.screenshot = line.screenshot;
    options.frames = line.frames;
    if(!checkOptions(line) || !loadProject(line, options) || !readReplay(line, options) ||
        !readScript(line, options) || !findModules(line, options))
        return {};
    return options;
}

std::string projectFolder(const std::string& project) {
    const std::string folder = std::filesystem::path{project}.parent_path();
    return folder.empty() ? "." : folder;
}

std::unique_ptr<BackEnd> createBackEnd(const CommandLine& line) {
    using Display = CommandLine::Display;
    std::string problem;
    if(line.display != Display::Headless) {
        if(auto window = createWindowBackEnd(line.width, line.height, problem))
            return window;
        const bool isWindowNeeded = line.display == Display::Window;
        Error{} << (isWindowNeeded ? "quillmere-editor: no window:"
                                   : "quillmere-editor: no window, going on headless:")
                << problem;
        if(isWindowNeeded)
            return {};
    }
    auto out = createHeadlessBackEnd(line.width, line.height, problem);
    if(!out)
        Error{} << "quillmere-editor: can't render headless:" << problem;
    return out;
}

/* Nobody could answer a dialog of a run without a window, which would wait for that forever */
Containers::Array<std::string> cancelDialog(const DialogRequest& request, void*) {
    log(LogLevel::Warn, ("Headless, so this dialog is cancelled: " + request.title).c_str());
    return {};
}

int runHost(const CommandLine& line, HostOptions options, std::optional<FeedSource> feed) {
    ImGui::CreateContext();
    const Containers::ScopeGuard destroyContext{[] { ImGui::DestroyContext(); }};
    /* The layout has a keeper of its own */
    ImGui::GetIO().IniFilename = nullptr;
    setEditorStyle(ImGui::GetStyle());
    const std::unique_ptr<BackEnd> backEnd = createBackEnd(line);
    if(!backEnd)
        return ExitNoRendering;

    if(backEnd->isHeadless())
        setDialogAnswer(cancelDialog, nullptr);
    if(!backEnd->isHeadless() && !userDataFolder().empty())
        options.layoutFile = userDataFolder() + "/layout.ini";
    if(!line.logDir.empty())
        setLogDir(line.logDir.c_str());
    EditorHost host{*backEnd, std::move(options)};
    if(feed)
        host.startFeed(std::move(*feed));
    if(line.serve)
        host.startServer(projectFolder(line.project), *line.serve);
    return host.run() ? ExitSuccess : ExitBadInput;
}

}

int runEditor(const Containers::ArrayView<const char* const> arguments) {
    const std::optional<CommandLine> line = parseCommandLine(arguments);
    if(!line)
        return ExitBadInput;
    if(line->action == CommandLine::Action::ShowHelp) {
        std::fputs(commandLineHelp(), stdout);
        return ExitSuccess;
    }
    if(line->action == CommandLine::Action::ShowVersion) {
        std::puts("quillmere-editor " QUILLMERE_VERSION);
        return ExitSuccess;
    }

    std::optional<HostOptions> options = checkInput(*line);
    if(!options)
        return ExitBadInput;
    std::optional<FeedSource> feed = line->feed.empty() ? std::nullopt
                                                        : FeedSource::open(line->feed);
    if(!feed && !line->feed.empty())
        return ExitBadInput;
    return runHost(*line, std::move(*options), std::move(feed));
}

}
