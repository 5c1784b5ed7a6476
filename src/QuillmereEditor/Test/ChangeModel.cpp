#include "QuillmereEditor/Test/ChangeModel.h"

#include <algorithm>
#include <climits>

namespace QuillmereEngine { namespace Test {

namespace {

ModelPath components(const std::string& path) {
    ModelPath out;
    parsePointer(path, out);
    return out;
}

ModelPath parentOf(ModelPath path) {
    if(!path.empty())
        path.pop_back();
    return path;
}

std::string lastPart(const std::string& path) {
    return path.substr(path.rfind('/') == std::string::npos ? 0 : path.rfind('/') + 1);
}

/* The path with the NUL that its array counts, cut at each slash */
std::vector<std::string> parts(const std::string& path) {
    std::vector<std::string> out{""};
    for(const char c: path + '\0')
        if(c == '/')
            out.emplace_back();
        else
            out.back() += c;
    return out;
}

}

std::string callText(const std::string& key, const std::string& change, const int group,
    const std::vector<std::string>& components) {
    std::string out = key + " | " + change + " | " + std::to_string(group) + " |";
    for(const std::string& component: components)
        out += " " + component + ";";
    return out;
}

/* A number in an array is an index, and so is one where an array would be made for it. A negative
   one is no index of which an array would be made, unless it comes last. */
bool ChangeModel::isRefused(const std::string& path) {
    ModelPath path_;
    if(!parsePointer(path, path_))
        return true;
    for(std::size_t i = 0; i != path_.size(); ++i) {
        const ModelJson* const parent = find(document, {path_.begin(), path_.begin() + int(i)});
        if((parent && parent->isObject()) || !isNumber(path_[i]))
            continue;
        const bool isLast = i + 1 == path_.size();
        const bool isIndex = isLast || path_[i][0] != '-' || (parent && parent->isArray());
        const long long value = numberValue(path_[i]);
        if(isIndex && (value < 0 || value > INT_MAX))
            return true;
    }
    return false;
}

bool ChangeModel::wouldAbort(const std::string& path, const bool isCreation) {
    const ModelJson* const parent = find(document, parentOf(components(path)));
    return isCreation && isNumber(lastPart(path)) && parent && !parent->isContainer();
}

/* The document is still the one from before. What isn't restorable: pruned parents and ones that
   were created, whatever was empty before, a member that wasn't the last one, padding, the
   component -, an array or plain value that becomes an object. */
bool ChangeModel::isRestorable(const Entry& entry) {
    const ModelPath path = components(entry.path);
    const ModelJson* const parent = find(document, parentOf(path));
    if((entry.oldValue && entry.newValue) || path.empty())
        return true;
    const bool isPrunable = path.size() > 2;
    if(!entry.oldValue && !entry.newValue)
        return !(isPrunable && parent && parent->isContainer() && parent->size() == 0);
    if(!parent || !parent->isContainer() ||
        (isPrunable && parent->size() == (entry.oldValue ? 1 : 0)))
        return false;
    if(!entry.newValue)
        return parent->isArray() || parent->memberIndex(path.back()) + 1 == int(parent->size());
    const long long index = properIndex(lastPart(entry.path));
    return parent->isObject() || (index >= 0 && index <= (long long)(parent->size()));
}

int ChangeModel::mergeTarget(const std::string& path) const {
    for(int i = _last; i >= 1 && _history[std::size_t(i)].group == _group; --i)
        if(_history[std::size_t(i)].path == path)
            return i;
    return -1;
}

void ChangeModel::push(
    const std::string& path, const std::optional<ModelJson>& value, const bool isMerge) {
    if(isRefused(path))
        return;
    const int target = isMerge ? mergeTarget(path) : -1;
    const ModelJson* const present = find(document, components(path));
    const bool isNew = target < 0 ? !present : !_history[std::size_t(target)].oldValue;
    if(wouldAbort(path, isNew && value))
        throw Abort{};
    if(target >= 0)
        return merge(target, value);

    Entry entry;
    entry.path = path;
    if(present)
        entry.oldValue = *present;
    entry.newValue = value;
    entry.group = _group;
    entry.before = document;
    entry.isRestorable = isRestorable(entry);
    apply(path, entry.oldValue, entry.newValue);
    entry.after = document;

    _history.resize(std::size_t(++_last));
    _history.push_back(entry);
    if(_saved == _last)
        _saved = -1;
    if(_group < 0)
        notify(path, entry.oldValue, entry.newValue, entry.group);
}

/* Only a change of a value that's also the newest entry stays a change of one document into another
   when it's merged into: of others the entries in between lose their order, and a creation or a
   removal is done a second time */
void ChangeModel::merge(const int target, const std::optional<ModelJson>& value) {
    const bool isPlain = _history[std::size_t(target)].oldValue &&
        _history[std::size_t(target)].newValue && value;
    if(target != _last)
        for(int i = target; i <= _last; ++i)
            _history[std::size_t(i)].hasSnapshots = false;
    std::swap(_history[std::size_t(target)], _history[std::size_t(_last)]);

    Entry& entry = _history[std::size_t(_last)];
    entry.newValue = value;
    entry.group = _group;
    entry.hasSnapshots = entry.hasSnapshots && isPlain && document == entry.after;
    apply(entry.path, entry.oldValue, entry.newValue);
    entry.after = document;
    if(_group < 0)
        notify(entry.path, entry.oldValue, entry.newValue, entry.group);
}

void ChangeModel::append(const std::string& path, const std::string& value) {
    ModelPath place;
    const ModelJson* const present = parsePointer(path, place) ? find(document, place) : nullptr;
    ModelJson array = present && present->isArray() ? *present : ModelJson::array();
    array.items.push_back(ModelJson::string(value));
    push(path, array, false);
}

void ChangeModel::apply(const std::string& path, const std::optional<ModelJson>& oldValue,
    const std::optional<ModelJson>& newValue) {
    if(!newValue)
        remove(components(path));
    else if(oldValue)
        create(document, components(path)) = *newValue;
    else
        createAt(path, *newValue);
}

void ChangeModel::createAt(const std::string& path, const ModelJson& value) {
    const ModelPath place = components(path);
    const ModelPath parentPlace = parentOf(place);
    const ModelJson* const parent = find(document, parentPlace);
    if(!isNumber(lastPart(path)) || (parent && parent->isObject())) {
        create(document, place) = value;
        return;
    }
    if(wouldAbort(path, true))
        throw Abort{};
    const bool isThere = parent;
    ModelJson& array = create(document, parentPlace);
    if(!isThere)
        array = ModelJson::array();
    const std::size_t index = std::size_t(numberValue(lastPart(path)));
    if(index < array.items.size())
        array.items.insert(array.items.begin() + std::ptrdiff_t(index), value);
    else
        create(document, place) = value;
}

void ChangeModel::remove(const ModelPath& path) {
    erase(document, path);
    for(ModelPath place = parentOf(path); place.size() > 1; place.pop_back()) {
        const ModelJson* const parent = find(document, place);
        if(!parent || !parent->isContainer() || parent->size())
            return;
        erase(document, place);
    }
}

bool ChangeModel::undoOne() {
    const Entry& entry = _history[std::size_t(_last)];
    if(isRefused(entry.path))
        return false;
    const bool isExpected = entry.hasSnapshots && document == entry.after;
    if(isExpected && entry.isRestorable) {
        document = entry.before;
        ++restored;
    } else {
        apply(entry.path, entry.newValue, entry.oldValue);
        unrestored += isExpected && !(document == entry.before);
    }
    --_last;
    notify(entry.path, entry.newValue, entry.oldValue, -1);
    return true;
}

void ChangeModel::undoLast() {
    if(_last < 0)
        return;
    const int group = std::max(_history[std::size_t(_last)].group, 0);
    while(undoOne() && _last >= 0 && _history[std::size_t(_last)].group == group) {}
}

bool ChangeModel::redoOne() {
    const Entry& entry = _history[std::size_t(_last) + 1];
    if(isRefused(entry.path))
        return false;
    if(entry.hasSnapshots && document == entry.before)
        document = entry.after;
    else
        apply(entry.path, entry.oldValue, entry.newValue);
    ++_last;
    notify(entry.path, entry.oldValue, entry.newValue, entry.group);
    return true;
}

void ChangeModel::redoLastUndo() {
    const auto next = [this] { return std::size_t(_last + 1); };
    if(next() == _history.size())
        return;
    const int group = std::max(_history[next()].group, 0);
    while(redoOne() && next() < _history.size() && _history[next()].group == group) {}
}

int ChangeModel::beginGroup() { return _group = ++_groupCount; }

void ChangeModel::commit() {
    const int group = _group;
    _group = -1;
    for(int i = _last; i >= 0 && _history[std::size_t(i)].group == group; --i) {
        const Entry& entry = _history[std::size_t(i)];
        notify(entry.path, entry.oldValue, entry.newValue, entry.group);
    }
}

void ChangeModel::reset() {
    _history.clear();
    handlers.clear();
    _last = -1;
}

void ChangeModel::setLastGroup(const int group) { _history[std::size_t(_last)].group = group; }

void ChangeModel::notify(const std::string& path, const std::optional<ModelJson>& oldValue,
    const std::optional<ModelJson>& newValue, const int group) {
    const std::string kind = !oldValue ? "Create" : newValue ? "Change" : "Remove";
    const std::string text = kind + " " + path + ": " + (oldValue ? oldValue->text() : "()") +
        " -> " + (newValue ? newValue->text() : "()");
    const std::vector<std::string> all = parts(path);
    for(const std::string& part: all)
        if(handlers.count(part.c_str()))
            calls.push_back(callText(part.c_str(), text, group, all));
}

}}
