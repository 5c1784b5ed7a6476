#include "editor/checkProject.h"

#include <algorithm>
#include <optional>

#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/DebugStl.h>
#include <rapidjson/document.h>
#include <rapidjson/error/en.h>

#include "editor/files.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

std::string placeOf(const std::string& text, const std::size_t offset) {
    const std::string before = text.substr(0, offset);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    /* One behind the last newline, and 1 when there is none, as npos + 1 is 0 */
    const std::size_t column = before.size() - (before.rfind('\n') + 1) + 1;
    return std::to_string(line) + ":" + std::to_string(column);
}

}

bool checkProject(const std::string& path) {
    std::string problem;
    const std::optional<std::string> text = readWholeFile(path, problem);
    if(!text) {
        Utility::Error{} << "quillmere-editor: can't read project" << path
                         << Utility::Error::nospace << ":" << problem;
        return false;
    }
    rapidjson::Document document;
    /* Iterative, as a file of a million brackets would overflow the stack otherwise */
    constexpr unsigned Flags = rapidjson::kParseIterativeFlag |
        rapidjson::kParseValidateEncodingFlag;
    document.Parse<Flags>(text->data(), text->size());
    if(!document.HasParseError())
        return true;
    Utility::Error{} << "quillmere-editor:" << path << Utility::Error::nospace << ":"
                     << Utility::Error::nospace << placeOf(*text, document.GetErrorOffset())
                     << Utility::Error::nospace << ":"
                     << rapidjson::GetParseError_En(document.GetParseError());
    return false;
}

}
