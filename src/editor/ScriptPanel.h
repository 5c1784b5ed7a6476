#ifndef Quillmere_editor_ScriptPanel_h
#define Quillmere_editor_ScriptPanel_h

#include <string>

#include "editor/InputHistory.h"

struct ImGuiInputTextCallbackData;

namespace QuillmereEngine {

class ScriptRunner;
class StoreLog;

/** @brief State of the engine as the panel shows it */
std::string engineText(const ScriptRunner& scripts);

/** @brief Both limits of scripts: "10 s, 512 MB" */
std::string limitsText(const ScriptRunner& scripts);

/** @brief The "Script" panel: a line of JavaScript to run, and what the engine does. UI thread. */
class ScriptPanel {
public:
    /** @brief Draw the panel. What is entered goes to the engine, and to @p log as it was typed. */
    void draw(ScriptRunner& scripts, StoreLog& log);

private:
    bool drawInput();
    void drawState(ScriptRunner& scripts);
    void run(ScriptRunner& scripts, StoreLog& log);
    static int edit(ImGuiInputTextCallbackData* data);
    void showHistory(ImGuiInputTextCallbackData& data);

    std::string _text;
    InputHistory _history;
    int _runCount = 0;
    bool _isFocusWanted = false;
};

}

#endif
