#ifndef Quillmere_QuillmereEditor_Test_ChangeModel_h
#define Quillmere_QuillmereEditor_Test_ChangeModel_h

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "QuillmereEditor/Test/ModelJson.h"

namespace QuillmereEngine { namespace Test {

/**
@brief What the history is to do, said as plainly as possible

Every entry has the whole document from before and after it. Undoing and redoing puts these back,
except where the ways in which paths are written to are known not to restore the document (see
@ref isRestorable()): there it follows the same rules as a first change does.
*/
class ChangeModel {
public:
    /** @brief Thrown where the manager would end the process */
    struct Abort {};

    ModelJson document;
    /** What handlers were told, oldest first */
    std::vector<std::string> calls;
    /** Components that have a handler */
    std::set<std::string> handlers;

    /** How often an undo took the document from before */
    std::size_t restored = 0;
    /** How often an undo didn't give the document from before */
    std::size_t unrestored = 0;

    /** @brief Change, or remove if there's no value. Throws before anything happens. */
    void push(const std::string& path, const std::optional<ModelJson>& value, bool merge);
    void append(const std::string& path, const std::string& value);
    void undoLast();
    void redoLastUndo();
    int beginGroup();
    void commit();
    void markSave() { _saved = _last; }
    void reset();
    /** @brief Set the group of the newest applied change, if there's one */
    void setLastGroup(int group);

    bool isGroupOpen() const { return _group != -1; }
    bool hasUnsavedChanges() const { return _saved != _last; }
    bool hasLast() const { return _last >= 0; }
    std::size_t changeCount() const { return _history.size(); }

private:
    struct Entry {
        std::string path;
        std::optional<ModelJson> oldValue, newValue;
        int group = -1;
        ModelJson before, after;
        /* Whether undoing it right away gives the document from before */
        bool isRestorable = false;
        /* Whether before and after are still what it was made from and to */
        bool hasSnapshots = true;
    };

    bool isRefused(const std::string& path);
    bool isRestorable(const Entry& entry);
    bool wouldAbort(const std::string& path, bool isCreation);
    int mergeTarget(const std::string& path) const;
    void merge(int target, const std::optional<ModelJson>& value);
    void apply(const std::string& path, const std::optional<ModelJson>& oldValue,
        const std::optional<ModelJson>& newValue);
    void createAt(const std::string& path, const ModelJson& value);
    void remove(const ModelPath& path);
    bool undoOne();
    bool redoOne();
    void notify(const std::string& path, const std::optional<ModelJson>& oldValue,
        const std::optional<ModelJson>& newValue, int group);

    std::vector<Entry> _history;
    int _last = -1;
    int _saved = -1;
    int _group = -1;
    int _groupCount = 0;
};

/** @brief How both sides write down that the handler of @p key was told of a change */
std::string callText(const std::string& key, const std::string& change, int group,
    const std::vector<std::string>& components);

}}

#endif
