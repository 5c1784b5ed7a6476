#include "QuillmereEditor/Test/ChangeComparison.h"

#include <climits>
#include <sstream>

#include <Corrade/Utility/Debug.h>

#include "host/RapidJsonUtils.h"
#include "host/jsonText.h"

using namespace Corrade;

namespace QuillmereEngine { namespace Test {

namespace {

/* Large enough for every quirk, small enough for the padding of an array to cost nothing */
constexpr long long IndexLimit = 4096;

constexpr const char* HandlerKeys[]{"", "objects", "name", "0", "list", "m"};

/* '#' is replaced by a small number */
constexpr const char* Paths[]{"/objects/#/name", "/objects/#/name", "/objects/#/translation",
    "/objects/#/translation/#", "/objects/#", "/objects/#", "/objects", "/objects/#/tags/#",
    "/list/#", "/list/#", "/list/#", "/list", "/list/-", "/list/0#", "/list/name", "/list/-#",
    "/list/#/sub", "/list/-0", "/list/99999999999", "/list/2147483648", "/map/#", "/map/-#",
    "/map/k", "/map/#/x", "/map", "/deep/r/m/#", "/deep/r/m/#/n", "/deep/r/m", "/deep/r",
    "/deep/r/-#/x", "/scalar", "/scalar/x", "/scalar/x/#", "/new/#", "/new/a/b", "/new/#/x/#",
    "/new/-/#", "/~0~1", "/", "//", "", "objects", "/objects/~2", "/list/~", "/e/f/g/h", "/e/f",
    "/list/-#/x"};

void toValue(const ModelJson& json, rapidjson::Document& out) {
    JsonTextError error;
    const std::string text = json.text();
    if(!parseJson({text.data(), text.size()}, out, error))
        out.SetNull();
}

ModelJson firstDocument() {
    const auto number = ModelJson::number;
    const auto text = ModelJson::string;
    return ModelJson::object(
        {{"objects",
             ModelJson::array({ModelJson::object({{"name", text("first")},
                                   {"translation", ModelJson::array({number(1), number(2)})}}),
                 ModelJson::object({{"name", text("second")}})})},
            {"list", ModelJson::array({text("x"), text("y")})},
            {"map", ModelJson::object({{"k", number(1)}, {"7", number(2)}})}, {"scalar", number(5)},
            {"deep",
                ModelJson::object(
                    {{"r", ModelJson::object({{"m", ModelJson::array({number(1)})}})}})}});
}

bool hasLargeIndex(const std::string& path) {
    ModelPath components;
    parsePointer(path, components);
    for(const std::string& component: components)
        if(properIndex(component) >= IndexLimit && properIndex(component) <= INT_MAX)
            return true;
    return false;
}

}

ChangeComparison::ChangeComparison(std::function<std::uint8_t()> source):
    _source{std::move(source)} {
    _model.document = firstDocument();
    toValue(_model.document, *_project.document);
    registerHandlers();
}

void ChangeComparison::registerHandlers() {
    for(const char* const key: HandlerKeys) {
        _model.handlers.insert(key);
        _manager.addChangeHandler(
            key,
            [this, key](
                const Change& change, const Containers::ArrayView<const std::string> path, void*) {
                std::ostringstream text;
                Utility::Debug{&text, Utility::Debug::Flag::NoNewlineAtTheEnd} << change;
                _calls.push_back(
                    callText(key, text.str(), change.group, {path.begin(), path.end()}));
            },
            nullptr);
    }
}

std::string ChangeComparison::typedPath() {
    std::string out = "/";
    for(int length = _source() % 12; length; --length)
        out += char(_source());
    out.resize(out.find('\0') == std::string::npos ? out.size() : out.find('\0'));
    return out;
}

std::string ChangeComparison::path() {
    const std::size_t choice = _source();
    if(choice >= 240) {
        const std::string typed = typedPath();
        return hasLargeIndex(typed) ? "/list/0" : typed;
    }
    std::string out;
    for(const char c: std::string{Paths[choice % (sizeof(Paths) / sizeof(*Paths))]})
        out += c == '#' ? std::to_string(_source() % 5) : std::string(1, c);
    return out;
}

ModelJson ChangeComparison::value(const int depth) {
    const int kind = _source() % (depth < 2 ? 7 : 4);
    if(kind == 0)
        return {};
    if(kind < 3)
        return ModelJson::number(_source());
    if(kind == 3)
        return ModelJson::string(_source() % 2 ? "a text too long to be stored in a value" : "b");
    ModelJson out = kind < 6 ? ModelJson::array() : ModelJson::object();
    for(int count = _source() % 4; count; --count) {
        if(out.isArray())
            out.items.push_back(value(depth + 1));
        else
            out.members.emplace_back(std::to_string(count), value(depth + 1));
    }
    return out;
}

void ChangeComparison::push(const bool merge, const bool isRemoval) {
    const std::string where = path();
    const ModelJson model = isRemoval ? ModelJson{} : value();
    _operation = std::string{isRemoval ? "remove " : "push "} + where + " " + model.text() +
        (merge ? " merge" : "");
    try {
        _model.push(where, isRemoval ? std::nullopt : std::optional<ModelJson>{model}, merge);
    } catch(const ChangeModel::Abort&) {
        _operation += " (left out)";
        return;
    }
    rapidjson::Document json;
    toValue(model, json);
    Containers::Array<char> array{NoInit, where.size() + 1};
    std::copy_n(where.c_str(), array.size(), array.begin());
    _manager.pushChange(std::move(array), isRemoval ? nullptr : &json, merge);
}

void ChangeComparison::operate(const std::uint8_t operation) {
    switch(operation % 16) {
        case 0:
        case 1:
            return push(false, false);
        case 2:
        case 3:
        case 4:
            return push(true, false);
        case 5:
            return push(false, true);
        case 6:
            return push(operation & 16, true);
        case 7: {
            const std::string where = path();
            _operation = "append " + where;
            _model.append(where, "appended");
            _manager.pushAppend(where.c_str(), "appended");
            return;
        }
        case 8:
            _operation = "markSave";
            _model.markSave();
            _manager.markSave();
            return;
        case 9:
            _operation = "commit";
            _model.commit();
            _manager.commit();
            return;
        case 10:
            if(_model.isGroupOpen())
                return;
            _operation = "beginGroup";
            if(_model.beginGroup() != _manager.beginGroup())
                _difference = "number of the group";
            return;
        case 11:
            if(operation < 192 || !_model.hasLast())
                return;
            _operation = "group 0";
            _model.setLastGroup(0);
            _manager.lastChange().group = 0;
            return;
        case 12:
            if(operation < 240)
                return;
            _operation = "reset";
            _model.reset();
            _manager.reset(_project);
            registerHandlers();
            return;
        default:
            if(_model.isGroupOpen())
                return;
            _operation = operation % 16 == 15 ? "redoLastUndo" : "undoLast";
            operation % 16 == 15 ? _model.redoLastUndo() : _model.undoLast();
            operation % 16 == 15 ? _manager.redoLastUndo() : _manager.undoLast();
    }
}

bool ChangeComparison::step() {
    _operation = "nothing";
    try {
        std::ostringstream refusals;
        const Utility::Error silence{&refusals, Utility::Error::Flag::NoNewlineAtTheEnd};
        operate(_source());
    } catch(const ChangeModel::Abort&) {
        return false;
    }
    compare();
    _model.calls.clear();
    _calls.clear();
    return _difference.empty();
}

void ChangeComparison::compare() {
    const std::string text = RapidJsonUtils::toJson(*_project.document);
    if(text != _model.document.text())
        _difference = "document " + text + "\nexpected " + _model.document.text();
    else if(_manager.changeCount() != _model.changeCount())
        _difference = "length " + std::to_string(_manager.changeCount()) + ", expected " +
            std::to_string(_model.changeCount());
    else if(_manager.hasUnsavedChanges() != _model.hasUnsavedChanges())
        _difference = "hasUnsavedChanges()";
    else if(_calls != _model.calls) {
        _difference = "calls of handlers\n";
        for(const std::string& call: _calls)
            _difference += call + "\n";
        _difference += "expected\n";
        for(const std::string& call: _model.calls)
            _difference += call + "\n";
    }
    if(!_difference.empty())
        _difference = _operation + ": " + _difference;
}

}}
