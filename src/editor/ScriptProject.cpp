#include "editor/ScriptProject.h"

#include <algorithm>
#include <exception>
#include <utility>
#include <vector>

#include <rapidjson/pointer.h>
#include <rapidjson/stringbuffer.h>

#include "QuillmereEditor/ChangeManager.h"
#include "editor/script/Message.h"
#include "editor/script/ScriptProtocol.h"
#include "editor/scriptPointer.h"
#include "host/ProjectFile.h"
#include "host/RapidJsonUtils.h"

namespace QuillmereEngine {

namespace {

constexpr const char* OthersEdit = "another edit is going on";

/* What a project that is nested deeper can't be saved for */
constexpr std::size_t MaxDepth = 10000;

std::string answerMessage() { return MessageWriter{"answer"}.text(); }

std::string refusal(
    const std::string_view operation, const std::string_view pointer, const std::string& problem) {
    const std::string call = "project." + std::string{operation} + "(" + quoted(pointer) + "): ";
    return MessageWriter{"refusal"}.add("message", std::string_view{call + problem}).text();
}

/* Levels of arrays and objects, by the brackets that aren't in strings */
std::size_t depthOf(const std::string_view json) {
    std::size_t out = 0, depth = 0;
    bool isInString = false;
    for(std::size_t i = 0; i != json.size(); ++i) {
        if(isInString)
            json[i] == '\\' ? void(++i) : void(isInString = json[i] != '"');
        else if(json[i] == '"')
            isInString = true;
        else if(json[i] == '[' || json[i] == '{')
            out = std::max(out, ++depth);
        else if(json[i] == ']' || json[i] == '}')
            depth -= depth != 0;
    }
    return out;
}

using Pointer = rapidjson::Pointer;

std::string textOf(const Pointer& pointer, const std::size_t count) {
    rapidjson::StringBuffer out;
    Pointer{pointer.GetTokens(), count}.Stringify(out);
    return {out.GetString(), out.GetSize()};
}

/* A container with just one value */
void wrap(rapidjson::Document& value, const Pointer::Token& token, const bool isArray) {
    rapidjson::Value content;
    content.Swap(value);
    if(isArray)
        value.SetArray().PushBack(content, value.GetAllocator());
    else
        value.SetObject().AddMember(
            rapidjson::Value{token.name, token.length, value.GetAllocator()}, content,
            value.GetAllocator());
}

bool isEmpty(const rapidjson::Value& container) {
    return container.IsArray() ? container.Empty() : container.ObjectEmpty();
}

bool hasOneValue(const rapidjson::Value& container) {
    return container.IsArray() ? container.Size() == 1 : container.MemberCount() == 1;
}

}

ScriptProject::ScriptProject(ProjectFile& project, ChangeManager& changes):
    _project{project},
    _changes{changes} {}

ScriptProject::~ScriptProject() { scriptEnded(); }

bool ScriptProject::isOthersEdit() const {
    return !_groupDepth && (_changes.isGroupOpen() || _changes.isLocked());
}

std::string ScriptProject::answer(const Message& request) {
    /* From a handler of the change, which has been made */
    try {
        return carryOut(request);
    } catch(const std::exception& error) {
        return refusal(request.text("operation"), request.text("pointer"), error.what());
    }
}

std::string ScriptProject::carryOut(const Message& request) {
    const std::string_view operation = request.text("operation"), pointer = request.text("pointer");
    if(operation == "get")
        return get(pointer);
    if(operation == "begin")
        return begin();
    if(operation == "commit")
        return commit();
    std::string problem = "not known";
    if(operation == "set")
        problem = set(pointer, request.text("value"));
    else if(operation == "remove")
        problem = remove(pointer);
    return problem.empty() ? answerMessage() : refusal(operation, pointer, problem);
}

std::string ScriptProject::get(const std::string_view pointer) const {
    const ScriptPlace place = placeToRead(_project, pointer);
    if(!place.problem.empty())
        return refusal("get", pointer, place.problem);
    if(!place.value)
        return answerMessage();
    const std::string json = RapidJsonUtils::toJson(*place.value);
    std::string out = MessageWriter{"answer"}.add("value", std::string_view{json}).text();
    return out.size() <= MaxFrameSize ? out : refusal("get", pointer, "the value is too large");
}

std::string ScriptProject::set(const std::string_view pointer, const std::string_view json) {
    const ScriptPlace place = placeToWrite(_project, pointer);
    if(!place.problem.empty())
        return place.problem;
    if(isOthersEdit())
        return OthersEdit;
    if(place.depth + depthOf(json) > MaxDepth)
        return "the value is nested deeper than 10000 levels";
    if(json.size() > MaxValueSize - _valueSize)
        return "the script has set values of more than 128 MB";

    rapidjson::Document value;
    constexpr unsigned Flags = rapidjson::kParseIterativeFlag | rapidjson::kParseFullPrecisionFlag;
    if(value.Parse<Flags>(json.data(), json.size()).HasParseError())
        return "the value is not JSON";
    _valueSize += json.size();
    push(pointer, place, value);
    return {};
}

/* Undoing removes a container that it leaves empty, also one that was empty before, and if that was in
   an array the next one takes its place. So what is missing is made as one value in a container that
   has others, and an empty container is replaced by one with the value. */
void ScriptProject::push(
    const std::string_view text, const ScriptPlace& place, rapidjson::Document& value) {
    const Pointer pointer{text.data(), text.size()};
    const Pointer::Token* const tokens = pointer.GetTokens();
    std::size_t count = pointer.GetTokenCount();
    for(; count > place.found + 1; --count) {
        const bool isName = place.isLastName && count == place.depth;
        wrap(value, tokens[count - 1],
            !isName && tokens[count - 1].index != rapidjson::kPointerInvalidIndex);
    }
    const rapidjson::Value* const container = Pointer{tokens, count - 1}.Get(*_project.document);
    if(count > 1 && isEmpty(*container))
        wrap(value, tokens[--count], container->IsArray());
    _changes.pushChange(textOf(pointer, count).c_str(), value, false);
}

std::string ScriptProject::remove(const std::string_view pointer) {
    const ScriptPlace place = placeToWrite(_project, pointer);
    if(!place.problem.empty())
        return place.problem;
    if(!place.value)
        return "nothing is there";
    if(isOthersEdit())
        return OthersEdit;
    /* As above: the container stays, so that there's a place to come back to */
    const Pointer path{pointer.data(), pointer.size()};
    const rapidjson::Value& container = *Pointer{path.GetTokens(), place.depth - 1}.Get(
        *_project.document);
    if(place.depth > 1 && hasOneValue(container))
        _changes.pushChange(
            textOf(path, place.depth - 1).c_str(), rapidjson::Value{container.GetType()}, false);
    else
        _changes.pushRemoval(std::string{pointer}.c_str());
    return {};
}

std::string ScriptProject::begin() {
    if(isOthersEdit()) {
        const std::string message = std::string{"project.group(): "} + OthersEdit;
        return MessageWriter{"refusal"}.add("message", std::string_view{message}).text();
    }
    if(_groupDepth++ == 0) {
        _changes.beginGroup();
        _changes.setLocked(true);
    }
    return answerMessage();
}

std::string ScriptProject::commit() {
    if(_groupDepth != 0 && --_groupDepth == 0) {
        _changes.setLocked(false);
        _changes.commit();
    }
    return answerMessage();
}

void ScriptProject::scriptEnded() {
    _valueSize = 0;
    if(_groupDepth == 0)
        return;
    _groupDepth = 1;
    try {
        commit();
    } catch(const std::exception&) {
        /* A handler threw, the group is closed. There's no script any more to tell it to. */
    }
}

}
