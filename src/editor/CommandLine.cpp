#include "editor/CommandLine.h"

#include <charconv>
#include <cstring>
#include <string_view>

#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/DebugStl.h>

using namespace Corrade;

namespace QuillmereEngine {

namespace {

using Utility::Error;

template<class T> bool parseNumber(const std::string_view text, T& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc{} && end == text.data() + text.size();
}

bool parseSize(const std::string& value, CommandLine& out) {
    const std::size_t separator = value.find('x');
    const auto isValid = [](const int size) { return size >= 1 && size <= CommandLine::MaxSize; };
    const std::string_view view = value;
    if(separator != std::string::npos && parseNumber(view.substr(0, separator), out.width) &&
        parseNumber(view.substr(separator + 1), out.height) && isValid(out.width) &&
        isValid(out.height))
        return true;
    Error{} << "quillmere-editor: --size expects WIDTHxHEIGHT, each from 1 to"
            << CommandLine::MaxSize << Error::nospace << ", but got" << value;
    return false;
}

bool parseFrames(const std::string& value, CommandLine& out) {
    unsigned long frames;
    if(!parseNumber(value, frames) || !frames) {
        Error{} << "quillmere-editor: --frames expects a number from 1 but got" << value;
        return false;
    }
    out.frames = frames;
    return true;
}

bool parsePort(const std::string& value, CommandLine& out) {
    int port;
    if(!parseNumber(value, port) || port < 0 || port > 65535) {
        Error{} << "quillmere-editor: --serve expects a port from 0 to 65535 but got" << value;
        return false;
    }
    out.serve = port;
    return true;
}

template<std::string CommandLine::*member> bool store(const std::string& value, CommandLine& out) {
    out.*member = value;
    return true;
}

struct ValueOption {
    const char* name;
    bool (*parse)(const std::string&, CommandLine&);
};

constexpr ValueOption ValueOptions[]{
    {"--feed", store<&CommandLine::feed>},
    {"--frames", parseFrames},
    {"--input", store<&CommandLine::input>},
    {"--log-dir", store<&CommandLine::logDir>},
    {"--modules", store<&CommandLine::modules>},
    {"--screenshot", store<&CommandLine::screenshot>},
    {"--script", store<&CommandLine::script>},
    {"--serve", parsePort},
    {"--size", parseSize},
};

const ValueOption* findValueOption(const std::string_view name) {
    for(const ValueOption& option: ValueOptions)
        if(option.name == name)
            return &option;
    return nullptr;
}

bool parseFlag(const std::string_view name, CommandLine& out) {
    if(name == "--headless")
        out.display = CommandLine::Display::Headless;
    else if(name == "--window")
        out.display = CommandLine::Display::Window;
    else if(name == "--help" || name == "-h")
        out.action = CommandLine::Action::ShowHelp;
    else if(name == "--version")
        out.action = CommandLine::Action::ShowVersion;
    else
        return false;
    return true;
}

bool setProject(const char* const path, CommandLine& out) {
    if(!out.project.empty()) {
        Error{} << "quillmere-editor: expected one project but got" << out.project << "and" << path;
        return false;
    }
    out.project = path;
    return true;
}

/* Moves on to the value of an option where that is an argument of its own */
bool parseOption(
    const Containers::ArrayView<const char* const> arguments, std::size_t& i, CommandLine& out) {
    const std::string_view argument = arguments[i];
    if(parseFlag(argument, out))
        return true;

    const std::size_t equals = argument.find('=');
    const ValueOption* const option = findValueOption(argument.substr(0, equals));
    if(!option) {
        Error{} << "quillmere-editor: unknown option" << arguments[i] << Error::nospace
                << ", see --help";
        return false;
    }
    if(equals == std::string_view::npos && i + 1 == arguments.size()) {
        Error{} << "quillmere-editor:" << option->name << "expects a value";
        return false;
    }
    const std::string value{
        equals == std::string_view::npos ? arguments[++i] : argument.substr(equals + 1)};
    if(value.empty()) {
        Error{} << "quillmere-editor:" << option->name << "expects a value but got an empty one";
        return false;
    }
    return option->parse(value, out);
}

}

std::optional<CommandLine> parseCommandLine(
    const Containers::ArrayView<const char* const> arguments) {
    CommandLine out;
    bool areOptionsOver = false;
    for(std::size_t i = 0; i != arguments.size(); ++i) {
        const char* const argument = arguments[i];
        if(!areOptionsOver && std::strcmp(argument, "--") == 0)
            areOptionsOver = true;
        else if(!areOptionsOver && argument[0] == '-') {
            if(!parseOption(arguments, i, out))
                return {};
        } else if(!setProject(argument, out))
            return {};
    }
    return out;
}

const char* commandLineHelp() {
    return R"(Usage: quillmere-editor [options] [PROJECT.json]

Shows the editor's panels, which it loads as plugin modules.

  --modules DIR          folder of the plugin modules (default: "modules" beside
                         the program, then the installed one)
  --log-dir DIR          write a log file into DIR
  --feed FILE            log every line of FILE; "-" is the standard input
  --serve PORT           serve the project's folder on 127.0.0.1 (0: any port)
  --script FILE.js       run FILE.js in the JavaScript engine
  --headless             no window, render off screen
  --window               exit with status 1 where no window can be opened;
                         without it the editor goes on headless
  --size WxH             size of the window or picture (default: 1280x720)
  --frames N             stop after N frames (headless default: enough for the
                         interface to settle)
  --screenshot FILE.png  write the last frame
  --input FILE           replay input, one event a line, # for comments:
                           frame N move X Y
                           frame N down|up left|right|middle
                           frame N wheel DY
                           frame N key NAME down|up
                           frame N text STRING
  --help                 show this text
  --version              show the version
)";
}

}
