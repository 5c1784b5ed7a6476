#ifndef Quillmere_editor_CommandLine_h
#define Quillmere_editor_CommandLine_h

#include <optional>
#include <string>

#include <Corrade/Containers/ArrayView.h>

namespace QuillmereEngine {

/** @brief What the user asked for. Paths are as given, empty where an option wasn't. */
struct CommandLine {
    enum class Action { Run, ShowHelp, ShowVersion };

    /** Where to draw: in a window and, if there can't be one, headless, or in one of the two only */
    enum class Display { WindowOrHeadless, Window, Headless };

    /** Greatest width and height, what every OpenGL 3 driver of the last years can render */
    static constexpr int MaxSize = 16384;

    Action action = Action::Run;
    std::string project;
    std::string modules;
    std::string logDir;
    /** A file, or `-` for the standard input */
    std::string feed;
    /** 0 for any free port */
    std::optional<int> serve;
    std::string script;
    std::string screenshot;
    std::string input;
    Display display = Display::WindowOrHeadless;
    int width = 1280;
    int height = 720;
    /** Without a value: until closed, or headless until the interface has settled */
    std::optional<unsigned long> frames;
};

/**
@brief Read the arguments of the program
@param arguments    Without the program's name, null-terminated each
@return Nothing when they are wrong; one line on Corrade's error output says what is.

A value may follow its option as the next argument or behind an equals sign. The last of several
equal options counts. Behind `--` everything is a project file.
*/
std::optional<CommandLine> parseCommandLine(
    Corrade::Containers::ArrayView<const char* const> arguments);

/** @brief Text for `--help`, ends with a newline */
const char* commandLineHelp();

}

#endif
