#ifndef Quillmere_plugins_console_VisibleLines_h
#define Quillmere_plugins_console_VisibleLines_h

#include <cstddef>

#include "common/StringArrayView.h"
#include "plugins/console/shownText.h"

namespace QuillmereEngine {

/** @brief How a line is coloured and by what it's hidden */
enum class LineLevel { Error, Warning, Other };

/**
@brief Walk over the lines of a store that can be seen in a range of rows

Every shown line takes one row, in the order of the store. Also visited are lines above the range
that hold enough bytes to reach into it if they were newlines, as such a line is drawn over several
rows. So more lines may be visited than can be seen, but never less.

    for(VisibleLines line{lines, levels, first, end}; line.next();)
        draw(lines.get(line.index()), line.row(), line.level());
*/
class VisibleLines {
public:
    /**
    @param lines    Has to outlive the walk
    @param levels   What's shown; `info` stands for all that is neither an error nor a warning
    @param firstRow First row in the range
    @param endRow   Row behind the last in the range
    */
    explicit VisibleLines(
        const StringArrayView& lines, ShownLevels levels, std::size_t firstRow, std::size_t endRow);

    /** @brief Go to the next line, the first at first. False when there's none. */
    bool next();

    std::size_t index() const { return _index; }
    std::size_t row() const { return _row; }
    LineLevel level() const { return _level; }

private:
    bool isShown(LineLevel level) const;
    bool canReachRange(std::size_t index, std::size_t row) const;
    std::size_t shownCount(std::size_t begin, std::size_t end) const;
    void skipHiddenBlocks();

    const StringArrayView& _lines;
    ShownLevels _levels;
    std::size_t _firstRow;
    std::size_t _endRow;
    /* Where the next step begins */
    std::size_t _nextIndex = 0;
    std::size_t _nextRow = 0;
    /* Where the walk stands */
    std::size_t _index = 0;
    std::size_t _row = 0;
    LineLevel _level = LineLevel::Other;
};

}

#endif
