#ifndef Quillmere_editor_ModuleLoader_h
#define Quillmere_editor_ModuleLoader_h

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "editor/Module.h"
#include "editor/ModuleRead.h"
#include "editor/ModuleWatch.h"

namespace QuillmereEngine {

/**
@brief Loads the plugin modules of a folder and exchanges those whose file changes

What can't be loaded is reported with one line in the log and skipped until its file changes. A
module whose file is being written, which its `.conf` doesn't fit then, is waited for: the old one
stays open meanwhile. So it does when its file is deleted. UI thread.
*/
class ModuleLoader {
public:
    using Clock = ModuleWatch::Clock;

    /** Pause between two looks at the folder. Looking costs some 10 us. */
    static constexpr std::chrono::milliseconds PollInterval{250};

    /** How long a file and its `.conf` may not fit before there is a line that says so */
    static constexpr std::chrono::seconds WaitReportTime{5};

    /** @brief Loads nothing yet */
    explicit ModuleLoader(std::string folder, const PanelHost& host);

    ~ModuleLoader();

    const std::string& folder() const { return _folder; }

    /** @brief Load everything there is at once, in the order of the names */
    void loadAll(Clock::time_point now);

    /**
    @brief Look for new and changed files, unless the last look was a moment ago
    @return Whether a panel came, went or was exchanged
    */
    bool poll(Clock::time_point now);

    /** @brief The panels that are open, in the order of their modules' names */
    std::vector<EditorView*> panels() const;

    /** @brief Modules that are open, with their build type, as in "ConsoleView (Release build)" */
    std::vector<std::string> loadedModules() const;

    /** @brief Modules whose last load failed */
    std::vector<std::string> failedModules() const;

    /**
    @brief Close the module of a panel that can't go on until its file changes
    @param problem  For the log
    */
    void closeFailed(const EditorView* panel, const std::string& problem);

private:
    struct Entry {
        explicit Entry(const std::string& path, const PanelHost& host): module{path, host} {}

        Module module;
        ModuleWatch watch;
        std::string buildType;
        bool hasFailed = false;
        std::optional<Clock::time_point> waitsSince;
        /* A slow writer gets one line in the log, not one for each of its pieces */
        bool isWaitReported = false;
    };

    /* Nobody expects lines about what goes well at the start, nor that files fit only later */
    enum class Occasion { Start, Change };

    void findFiles();
    bool load(Entry& entry, const ModuleStamp& stamp, Clock::time_point now, Occasion occasion);
    static void wait(
        Entry& entry, const std::string& problem, Clock::time_point now, Occasion occasion);
    static void exchange(Entry& entry, const ModuleRead& read,
        const std::optional<ModuleCopy>& copy, Occasion occasion);
    static std::string title(const Entry& entry);

    std::string _folder;
    PanelHost _host;
    std::vector<std::unique_ptr<Entry>> _entries;
    Clock::time_point _nextPoll{};
};

}

#endif
