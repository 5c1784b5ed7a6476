#include "RandomEdits.h"

#include <cmath>
#include <cstring>

#include "editor/journalBytes.h"

namespace QuillmereEngine {

namespace {

constexpr unsigned MostElements = 30;

}

RandomEdits::RandomEdits(ProjectFile& project, ChangeManager& changes, const std::uint32_t seed):
    _project(project),
    _changes(changes),
    _random{seed} {}

bool RandomEdits::step() {
    switch(below(20)) {
        case 0:
        case 1:
        case 2:
        case 3:
            _changes.undoLast();
            return false;
        case 4:
        case 5:
            _changes.redoLastUndo();
            return false;
        case 6:
        case 7:
            pushGroup();
            return false;
        case 8:
            return below(2) == 0;
        default:
            push();
            return false;
    }
}

/* Not a distribution of the standard library, whose results are the implementation's */
unsigned RandomEdits::below(const unsigned end) { return unsigned(_random() % end); }

/* Elements behind the end of an array and into its middle, members that are numbers by name,
   containers that come and go with what is in them. No element of a plain value, which ends the
   program. */
std::string RandomEdits::path() {
    const rapidjson::Value* const list = _project.getValue("/list", true);
    const unsigned size = list && list->IsArray() ? list->Size() : 0;
    switch(below(8)) {
        case 0:
            return "/list/" + std::to_string(below(size + 1));
        case 1:
            return "/list/" + std::to_string(size + below(3));
        case 2:
            return "/list/-";
        case 3:
            return "/objects/" + std::to_string(below(4)) + "/name";
        case 4:
            return "/objects/" + std::to_string(below(4)) + "/a~1b/" + char('a' + below(3));
        case 5:
            return "/map/01/x";
        default:
            return std::string{"/plain/"} + char('a' + below(5));
    }
}

rapidjson::Value RandomEdits::value(const int depth) {
    auto& allocator = _project.allocator();
    switch(below(depth < 2 ? 8 : 6)) {
        case 0:
            return rapidjson::Value{below(2) == 0};
        case 1:
            return rapidjson::Value{std::int64_t(_random()) * (below(2) ? 1 : -2000000000)};
        case 2:
            return rapidjson::Value{~std::uint64_t(_random())};
        case 3: {
            const std::uint64_t bits = std::uint64_t(_random()) << 32 | _random();
            double number;
            std::memcpy(&number, &bits, sizeof(number));
            return rapidjson::Value{std::isfinite(number) ? number : -0.0};
        }
        case 4:
            return rapidjson::Value{};
        case 5: {
            const std::string text(below(20), char('a' + below(26)));
            return rapidjson::Value{text.data(), rapidjson::SizeType(text.size()), allocator};
        }
        case 6: {
            rapidjson::Value out{rapidjson::kArrayType};
            for(unsigned i = below(4); i; --i)
                out.PushBack(value(depth + 1), allocator);
            return out;
        }
        default: {
            rapidjson::Value out{rapidjson::kObjectType};
            for(char name = char(0x61 + below(4)); name != 0x61; --name)
                out.AddMember(rapidjson::Value{&name, 1, allocator}, value(depth + 1), allocator);
            return out;
        }
    }
}

void RandomEdits::push() {
    const rapidjson::Value* const list = _project.getValue("/list", true);
    if(list && list->IsArray() && list->Size() > MostElements)
        return _changes.pushRemoval("/list");
    const std::string place = path();
    if(below(6) == 0)
        return _changes.pushRemoval(place.c_str());
    if(below(12) == 0)
        return _changes.pushAppend("/names", "appended");
    _changes.pushChange(place.c_str(), value(), below(2) == 0);
}

void RandomEdits::pushGroup() {
    _changes.beginGroup();
    for(unsigned i = below(6); i; --i)
        push();
    _changes.commit();
}

std::string stateOf(const ProjectFile& project) {
    std::string out;
    appendValue(out, *project.document);
    return out;
}

}
