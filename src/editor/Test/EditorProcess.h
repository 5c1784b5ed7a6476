#ifndef Quillmere_editor_Test_EditorProcess_h
#define Quillmere_editor_Test_EditorProcess_h

#include <string>
#include <utility>
#include <vector>

namespace QuillmereEngine {

/** @brief What a run of the program left */
struct EditorRun {
    /** Exit status, or -signal */
    int status = 0;
    std::string out, error;
};

enum class WindowMode { Headless, Window };

/**
@brief Command line of quillmere-editor
@param mode     With `Headless` the option is added in front of @p arguments
*/
std::vector<std::string> editorCommand(
    std::vector<std::string> arguments, WindowMode mode = WindowMode::Headless);

/**
@brief Run quillmere-editor and wait for its end
@param input    Its standard input, a pipe
@param mode     As of @ref editorCommand()
*/
EditorRun runEditorProgram(std::vector<std::string> arguments, const std::string& input = {},
    WindowMode mode = WindowMode::Headless);

/** @brief A picture that the program wrote */
struct Picture {
    int width = 0, height = 0, channels = 0;
    std::vector<unsigned char> pixels;

    /** @brief 0xrrggbb */
    unsigned at(int x, int y) const;

    /** @brief First and one behind the last row with a pixel that looks so, equal if there is none */
    std::pair<int, int> rows(bool (*looksSo)(unsigned color)) const;
};

/** @brief Read a PNG file. One that isn't one fails the test and gives no pixels. */
Picture readPicture(const std::string& path);

}

#endif
