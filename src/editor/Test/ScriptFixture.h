#ifndef Quillmere_editor_Test_ScriptFixture_h
#define Quillmere_editor_Test_ScriptFixture_h

#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "QuillmereEditor/ChangeManager.h"
#include "editor/ScriptProject.h"
#include "editor/ScriptRunner.h"
#include "editor/StoreLog.h"
#include "host/ProjectFile.h"
#include "host/QuillmereEditorApplication.h"
#include "host/RapidJsonUtils.h"

namespace QuillmereEngine {

/** @brief Runs scripts in the real engine's process, with the editor's side of it but no interface */
struct ScriptFixture: ::testing::Test {
    /** Far away: a slow machine is nothing that a test is to notice */
    static ScriptLimits farLimits() {
        return {std::chrono::minutes{5}, std::chrono::minutes{5}, 512};
    }

    explicit ScriptFixture() { start(farLimits()); }

    void start(const ScriptLimits& limits, const std::string& program = QUILLMERE_SCRIPT_PROGRAM) {
        runner = nullptr;
        runner = std::make_unique<ScriptRunner>(script, log, program, limits, [] {});
    }

    void begin(const std::string& source) {
        EXPECT_TRUE(runner->run("a.js", source, ScriptRunner::Result::Hide));
    }

    /** @brief Run to the end, gives the lines */
    std::vector<std::string> run(const std::string& source) {
        begin(source);
        runner->waitForEnd();
        return lines();
    }

    /** @brief The line, or lines, of a value */
    std::string valueOf(const std::string& source) {
        EXPECT_TRUE(runner->run("a.js", source, ScriptRunner::Result::Show));
        runner->waitForEnd();
        std::string out;
        for(const std::string& line: lines())
            out += (out.empty() ? "" : "\n") + line;
        return out;
    }

    /** @brief Do what the editor does between frames, until there's a line or no script any more */
    void pollUntilLine() {
        while(runner->isRunning() && application.lines.size() == _taken)
            runner->poll();
    }

    /** @brief Lines since the last call, without their time */
    std::vector<std::string> lines() {
        constexpr std::size_t TimeSize = 25;
        std::vector<std::string> out;
        for(; _taken != application.lines.size(); ++_taken)
            out.push_back(std::string{application.lines.get(_taken)}.substr(TimeSize));
        return out;
    }

    std::string document() const { return RapidJsonUtils::toJson(*project.document); }

    void setDocument(const char* const json) { project.document->Parse(json); }

    struct Application: QuillmereEditorApplication {
        StringArray lines;
    } application;
    StoreLog log{application, application.lines, StoreLog::Echo::No};
    ProjectFile project;
    ChangeManager changes{project};
    ScriptProject script{project, changes};
    std::unique_ptr<ScriptRunner> runner;

private:
    std::size_t _taken = 0;
};

}

#endif
