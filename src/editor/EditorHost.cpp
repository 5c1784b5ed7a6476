#include "editor/EditorHost.h"

#include <algorithm>
#include <exception>
#include <functional>
#include <string_view>
#include <thread>
#include <utility>

#include <imgui.h>
#include <imgui_internal.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/EditorView.h"
#include "QuillmereEditor/Tools/Log.h"
#include "QuillmereEditor/Ui.h"
#include "editor/BackEnd.h"
#include "editor/Fonts.h"
#include "editor/ProjectServer.h"
#include "editor/Shortcut.h"
#include "editor/StatusBar.h"
#include "editor/consoleLog.h"
#include "editor/files.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

using namespace std::chrono_literals;

/* After the last replayed input. Dear ImGui needs two or three until a window that appears has its
   final size, the rest is for tabs and scrolling that move by themselves. */
constexpr unsigned long long HeadlessSettleFrames = 10;

/* A pipe that is read headless has delivered what it has to deliver when it's quiet this long */
constexpr auto FeedQuietTime = 500ms;
constexpr auto LongestFeedWait = 10s;

Containers::Pointer<Editor> createEditor(Containers::Pointer<ServerSource> serverSource) {
    auto out = Containers::pointer<Editor>();
    out->serverSource = std::move(serverSource);
    out->javaScriptLines = Containers::pointer<StringArray>();
    return out;
}

std::size_t look(const ImDrawData& data) {
    std::size_t out = 0;
    const auto add = [&out](const void* const bytes, const std::size_t size) {
        out = out * 31 + std::hash<std::string_view>{}({static_cast<const char*>(bytes), size});
    };
    for(int i = 0; i != data.CmdListsCount; ++i) {
        const ImDrawList& list = *data.CmdLists[i];
        add(list.VtxBuffer.Data, std::size_t(list.VtxBuffer.size_in_bytes()));
        add(list.CmdBuffer.Data, std::size_t(list.CmdBuffer.size_in_bytes()));
    }
    return out;
}

WorkArea workArea() {
    const ImVec2 display = ImGui::GetIO().DisplaySize;
    return {int(display.x), int(display.y - statusBarHeight())};
}

}

EditorHost::EditorHost(BackEnd& backEnd, HostOptions options):
    _backEnd{backEnd},
    _options{std::move(options)},
    _replay{std::move(_options.replay)},
    _layout{_options.layoutFile} {
    auto server = Containers::pointer<ProjectServer>(
        *this, backEnd.isHeadless() ? StoreLog::Echo::Yes : StoreLog::Echo::No);
    _server = server.get();
    editor = createEditor(std::move(server));
    project = _options.project ? std::move(_options.project) : Containers::pointer<ProjectFile>();
    changeManager = Containers::pointer<ChangeManager>(*project);
    ui = Containers::pointer<Ui>();
    ui->project = project.get();
    ui->changeManager = changeManager.get();
    _session = std::make_unique<ProjectSession>(*project, *changeManager, _options.projectFile);
    _scriptLog = std::make_unique<StoreLog>(*this, *editor->javaScriptLines,
        _backEnd.isHeadless() ? StoreLog::Echo::Yes : StoreLog::Echo::No);
    _scriptProject = std::make_unique<ScriptProject>(*project, *changeManager);
    _scripts = std::make_unique<ScriptRunner>(*_scriptProject, *_scriptLog, scriptProgram(),
        ScriptLimits{}, [this] { _backEnd.wakeUp(); });
    ensureLogCallback(*this);
    openJournal();
    updateFonts();
    updateTitle();

    const PanelHost panelHost{ImGui::GetCurrentContext(), &_data, this};
    _modules = std::make_unique<ModuleLoader>(_options.modules, panelHost);
    _modules->loadAll(Clock::now());
}

EditorHost::~EditorHost() {
    _server->stop();
    /* Its group is committed, of which the modules may want to hear */
    _scripts = nullptr;
    _feed = nullptr;
    _modules = nullptr;
    setLogCallback(nullptr, nullptr);
}

/* Before any module, which may change the project */
void EditorHost::openJournal() {
    if(_backEnd.isHeadless())
        reportIdleJournal(_session->file());
    else
        _journal = std::make_unique<ProjectJournal>(
            *project, *changeManager, *_session, _options.projectIdentity);
}

void EditorHost::startFeed(FeedSource source) {
    _feed = std::make_unique<FeedReader>(std::move(source), [this] { consoleLinesChanged(); });
}

void EditorHost::startServer(const std::string& folder, const int port) {
    _server->start(folder, port);
}

void EditorHost::consoleLinesChanged() {
    if(!_hasNewLines.exchange(true))
        _backEnd.wakeUp();
}

bool EditorHost::run() {
    if(_feed && _backEnd.isHeadless())
        waitForFeed();
    runScript();

    const bool isAlwaysDrawing = _backEnd.isHeadless() || _options.frames;
    while(!isFinished()) {
        waitForEvents();
        if(_scripts->poll())
            _gate.request();
        waitForScript();
        _isClosed = hasUserClosed();
        if(_modules->poll(Clock::now()))
            _gate.request();
        /* For a screenshot there has to be one more picture that isn't shown yet */
        const bool isLastPictureNeeded = _isClosed && !_options.screenshot.empty();
        if(isAlwaysDrawing || isLastPictureNeeded || _gate.isDue(Clock::now()))
            drawFrame(Count::Yes);
    }
    _layout.saveIfChanged();
    /* There is nothing unsaved, or the user doesn't want it */
    if(_isClosed && _journal)
        _journal->discard();
    return _options.screenshot.empty() || writePng(_options.screenshot, _backEnd.capture());
}

void EditorHost::waitForFeed() {
    /* Whoever says how many frames there are decides when to stop looking at a pipe */
    if(!_feed->isRegularFile())
        return _options.frames ? void() : waitForPipe();
    while(!_feed->progress().isFinished) {
        _feed->waitForNeedOrEnd();
        if(_feed->neededFrames())
            drawFrame(Count::No);
    }
}

void EditorHost::waitForPipe() {
    const Clock::time_point start = Clock::now();
    Clock::time_point lastChange = start;
    for(FeedProgress seen = _feed->progress(); !seen.isFinished;) {
        if(_feed->neededFrames())
            drawFrame(Count::No);
        else
            std::this_thread::sleep_for(10ms);
        const FeedProgress now = _feed->progress();
        const Clock::time_point time = Clock::now();
        if(now.bytes != seen.bytes)
            lastChange = time;
        if(time - lastChange > FeedQuietTime || time - start > LongestFeedWait)
            return;
        seen = now;
    }
}

void EditorHost::runScript() {
    if(_options.script)
        _scripts->run(_options.scriptName, *_options.script, ScriptRunner::Result::Hide);
    _options.script = std::nullopt;
}

/* Headless the last frames show how a script ended, and before them it runs beside the input */
void EditorHost::waitForScript() {
    const bool isLast = _options.frames ? _data.frame + 1 >= *_options.frames
                                        : _replay.isFinished();
    if(_backEnd.isHeadless() && isLast)
        _scripts->waitForEnd();
}

void EditorHost::waitForEvents() {
    const Clock::time_point now = Clock::now();
    const bool isReplaying = _options.frames || !_replay.isFinished();
    _gate.setTextFocus(
        ImGui::GetIO().WantTextInput ? RedrawGate::TextFocus::Yes : RedrawGate::TextFocus::No);
    if(_backEnd.wait(
           isReplaying ? Clock::duration{} : _gate.pause(now, ModuleLoader::PollInterval)) ||
        isReplaying)
        _gate.request();
    if(_hasNewLines)
        _gate.requestForLines();
}

bool EditorHost::isFinished() const {
    if(_isClosed)
        return true;
    if(_options.frames)
        return _data.frame >= *_options.frames;
    return _backEnd.isHeadless() && _framesAfterReplay >= HeadlessSettleFrames;
}

bool EditorHost::hasUserClosed() {
    if(!_backEnd.isCloseRequested() && !std::exchange(_isQuitRequested, false))
        return false;
    const bool isAccepted = deliverToPanels(ExitEvent{});
    closeFailedPanels();
    if(!isAccepted && !_session->hasUnsavedChanges())
        return true;
    _backEnd.cancelClose();
    if(!isAccepted) {
        _quitQuestion.ask();
        _gate.request();
    }
    return false;
}

bool EditorHost::isAsking() const {
    return _quitQuestion.isAsked() || (_journal && _journal->isAsking());
}

void EditorHost::answerQuitQuestion() {
    const QuitAnswer answer = _quitQuestion.draw(
        _session->file().empty() ? "the new project" : _session->file());
    if(answer == QuitAnswer::Discard || (answer == QuitAnswer::Save && _session->save()))
        _isClosed = true;
}

void EditorHost::updateTitle() {
    const std::string title = _session->title();
    if(title != _title)
        _backEnd.setTitle(_title = title);
}

/* A panel that throws must not take the editor with it. It's closed once the frame is over, its
   windows are ended here. */
template<class F> void EditorHost::guarded(EditorView& panel, F call) {
    try {
        call();
        return;
    } catch(const std::exception& error) {
        _failures.push_back({&panel, error.what()});
    } catch(...) {
        _failures.push_back({&panel, "it threw an exception of an unknown type"});
    }
    if(ImGui::GetCurrentContext()->WithinFrameScope)
        ImGui::ErrorCheckEndFrameRecover(nullptr);
}

void EditorHost::closeFailedPanels() {
    for(const Failure& failure: std::exchange(_failures, {}))
        _modules->closeFailed(failure.panel, failure.problem);
}

void EditorHost::updateFonts() {
    const bool isFirst = _fontScale == 0.0f;
    _fontScale = _backEnd.scale();
    ImGuiIO& io = ImGui::GetIO();
    io.FontGlobalScale = 1.0f / _fontScale;
    for(const std::string& problem: buildFonts(*io.Fonts, editorFonts(), _fontScale))
        if(isFirst)
            log(LogLevel::Warn, problem.c_str());
    /* The first frame uploads them by itself */
    if(!isFirst)
        BackEnd::updateFontTexture();
}

void EditorHost::playInput() {
    _framesAfterReplay += _replay.isFinished();
    _replay.apply(static_cast<unsigned long>(_data.frame), ImGui::GetIO(), _replayedEvents);
}

void EditorHost::drawFrame(const Count count) {
    const Clock::time_point begin = Clock::now();
    if(_backEnd.scale() != _fontScale)
        updateFonts();
    _hasNewLines = false;
    _backEnd.beginFrame();
    if(count == Count::Yes)
        playInput();

    ImGui::NewFrame();
    drawContent();
    ImGui::Render();
    _backEnd.render();
    closeFailedPanels();
    _layout.saveIfDue();
    if(_feed)
        _feed->frameDrawn();
    if(count == Count::Yes)
        ++_data.frame;
    /* A picture that was shown can't be read back any more */
    if(_options.screenshot.empty() || !isFinished())
        _backEnd.present();
    _gate.drawn(begin, Clock::now(), look(*ImGui::GetDrawData()));
}

void EditorHost::drawContent() {
    const WorkArea area = workArea();
    _layout.arrange(area);
    deliverEvents();
    const std::vector<EditorView*> panels = _modules->panels();
    for(EditorView* const panel: panels)
        guarded(*panel, [&] { panel->update(); });
    for(EditorView* const panel: panels)
        guarded(*panel, [&] { panel->draw(); });
    if(panels.empty())
        drawEmptyArea(area);
    _scriptPanel.draw(*_scripts, *_scriptLog);
    _pickLimit.frameDrawn(*ui);
    if(_journal)
        _journal->drawQuestion();
    answerQuitQuestion();
    drawStatus();
    updateTitle();
    if(_journal)
        _journal->frameDrawn();
}

void EditorHost::drawStatus() {
    Status status;
    {
        const std::lock_guard<std::mutex> lock{logMutex};
        status.lineCount = consoleLines.size();
    }
    if(_feed)
        status.feed = _feed->progress();
    status.loadedModules = _modules->loadedModules();
    status.failedModules = _modules->failedModules();
    status.project = _session->name();
    drawStatusBar(status);
}

void EditorHost::drawEmptyArea(const WorkArea area) const {
    const std::string text =
        "No panel is loaded.\n\nPanels appear here as soon as their modules lie in\n" +
        _modules->folder();
    const ImVec2 size = ImGui::CalcTextSize(text.c_str());
    const ImVec2 corner{std::max((float(area.width) - size.x) * 0.5f, 8.0f),
        std::max((float(area.height) - size.y) * 0.5f, 8.0f)};
    ImGui::GetBackgroundDrawList()->AddText(
        corner, ImGui::GetColorU32(ImGuiCol_TextDisabled), text.c_str());
}

void EditorHost::deliverEvents() {
    PanelEvents events = _backEnd.takeEvents();
    const PanelEvents replayed = std::exchange(_replayedEvents, {});
    events.insert(events.end(), replayed.begin(), replayed.end());
    for(const PanelEvent& event: events) {
        const bool isAccepted = deliverToPanels(event);
        if(const auto* const key = std::get_if<KeyPress>(&event); key && !isAccepted)
            handleKey(key->event);
    }
}

bool EditorHost::deliverToPanels(PanelEvent event) {
    return deliver(event, _modules->panels(),
        [this](EditorView& panel, const std::function<void()>& call) { guarded(panel, call); });
}

/* While something is edited the keys are the field's, which has an undo of its own */
void EditorHost::handleKey(const KeyEvent& event) {
    if(ImGui::IsAnyItemActive() || isAsking())
        return;
    const ShortcutKey key = ImGui::GetIO().ConfigMacOSXBehaviors ? ShortcutKey::Super
                                                                 : ShortcutKey::Ctrl;
    switch(shortcutOf(event, key)) {
        case Shortcut::Undo:
            return _session->undo();
        case Shortcut::Redo:
            return _session->redo();
        case Shortcut::Save:
            _session->save();
            return;
        case Shortcut::Quit:
            _isQuitRequested = true;
            return;
        case Shortcut::None:
            return;
    }
}

}
