#include "QuillmereEditor/changeNotification.h"

#include <algorithm>
#include <cstring>
#include <string>

#include <Corrade/Containers/ArrayViewStl.h>
#include <Corrade/Utility/String.h>

#include "host/RapidJsonUtils.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

/* Longer paths are looked up in a string on the heap */
constexpr std::size_t UsualPathSize = 256;
constexpr std::size_t UsualValueSize = 1024;

/* Copies for the handlers, which may change the history, and even the document, that the originals
   belong to. Not in the document's pool, where they would stay. */
class Snapshot {
public:
    explicit Snapshot(const Containers::ArrayView<const char> path,
        const rapidjson::Value* const oldValue, const rapidjson::Value* const newValue,
        const int group):
        _pool{_buffer, sizeof(_buffer)} {
        _change.path = Containers::Array<char>{NoInit, path.size()};
        std::copy(path.begin(), path.end(), _change.path.begin());
        if(oldValue)
            _change.oldValue.emplace(RapidJsonUtils::copy(*oldValue, _pool));
        if(newValue)
            _change.newValue.emplace(RapidJsonUtils::copy(*newValue, _pool));
        _change.group = group;
    }

    const Change& change() const { return _change; }

private:
    alignas(std::max_align_t) char _buffer[UsualValueSize];
    rapidjson::MemoryPoolAllocator<> _pool;
    Change _change;
};

}

void ChangeManager::settle() {
    for(Notification* i = _notification; i; i = i->outer())
        i->settle();
}

void ChangeManager::interrupt() {
    settle();
    for(Notification* i = _notification; i; i = i->outer())
        i->interrupt();
}

/* Most changes have no handler, so this is decided before anything is allocated for one */
bool ChangeManager::hasHandlerFor(const Containers::ArrayView<const char> path) {
    if(!_handlers.size() || path.isEmpty())
        return false;

    char usual[UsualPathSize];
    std::string longer;
    char* components = usual;
    if(path.size() >= UsualPathSize) {
        longer.resize(path.size() + 1);
        components = &longer[0];
    }
    std::replace_copy(path.begin(), path.end(), components, '/', '\0');
    components[path.size()] = '\0';

    const char* component = components;
    for(std::size_t i = 0; i <= path.size(); ++i) {
        if(i != path.size() && path[i] != '/')
            continue;
        if(_handlers.findn(component, std::strlen(component) + 1))
            return true;
        component = components + i + 1;
    }
    return false;
}

void ChangeManager::notify(const Step& step) {
    if(!hasHandlerFor(step.path))
        return;

    const std::vector<std::string> components = Utility::String::split(
        std::string{step.path.data(), step.path.size()}, '/');
    const Snapshot snapshot{step.path, step.oldValue, step.newValue, step.group};
    const Notification notification{_notification, nullptr};
    for(const std::string& component: components) {
        /* Looked up one by one: each handler may have changed what is registered */
        Containers::Pointer<ChangeHandler>* const handler = _handlers.findn(
            component.c_str(), std::strlen(component.c_str()) + 1);
        if(handler)
            (*handler)->handle(snapshot.change(), components);
    }
}

}
