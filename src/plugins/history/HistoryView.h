#ifndef Quillmere_plugins_history_HistoryView_h
#define Quillmere_plugins_history_HistoryView_h

#include <cstddef>
#include <string>

#include "QuillmereEditor/EditorView.h"
#include "plugins/history/HistoryRows.h"

namespace QuillmereEngine {

class ChangeManager;

/**
@brief The panel that lists the undo history

One row per change, oldest first, after one for the state before all of them. A click on a row, or
the arrow keys, undo and redo until that state is there; in a group the whole of it. Rows can be
filtered by path. While the history is locked or a group is open rows are drawn disabled and do
nothing.

Work per frame follows the rows that are seen, also for the text of huge values, and finding the
rows of a filter is done when the history has changed. The filter's text doesn't survive a reload of
the module.
*/
class HistoryView: public EditorView {
public:
    explicit HistoryView(
        Corrade::PluginManager::AbstractManager& manager, Corrade::Containers::StringView plugin);

    ~HistoryView() override;

    /** @brief "History" */
    const char* title() const override;

    /** @brief Draw the panel's window. Expects that the panel is initialized. */
    void draw() override;

private:
    struct Row;

    void drawContent();
    void drawRows(const ChangeManager& changes);
    void drawRow(const ChangeManager& changes, std::size_t row);
    Row rowAt(const ChangeManager& changes, std::size_t row) const;
    void followPosition(const ChangeManager& changes);
    void readKeys(const ChangeManager& changes);
    void walk(ChangeManager& changes);

    HistoryRows _rows;
    char _filter[256]{};
    /* What's scrolled into view when it changes */
    std::size_t _followedRow = std::size_t(-1);
    /* Where the user wants to go, once the rows are drawn: it changes them */
    std::size_t _wantedState = 0;
    bool _isWalkWanted = false;
};

}

#endif
