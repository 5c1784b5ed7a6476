#include "editor/Test/randomInput.h"

#include <algorithm>
#include <iterator>
#include <random>
#include <string_view>

namespace QuillmereEngine {

namespace {

constexpr std::string_view Keys[]{"left", "right", "up", "down", "home", "end", "pageup",
    "pagedown", "enter", "escape", "tab", "space", "delete", "backspace", "insert", "a", "b", "x",
    "1", "0", "f1", "f5", "f12"};

/* Those that do something with control and with control and shift, S and Q included */
constexpr std::string_view CtrlKeys[]{"z", "z", "y", "a", "c", "x", "v", "s", "q", "left", "right",
    "home", "end", "backspace", "delete", "tab", "enter", "i"};

constexpr std::string_view Modifiers[]{"shift", "alt", "super", "ctrl"};

constexpr std::string_view Texts[]{"a", "Z", "7", "-1.5", "1e9", "1e400", "nan", "-99999999999999",
    "Tower", "caf\u00e9", "\u20ac 3", "\u65e5\u672c\u8a9e", "\U0001f600\U0001f3e0", "a\u0301\u0323",
    "\u0645\u0631\u062d\u0628\u0627", "##", "###x", "%s%n%d", "/~~0~1", "\"\\", "  ", "[1,2]",
    "null", "../../x", "$(true)",
    "a longer text that doesn't fit into every field it may be typed into, and that goes on"};

/* Share of the area: the insides of the panels as they are arranged at first, those where most can be
   done more often. A click on a title, which may collapse its panel, is to be the exception. */
struct Place {
    float left, top, right, bottom;
};
constexpr Place Anywhere{0.0f, 0.0f, 1.0f, 1.0f}, Outline{0.01f, 0.04f, 0.25f, 0.44f},
    Objects{0.01f, 0.05f, 0.08f, 0.31f}, History{0.28f, 0.08f, 0.62f, 0.44f},
    Console{0.01f, 0.48f, 0.63f, 0.95f}, Inspector{0.65f, 0.04f, 0.99f, 0.95f},
    Fields{0.755f, 0.05f, 0.98f, 0.95f};
constexpr Place Places[]{Anywhere, Outline, Objects, Objects, Objects, History, History, Console,
    Console, Inspector, Fields, Fields, Fields, Fields, Fields, Fields, Fields, Fields};

class RandomUser {
public:
    explicit RandomUser(const std::uint32_t seed, const WorkArea area):
        _random{seed},
        _area{area} {}

    std::string play(const unsigned long frames) {
        while(_frame < frames)
            act();
        return std::move(_out);
    }

private:
    /* Not by a distribution, which differs from library to library */
    unsigned below(const unsigned count) { return unsigned(_random() % count); }

    template<std::size_t size> std::string_view anyOf(const std::string_view (&list)[size]) {
        return list[below(unsigned(size))];
    }

    void event(const std::string& what) {
        _out += "frame " + std::to_string(_frame) + " " + what + "\n";
    }

    void key(const std::string_view name) {
        event("key " + std::string{name} + " down");
        /* At times so long that it repeats */
        _frame += below(30) ? 1 : 20;
        event("key " + std::string{name} + " up");
        ++_frame;
    }

    void moveTo(const int x, const int y) {
        _x = std::clamp(x, 0, _area.width - 1);
        _y = std::clamp(y, 0, _area.height - 1);
        event("move " + std::to_string(_x) + " " + std::to_string(_y));
        ++_frame;
    }

    void moveSomewhere() {
        const Place& place = Places[below(unsigned(std::size(Places)))];
        const auto between = [this](const float begin, const float end, const int size) {
            const int first = int(begin * float(size));
            return first + int(below(unsigned(std::max(int(end * float(size)) - first, 1))));
        };
        const int x = between(place.left, place.right, _area.width);
        moveTo(x, between(place.top, place.bottom, _area.height));
    }

    /* Most of what belongs together is near to each other */
    void moveNear() { moveTo(_x + int(below(61)) - 30, _y + int(below(41)) - 20); }

    void click() {
        constexpr const char* Buttons[]{"left", "right", "middle"};
        const unsigned choice = below(10);
        const std::string button = Buttons[choice < 8 ? 0 : choice - 7];
        const unsigned count = below(4) ? 1 : 2;
        for(unsigned i = 0; i != count; ++i) {
            event("down " + button);
            ++_frame;
            event("up " + button);
            ++_frame;
        }
    }

    void drag() {
        event("down left");
        ++_frame;
        for(unsigned i = 1 + below(4); i != 0; --i)
            below(8) ? moveNear() : moveSomewhere();
        event("up left");
        ++_frame;
    }

    void wheel() {
        event("wheel " + std::to_string(int(below(11)) - 5));
        ++_frame;
    }

    void keyWithModifiers() {
        const std::string first{below(3) ? "ctrl" : anyOf(Modifiers)};
        const bool isShifted = first != "shift" && below(4) == 0;
        event("key " + first + " down");
        if(isShifted)
            event("key shift down");
        ++_frame;
        for(unsigned i = 1 + below(4); i != 0; --i)
            key(first == "ctrl" ? anyOf(CtrlKeys) : anyOf(Keys));
        if(isShifted)
            event("key shift up");
        event("key " + first + " up");
        ++_frame;
    }

    void clickWithModifier() {
        const std::string modifier{anyOf(Modifiers)};
        event("key " + modifier + " down");
        ++_frame;
        click();
        event("key " + modifier + " up");
        ++_frame;
    }

    void type() {
        for(unsigned i = 1 + below(2); i != 0; --i) {
            event("text " + std::string{anyOf(Texts)});
            ++_frame;
        }
        if(below(4))
            key(below(4) ? "enter" : "tab");
    }

    /* As one edits a field, those that are to be dragged included */
    void clickAndType() {
        const bool isWithCtrl = below(2);
        if(isWithCtrl)
            event("key ctrl down");
        event("down left");
        ++_frame;
        event("up left");
        ++_frame;
        if(isWithCtrl)
            event("key ctrl up");
        type();
    }

    void act() {
        moveSomewhere();
        for(unsigned i = 1 + below(2); i != 0; --i) {
            const unsigned choice = below(100);
            if(choice < 27)
                click();
            else if(choice < 52)
                drag();
            else if(choice < 74)
                clickAndType();
            else if(choice < 76)
                wheel();
            else if(choice < 80)
                key(anyOf(Keys));
            else if(choice < 88)
                keyWithModifiers();
            else if(choice < 92)
                clickWithModifier();
            else if(choice < 96)
                moveNear();
            else
                type();
        }
    }

    std::mt19937 _random;
    WorkArea _area;
    std::string _out;
    unsigned long _frame = 0;
    int _x = 0, _y = 0;
};

}

std::string randomInput(const std::uint32_t seed, const unsigned long frames, const WorkArea area) {
    return RandomUser{seed, area}.play(frames);
}

}
