#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/DebugStl.h>
#include <GLFW/glfw3.h>

#include "editor/InputReplay.h"
#include "editor/lowerCase.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

using Kind = ReplayEvent::Kind;

struct KeyName {
    std::string_view name;
    int key;
};

constexpr KeyName KeyNames[]{
    {"alt", GLFW_KEY_LEFT_ALT},
    {"backspace", GLFW_KEY_BACKSPACE},
    {"ctrl", GLFW_KEY_LEFT_CONTROL},
    {"delete", GLFW_KEY_DELETE},
    {"down", GLFW_KEY_DOWN},
    {"end", GLFW_KEY_END},
    {"enter", GLFW_KEY_ENTER},
    {"escape", GLFW_KEY_ESCAPE},
    {"home", GLFW_KEY_HOME},
    {"insert", GLFW_KEY_INSERT},
    {"left", GLFW_KEY_LEFT},
    {"pagedown", GLFW_KEY_PAGE_DOWN},
    {"pageup", GLFW_KEY_PAGE_UP},
    {"right", GLFW_KEY_RIGHT},
    {"shift", GLFW_KEY_LEFT_SHIFT},
    {"space", GLFW_KEY_SPACE},
    {"super", GLFW_KEY_LEFT_SUPER},
    {"tab", GLFW_KEY_TAB},
    {"up", GLFW_KEY_UP},
};

std::optional<int> keyNamed(const std::string_view word) {
    std::string name{word};
    std::transform(name.begin(), name.end(), name.begin(), lowerCase);
    if(name.size() == 1 && ((name[0] >= 'a' && name[0] <= 'z')))
        return GLFW_KEY_A + (name[0] - 'a');
    if(name.size() == 1 && name[0] >= '0' && name[0] <= '9')
        return GLFW_KEY_0 + (name[0] - '0');
    if(int number = 0; name[0] == 'f' &&
        std::from_chars(name.data() + 1, name.data() + name.size(), number).ptr ==
            name.data() + name.size() &&
        number >= 1 && number <= 12)
        return GLFW_KEY_F1 + number - 1;
    for(const KeyName& key: KeyNames)
        if(key.name == name)
            return key.key;
    return {};
}

std::optional<int> buttonNamed(const std::string_view word) {
    constexpr std::string_view Names[]{"left", "right", "middle"};
    constexpr std::string_view Digits[]{"0", "1", "2"};
    for(int i = 0; i != 3; ++i)
        if(word == Names[i] || word == Digits[i])
            return i;
    return {};
}

/* Takes the line's words one by one. The first problem stays, later calls do nothing. */
class LineReader {
public:
    explicit LineReader(const std::string_view line): _rest{line} {}

    std::string_view word() {
        skipSpace();
        const std::size_t end = std::min(_rest.find_first_of(" \t"), _rest.size());
        const std::string_view out = _rest.substr(0, end);
        _rest.remove_prefix(end);
        return out;
    }

    float number(const char* const what) {
        const std::string text{word()};
        char* end;
        const float out = std::strtof(text.c_str(), &end);
        if(text.empty() || *end || !std::isfinite(out))
            expect(what, text);
        return out;
    }

    unsigned long frame() {
        const std::string_view text = word();
        unsigned long out = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), out);
        if(error != std::errc{} || end != text.data() + text.size())
            expect("a frame number", text);
        return out;
    }

    int named(const char* const what, std::optional<int> (*const find)(std::string_view)) {
        const std::string_view text = word();
        const std::optional<int> out = text.empty() ? std::nullopt : find(text);
        if(!out)
            expect(what, text);
        return out.value_or(0);
    }

    std::string text() {
        if(_rest.size() < 2)
            expect("a text", {});
        return std::string{_rest.substr(std::min(_rest.size(), std::size_t{1}))};
    }

    void expect(const char* const what, const std::string_view got) {
        if(_problem.empty())
            _problem = std::string{"expected "} + what +
                (got.empty() ? " but the line ends" : " but got " + std::string{got});
    }

    void expectEnd() {
        if(const std::string_view text = word(); !text.empty())
            expect("the line to end", text);
    }

    const std::string& problem() const { return _problem; }

private:
    void skipSpace() {
        _rest.remove_prefix(std::min(_rest.find_first_not_of(" \t"), _rest.size()));
    }

    std::string_view _rest;
    std::string _problem;
};

void parseKey(LineReader& line, ReplayEvent& event) {
    event.code = line.named("a key", keyNamed);
    const std::string_view state = line.word();
    if(state != "down" && state != "up")
        line.expect("down or up", state);
    event.kind = state == "up" ? Kind::KeyUp : Kind::KeyDown;
}

ReplayEvent parseEvent(LineReader& line) {
    ReplayEvent event;
    if(const std::string_view word = line.word(); word != "frame")
        line.expect("frame", word);
    event.frame = line.frame();

    const std::string_view kind = line.word();
    if(kind == "move") {
        event.x = line.number("a number");
        event.y = line.number("a number");
    } else if(kind == "down" || kind == "up") {
        event.kind = kind == "down" ? Kind::ButtonDown : Kind::ButtonUp;
        event.code = line.named("left, right or middle", buttonNamed);
    } else if(kind == "wheel") {
        event.kind = Kind::Wheel;
        event.y = line.number("a number");
    } else if(kind == "key")
        parseKey(line, event);
    else if(kind == "text") {
        event.kind = Kind::Text;
        event.text = line.text();
        return event;
    } else
        line.expect("move, down, up, wheel, key or text", kind);
    line.expectEnd();
    return event;
}

bool isSkipped(const std::string_view line) {
    const std::size_t begin = line.find_first_not_of(" \t");
    return begin == std::string_view::npos || line[begin] == '#';
}

}

std::optional<std::vector<ReplayEvent>> parseReplay(
    std::string_view text, const std::string& name) {
    std::vector<ReplayEvent> out;
    for(int number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if(!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        if(isSkipped(line))
            continue;

        LineReader reader{line};
        ReplayEvent event = parseEvent(reader);
        if(!reader.problem().empty()) {
            Utility::Error{} << "quillmere-editor:" << name << Utility::Error::nospace << ":"
                             << Utility::Error::nospace << number << Utility::Error::nospace << ":"
                             << reader.problem();
            return {};
        }
        out.push_back(std::move(event));
    }
    std::stable_sort(out.begin(), out.end(),
        [](const ReplayEvent& a, const ReplayEvent& b) { return a.frame < b.frame; });
    return out;
}

}
