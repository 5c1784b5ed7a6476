#include "host/ViewChangeHandlers.h"

#include <algorithm>
#include <exception>
#include <utility>

#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/ScopeGuard.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Assert.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/EditorView.h"
#include "QuillmereEditor/Tools/Log.h"

using namespace Corrade;

namespace QuillmereEngine {

struct ViewChangeHandlers::Entry {
    /* Null once it's forgotten */
    const AbstractModule* view;
    /* Of the view, for messages: one that fails may be half gone */
    std::string name;
    Function function;
    int runningCount = 0;
};

/* The functions of one key. Shared by all handlers that were registered for it, of which one may
   still be running after a reset. */
class ViewChangeHandlers::Key {
public:
    explicit Key(std::string text): _text{std::move(text)} {}

    const std::string& text() const { return _text; }

    void add(std::unique_ptr<Entry> entry) { _entries.push_back(std::move(entry)); }

    void forget(const AbstractModule* view);

    void forgetAll() {
        for(const auto& entry: _entries)
            drop(*entry);
        sweep();
    }

    void call(const Change& change, Containers::ArrayView<const std::string> path);

private:
    void call(Entry& entry, const Change& change, Containers::ArrayView<const std::string> path);
    static void drop(Entry& entry);
    void sweep();

    std::string _text;
    std::vector<std::unique_ptr<Entry>> _entries;
    int _depth = 0;
};

void ViewChangeHandlers::Key::forget(const AbstractModule* const view) {
    /* By index: what the functions hold may register others when it's destroyed */
    for(std::size_t i = 0; i != _entries.size(); ++i)
        if(_entries[i]->view == view)
            drop(*_entries[i]);
    sweep();
}

/* A function that runs is destroyed when it has returned */
void ViewChangeHandlers::Key::drop(Entry& entry) {
    entry.view = nullptr;
    if(entry.runningCount != 0)
        return;
    const Function gone = std::exchange(entry.function, nullptr);
}

/* Not while somebody goes through them */
void ViewChangeHandlers::Key::sweep() {
    if(_depth == 0)
        _entries.erase(std::remove_if(_entries.begin(), _entries.end(),
                           [](const auto& entry) { return !entry->view && !entry->runningCount; }),
            _entries.end());
}

void ViewChangeHandlers::Key::call(
    const Change& change, const Containers::ArrayView<const std::string> path) {
    ++_depth;
    const std::size_t count = _entries.size();
    for(std::size_t i = 0; i != count; ++i)
        if(_entries[i]->view)
            call(*_entries[i], change, path);
    --_depth;
    sweep();
}

/* The exception may be of a type of the module, and the one who changed the document of another
   panel, which isn't to be closed for it */
void ViewChangeHandlers::Key::call(
    Entry& entry, const Change& change, const Containers::ArrayView<const std::string> path) {
    ++entry.runningCount;
    std::string problem;
    try {
        entry.function(change, path);
    } catch(const std::exception& error) {
        problem = error.what();
    } catch(...) {
        problem = "it threw an exception of an unknown type";
    }
    --entry.runningCount;
    if(!problem.empty())
        log(LogLevel::Error,
            (entry.name + " failed at a change of \"" + _text + "\": " + problem).c_str());
    if(!entry.view)
        drop(entry);
}

class ViewChangeHandlers::Forwarder: public ChangeHandler {
public:
    explicit Forwarder(std::shared_ptr<Key> key): _key{std::move(key)} {}

    void handle(
        const Change& change, const Containers::ArrayView<const std::string> path) override {
        /* Whatever a function does, the key stays until all have returned */
        const std::shared_ptr<Key> key = _key;
        key->call(change, path);
    }

private:
    /* Whose text the history's key is */
    std::shared_ptr<Key> _key;
};

ViewChangeHandlers::ViewChangeHandlers() = default;

ViewChangeHandlers::~ViewChangeHandlers() {
    for(const std::shared_ptr<Key>& key: std::exchange(_keys, {}))
        key->forgetAll();
}

void ViewChangeHandlers::add(ChangeManager& changes, const EditorView& view,
    const Containers::StringView key, Function function) {
    CORRADE_ASSERT(function, "ViewChangeHandlers::add(): the function is empty", );
    if(!isObserving()) {
        changes.addObserver(*this);
        _changes = &changes;
        historyReset();
    }
    CORRADE_ASSERT(_changes == &changes,
        "ViewChangeHandlers::add(): expected the history of the functions before", );

    auto entry = std::make_unique<Entry>(Entry{&view, view.plugin(), std::move(function)});
    const std::string text{key.data(), key.size()};
    const auto found = std::find_if(_keys.begin(), _keys.end(),
        [&text](const std::shared_ptr<Key>& i) { return i->text() == text; });
    if(found != _keys.end())
        return (*found)->add(std::move(entry));
    _keys.push_back(std::make_shared<Key>(text));
    _keys.back()->add(std::move(entry));
    registerKey(_keys.back());
}

void ViewChangeHandlers::forget(const AbstractModule& view) {
    /* By index: what the functions hold may register others when it's destroyed */
    for(std::size_t i = 0; i != _keys.size(); ++i)
        _keys[i]->forget(&view);
}

/* Also the keys without a function: the history can't be asked for what it has no more */
void ViewChangeHandlers::historyReset() {
    for(const std::shared_ptr<Key>& key: _keys)
        registerKey(key);
}

void ViewChangeHandlers::registerKey(const std::shared_ptr<Key>& key) {
    _changes->addChangeHandler(
        key->text().c_str(), Containers::Pointer<ChangeHandler>{new Forwarder{key}});
}

}
