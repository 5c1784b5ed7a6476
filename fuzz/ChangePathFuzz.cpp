/* Any bytes as path, percent-encoded fragments and unterminated arrays included. The first byte says
   what is done with it. */

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

#include <Corrade/Utility/Debug.h>

#include "QuillmereEditor/ChangeManager.h"
#include "host/ProjectFile.h"
#include "host/RapidJsonUtils.h"

using namespace Corrade;
using namespace QuillmereEngine;

namespace {

/* An array of 9,999 elements is padded in no time */
constexpr std::ptrdiff_t MaxDigits = 4;

constexpr const char* Document =
    R"({"a":{"b":[1,{"c":2}],"":3},"l":[[],[4]],"s":"text","%":{"~":{"/":5}}})";

bool isDigit(const char c) { return c >= '0' && c <= '9'; }

/* Whether the path is one at which an index would end the process, as documented */
bool wouldAbort(const ProjectFile& project, const std::string& path) {
    const std::string text = path.c_str();
    const std::size_t slash = text.rfind('/');
    if(slash == std::string::npos || slash + 1 == text.size())
        return false;
    const std::size_t sign = text[slash + 1] == '-' ? 1 : 0;
    const bool isIndex = slash + 1 + sign < text.size() &&
        std::all_of(text.begin() + std::ptrdiff_t(slash + 1 + sign), text.end(), isDigit);
    const rapidjson::Value* const parent = project.getValue(text.substr(0, slash).c_str(), true);
    return isIndex && parent && !parent->IsArray() && !parent->IsObject();
}

Containers::Array<char> arrayOf(const std::string& path) {
    Containers::Array<char> out{NoInit, path.size()};
    std::copy(path.begin(), path.end(), out.begin());
    return out;
}

void expect(const bool condition, const char* const what) {
    if(condition)
        return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

void change(ProjectFile& project, const std::uint8_t operation, const std::string& path) {
    ChangeManager manager{project};
    manager.addChangeHandler(
        "a", [](const Change&, Containers::ArrayView<const std::string>, void*) {}, nullptr);
    const std::string before = RapidJsonUtils::toJson(*project.document);
    const rapidjson::Value value{7};
    for(int i = 0; i != 3; ++i)
        manager.pushChange(arrayOf(path), operation & 1 ? &value : nullptr, (operation & 2) != 0);
    if(operation & 4)
        manager.pushAppend(path.c_str(), "appended");
    if(!manager.changeCount())
        expect(RapidJsonUtils::toJson(*project.document) == before, "refused but changed");

    while(manager.changeCount() && manager.hasUnsavedChanges()) {
        const Change* const undone = &manager.lastChange();
        manager.undoLast();
        if(manager.hasUnsavedChanges() && undone == &manager.lastChange())
            break;
    }
    const std::string undone = RapidJsonUtils::toJson(*project.document);
    rapidjson::Document again;
    again.Parse<rapidjson::kParseFullPrecisionFlag>(undone.data(), undone.size());
    expect(!again.HasParseError() && RapidJsonUtils::toJson(again) == undone, "no valid JSON");
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* const data, const std::size_t size) {
    if(!size)
        return 0;
    const std::string path{reinterpret_cast<const char*>(data) + 1, size - 1};
    if(std::count_if(path.begin(), path.end(), isDigit) > MaxDigits)
        return 0;

    ProjectFile project;
    project.document->Parse(Document);
    expect(project.getValue(path.c_str(), false), "no value");
    if(wouldAbort(project, path))
        return 0;
    std::ostringstream refusals;
    const Utility::Error silence{&refusals, Utility::Error::Flag::NoNewlineAtTheEnd};
    change(project, data[0], path);
    return 0;
}
