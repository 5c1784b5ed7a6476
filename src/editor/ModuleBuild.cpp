#include "editor/ModuleBuild.h"

#include <cstddef>
#include <functional>
#include <utility>

#include <Corrade/PluginManager/AbstractManager.h>
#include <imgui.h>

#include "editor/sha256.h"
#include "host/AbstractModule.h"
#include "host/Version.h"

namespace QuillmereEngine {

namespace {

/* What has to be the same on both sides, in the order in which it's looked at: what says more about
   the reason comes first. The sizes are those that IMGUI_CHECKVERSION() compares; they differ where
   one of the two was compiled with another imconfig.h. */
struct Demand {
    const char* key;
    const char* what;
    std::string here;
};

const Demand Demands[]{
    {"pluginVersion", "plugin version", std::to_string(CORRADE_PLUGIN_VERSION)},
    {"interface", "interface", QUILLMERE_MODULE_INTERFACE},
    {"library", "library", QUILLMERE_VERSION},
    {"imgui", "Dear ImGui", IMGUI_VERSION},
    {"sizeof(ImGuiIO)", "an ImGuiIO of size", std::to_string(sizeof(ImGuiIO))},
    {"sizeof(ImGuiStyle)", "an ImGuiStyle of size", std::to_string(sizeof(ImGuiStyle))},
    {"sizeof(ImVec2)", "an ImVec2 of size", std::to_string(sizeof(ImVec2))},
    {"sizeof(ImVec4)", "an ImVec4 of size", std::to_string(sizeof(ImVec4))},
    {"sizeof(ImDrawVert)", "an ImDrawVert of size", std::to_string(sizeof(ImDrawVert))},
    {"sizeof(ImDrawIdx)", "an ImDrawIdx of size", std::to_string(sizeof(ImDrawIdx))},
};

constexpr const char* OtherKeys[]{"type", "size", "sha256"};

std::string_view trimmed(const std::string_view text) {
    constexpr const char* Space = " \t\f\v\r\n";
    const std::size_t begin = text.find_first_not_of(Space);
    if(begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(Space) + 1 - begin);
}

/* Cuts a line off the front of a text */
std::string_view takeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return trimmed(line);
}

bool isGroup(const std::string_view line) { return !line.empty() && line.front() == '['; }

/* Moves behind the group's first line */
bool findGroup(std::string_view& text) {
    while(!text.empty())
        if(takeLine(text) == "[build]")
            return true;
    return false;
}

std::pair<std::string, std::string> keyAndValue(const std::string_view line) {
    const std::size_t equals = line.find('=');
    if(equals == std::string_view::npos || line.front() == '#' || line.front() == ';')
        return {};
    std::string_view value = trimmed(line.substr(equals + 1));
    if(value.size() >= 2 && value.front() == '"' && value.back() == '"')
        value = value.substr(1, value.size() - 2);
    return {std::string{trimmed(line.substr(0, equals))}, std::string{value}};
}

}

std::optional<ModuleBuild> ModuleBuild::read(std::string_view metadata, std::string& problem) {
    if(!findGroup(metadata)) {
        problem =
            "its .conf has no group [build] that tells what it was built against, but this is "
            "library " QUILLMERE_VERSION;
        return {};
    }
    ModuleBuild out;
    while(!metadata.empty()) {
        const std::string_view line = takeLine(metadata);
        if(isGroup(line))
            break;
        if(!line.empty())
            out._values.insert(keyAndValue(line));
    }

    if(const char* const key = out.missingKey()) {
        problem = std::string{"the group [build] of its .conf has no "} + key;
        return {};
    }
    return out;
}

const char* ModuleBuild::missingKey() const {
    for(const Demand& demand: Demands)
        if(!_values.count(demand.key))
            return demand.key;
    for(const char* const key: OtherKeys)
        if(!_values.count(key))
            return key;
    return nullptr;
}

std::string ModuleBuild::whyUnfit() const {
    for(const Demand& demand: Demands)
        if(const std::string& there = value(demand.key); there != demand.here)
            return std::string{"it was built against "} + demand.what + " " + there +
                ", but this is " + demand.here;
    return {};
}

std::string ModuleBuild::whyIncomplete(const std::string_view library) const {
    if(const std::string size = std::to_string(library.size()); size != value("size"))
        return "its file has " + size + " bytes, but its .conf says " + value("size");
    if(sha256(library) != value("sha256"))
        return "its file has another SHA-256 than its .conf says";
    return {};
}

}
