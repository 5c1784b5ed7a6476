#ifndef Quillmere_QuillmereEditor_ChangeHandler_h
#define Quillmere_QuillmereEditor_ChangeHandler_h

#include <functional>
#include <string>

#include <Corrade/Containers/ArrayView.h>

namespace QuillmereEngine {

struct Change;

/** @brief Hears of changes, see @ref ChangeManager::addChangeHandler() */
class ChangeHandler {
public:
    /**
    @brief React to a change that's in the document already
    @param change   The change. When it's undone this is the reversed change, without a group.
    @param path     The components of its path in their order, as produced by splitting at every
        slash: the first one of `/objects/3` is empty. The last one ends with a NUL character if
        the path's array counts it, so compare it as a C string.

    Both are the caller's and end with the call. What a handler may do is said at
    @ref ChangeManager.
    */
    virtual void handle(
        const Change& change, Corrade::Containers::ArrayView<const std::string> path) = 0;

    virtual ~ChangeHandler();
};

/** @brief Calls a function */
class FunctionChangeHandler: public ChangeHandler {
public:
    /** @brief Gets the change, the components of its path and the user data */
    using Function = std::function<void(
        const Change&, Corrade::Containers::ArrayView<const std::string>, void*)>;

    /**
    @brief Constructor
    @param function     Called for each change. An empty one throws `std::bad_function_call` then.
    @param userData     Third argument of the function, not touched here
    */
    explicit FunctionChangeHandler(Function function, void* userData);

    void handle(
        const Change& change, Corrade::Containers::ArrayView<const std::string> path) override;

private:
    Function _function;
    void* _userData;
};

}

#endif
