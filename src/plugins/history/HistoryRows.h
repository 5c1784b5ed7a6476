#ifndef Quillmere_plugins_history_HistoryRows_h
#define Quillmere_plugins_history_HistoryRows_h

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace QuillmereEngine {

class ChangeManager;

/** @brief Whether a path contains a text, letters of ASCII in any case. Each contains the empty one. */
bool isPathShown(std::string_view path, std::string_view filter);

/**
@brief Which states of a history a list shows

A state is known by how many changes are applied in it. The first row is the state before all
changes, each of the others the one after a change, of those whose path passes the filter.
*/
class HistoryRows {
public:
    /**
    @brief Follow a history and a filter, see @ref isPathShown()

    Costs nothing while both are the same, by the number of new changes when only such came, and by
    the history's size otherwise.
    */
    void update(const ChangeManager& changes, std::string_view filter);

    /** @brief Number of rows, at least one */
    std::size_t size() const;

    /** @brief The state of a row. Expects that there's the row. */
    std::size_t state(std::size_t row) const;

    /** @brief Row of a state, or of the last shown one before it */
    std::size_t rowOf(std::size_t state) const;

private:
    void append(const ChangeManager& changes);

    std::string _filter;
    std::size_t _revision = 0;
    std::size_t _changeCount = 0;
    /* Of the rows but the first one, rising. Unused without a filter, where all are shown. */
    std::vector<std::size_t> _states;
};

}

#endif
