#include "plugins/console/VisibleLines.h"

#include "plugins/console/lineTag.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

LineLevel lineLevel(const char* const line) {
    if(hasErrorTag(line))
        return LineLevel::Error;
    return hasWarningTag(line) ? LineLevel::Warning : LineLevel::Other;
}

}

VisibleLines::VisibleLines(const StringArrayView& lines, const ShownLevels levels,
    const std::size_t firstRow, const std::size_t endRow):
    _lines{lines},
    _levels{levels},
    _firstRow{firstRow},
    _endRow{endRow} {
    if(levels.isNone())
        _nextIndex = lines.size();
}

bool VisibleLines::isShown(const LineLevel level) const {
    if(level == LineLevel::Error)
        return _levels.errors;
    return level == LineLevel::Warning ? _levels.warnings : _levels.info;
}

/* Twice the size, as the positions of a line's rows are rounded otherwise than those of lines */
bool VisibleLines::canReachRange(const std::size_t index, const std::size_t row) const {
    const Containers::ArrayView<const std::size_t> offsets = _lines.offsets();
    return row >= _firstRow || (offsets[index + 1] - offsets[index]) * 2 >= _firstRow - row;
}

/* Without a branch, as the order of levels in a log can't be predicted */
std::size_t VisibleLines::shownCount(const std::size_t begin, const std::size_t end) const {
    const char* const data = _lines.data().data();
    const Containers::ArrayView<const std::size_t> offsets = _lines.offsets();
    std::size_t count = 0;
    for(std::size_t i = begin; i != end; ++i) {
        const char* const line = data + offsets[i];
        const bool isError = hasErrorTag(line);
        const bool isWarning = hasWarningTag(line);
        count += (isError & _levels.errors) | (isWarning & _levels.warnings) |
            (!(isError | isWarning) & _levels.info);
    }
    return count;
}

/* If all lines of a block together are too short to reach the range, each of them is. A tag needn't
   be read while no row depends on it. */
void VisibleLines::skipHiddenBlocks() {
    constexpr std::size_t BlockSize = 16;
    const Containers::ArrayView<const std::size_t> offsets = _lines.offsets();
    while(_nextIndex + BlockSize <= _lines.size() && _nextRow + BlockSize <= _firstRow) {
        const std::size_t end = _nextIndex + BlockSize;
        const std::size_t size = offsets[end] - offsets[_nextIndex];
        if(size * 2 >= _firstRow - (_nextRow + BlockSize))
            return;
        _nextRow += _levels.isAll() ? BlockSize : shownCount(_nextIndex, end);
        _nextIndex = end;
    }
}

bool VisibleLines::next() {
    skipHiddenBlocks();
    for(; _nextIndex != _lines.size() && _nextRow < _endRow; ++_nextIndex) {
        const bool canReach = canReachRange(_nextIndex, _nextRow);
        if(!canReach && _levels.isAll()) {
            ++_nextRow;
            continue;
        }
        const LineLevel level = lineLevel(_lines.data().data() + _lines.offsets()[_nextIndex]);
        if(!isShown(level))
            continue;
        const std::size_t row = _nextRow++;
        if(!canReach)
            continue;
        _index = _nextIndex++;
        _row = row;
        _level = level;
        return true;
    }
    return false;
}

}
