#ifndef Quillmere_host_ViewChangeHandlers_h
#define Quillmere_host_ViewChangeHandlers_h

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>

#include "QuillmereEditor/ChangeObserver.h"

class AbstractModule;

namespace QuillmereEngine {

struct Change;
class ChangeManager;
class EditorView;

/**
@brief Functions of panels that hear of changes, and that go with their panel

A history keeps its handlers until it's reset and doesn't copy their keys, so nothing of a module may
be one. In their place there's one handler a key that hands on what it hears. Its code lies in this
library and its key is its own; what is a module's goes with @ref forget(), before the module is
closed.

Reached through @ref QuillmereEditorApplication::addChangeHandler(). UI thread.
*/
class ViewChangeHandlers: private ChangeObserver {
public:
    /**
    @brief Hears of a change that's in the document already, as @ref ChangeHandler::handle() does

    May do what is said at @ref ChangeManager, register and forget functions, also itself, and throw:
    the log says so, and who changed the document doesn't notice.
    */
    using Function = std::function<void(
        const Change& change, Corrade::Containers::ArrayView<const std::string> path)>;

    explicit ViewChangeHandlers();

    /** @brief Destroys all functions. The history may live on or have gone. */
    ~ViewChangeHandlers() override;

    /**
    @brief Register a function
    @param changes  The history. All functions belong to the same one, which may be reset: they are
        registered again then. Another one may come only after this one has gone.
    @param view     Whose function it is, has to be forgotten before its module is closed
    @param key      As for @ref ChangeManager::addChangeHandler(), copied. Of a handler that was
        registered there with the same key and this one the history calls only one.
    @param function Expected not to be empty

    The functions of one key are called in the order in which they came, whosever they are. One that
    is registered while they are being called hears of the next change.
    */
    void add(ChangeManager& changes, const EditorView& view, Corrade::Containers::StringView key,
        Function function);

    /**
    @brief Destroy all functions of a panel

    They aren't called any more, also of the change that is being told just now. Of one that is
    running the function object is destroyed when it has returned, so a module isn't to be closed from
    inside of its own function.
    */
    void forget(const AbstractModule& view);

private:
    struct Entry;
    class Key;
    class Forwarder;

    void historyReset() override;
    void registerKey(const std::shared_ptr<Key>& key);

    ChangeManager* _changes = nullptr;
    std::vector<std::shared_ptr<Key>> _keys;
};

}

#endif
