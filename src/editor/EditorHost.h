#ifndef Quillmere_editor_EditorHost_h
#define Quillmere_editor_EditorHost_h

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "editor/FeedReader.h"
#include "editor/InputReplay.h"
#include "editor/LayoutKeeper.h"
#include "editor/ModuleLoader.h"
#include "editor/PickLimit.h"
#include "editor/ProjectJournal.h"
#include "editor/ProjectSession.h"
#include "editor/QuitQuestion.h"
#include "editor/RedrawGate.h"
#include "editor/ScriptPanel.h"
#include "editor/ScriptProject.h"
#include "editor/ScriptRunner.h"
#include "editor/StoreLog.h"
#include "host/EditorData.h"
#include "host/ProjectFile.h"
#include "host/QuillmereEditorApplication.h"

namespace QuillmereEngine {

class BackEnd;
class ProjectServer;

/** @brief What the host is to do */
struct HostOptions {
    std::string modules;
    /** File of the project, empty for a new project without a file */
    std::string projectFile;
    /** What was loaded from it, null for a new one */
    Corrade::Containers::Pointer<ProjectFile> project;
    /** Of the file that @ref project was loaded from */
    std::optional<FileIdentity> projectIdentity;
    std::string screenshot;
    std::optional<unsigned long> frames;
    std::vector<ReplayEvent> replay;
    /** Script to run at the start, and its file as the user named it */
    std::optional<std::string> script;
    std::string scriptName;
    /** Empty to keep no layout of the user's own */
    std::string layoutFile;
};

/**
@brief The reference host: draws the panels of a folder's modules frame by frame

Expects a current Dear ImGui context that outlives it. UI thread.
*/
class EditorHost: public QuillmereEditorApplication {
public:
    /** @brief Builds the fonts and loads the modules */
    explicit EditorHost(BackEnd& backEnd, HostOptions options);

    ~EditorHost() override;

    /** @brief Start to log the lines of a file */
    void startFeed(FeedSource source);

    /**
    @brief Start to serve a folder over HTTP
    @param port 0 for any free one

    Lines of the "Server" store say where, or why not. Ends with the host, which a server doesn't
    keep running.
    */
    void startServer(const std::string& folder, int port);

    /**
    @brief Draw frames until the user closes the window or as many as asked for are drawn
    @return Whether the screenshot, if one was asked for, was written
    */
    bool run();

    /** @brief Wakes the UI thread. Any thread. */
    void consoleLinesChanged() override;

private:
    using Clock = std::chrono::steady_clock;

    /* Whether replayed input and the number of frames to draw go on with a frame */
    enum class Count { No, Yes };

    struct Failure {
        const EditorView* panel;
        std::string problem;
    };

    void updateFonts();
    void waitForFeed();
    void waitForPipe();
    void runScript();
    void waitForScript();
    void waitForEvents();
    bool isFinished() const;
    bool hasUserClosed();
    void playInput();
    void drawFrame(Count count);
    void drawContent();
    void drawEmptyArea(WorkArea area) const;
    void drawStatus();
    void deliverEvents();
    /* Gives whether one of them accepted it */
    bool deliverToPanels(PanelEvent event);
    void handleKey(const KeyEvent& event);
    void updateTitle();
    void openJournal();
    bool isAsking() const;
    void answerQuitQuestion();
    void closeFailedPanels();
    template<class F> void guarded(EditorView& panel, F call);

    BackEnd& _backEnd;
    HostOptions _options;
    EditorData _data;
    InputReplay _replay;
    LayoutKeeper _layout;
    RedrawGate _gate;
    PanelEvents _replayedEvents;
    std::vector<Failure> _failures;
    std::unique_ptr<ModuleLoader> _modules;
    std::unique_ptr<FeedReader> _feed;
    /* Owned by what panels see of the editor */
    ProjectServer* _server;
    std::atomic<bool> _hasNewLines{false};
    float _fontScale = 0.0f;
    unsigned long long _framesAfterReplay = 0;
    std::unique_ptr<ProjectSession> _session;
    /* Null headless */
    std::unique_ptr<ProjectJournal> _journal;
    std::unique_ptr<StoreLog> _scriptLog;
    std::unique_ptr<ScriptProject> _scriptProject;
    std::unique_ptr<ScriptRunner> _scripts;
    ScriptPanel _scriptPanel;
    PickLimit _pickLimit;
    QuitQuestion _quitQuestion;
    std::string _title;
    bool _isQuitRequested = false;
    bool _isClosed = false;
};

}

#endif
