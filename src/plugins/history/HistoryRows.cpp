#include "plugins/history/HistoryRows.h"

#include <algorithm>

#include <Corrade/Utility/Assert.h>

#include "QuillmereEditor/ChangeManager.h"
#include "plugins/history/shortText.h"

namespace QuillmereEngine {

namespace {

char lowerCase(const char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; }

}

bool isPathShown(const std::string_view path, const std::string_view filter) {
    return std::search(path.begin(), path.end(), filter.begin(), filter.end(),
               [](const char a, const char b) { return lowerCase(a) == lowerCase(b); }) !=
        path.end() ||
        filter.empty();
}

void HistoryRows::update(const ChangeManager& changes, const std::string_view filter) {
    const std::size_t count = changes.changeCount();
    /* Grown by as much, the list begins with what was there */
    const bool isAppendedTo = filter == _filter && count >= _changeCount &&
        changes.revision() - _revision == count - _changeCount;
    if(!isAppendedTo) {
        _filter = filter;
        _states.clear();
        _changeCount = 0;
    }
    if(!_filter.empty())
        append(changes);
    _revision = changes.revision();
    _changeCount = count;
}

void HistoryRows::append(const ChangeManager& changes) {
    for(std::size_t i = _changeCount; i != changes.changeCount(); ++i)
        if(isPathShown(pathOf(changes.changes()[i]), _filter))
            _states.push_back(i + 1);
}

std::size_t HistoryRows::size() const {
    return 1 + (_filter.empty() ? _changeCount : _states.size());
}

std::size_t HistoryRows::state(const std::size_t row) const {
    CORRADE_ASSERT(row < size(),
        "HistoryRows::state(): expected a row below" << size() << "but got" << row, 0);
    return row == 0 || _filter.empty() ? row : _states[row - 1];
}

std::size_t HistoryRows::rowOf(const std::size_t state) const {
    if(_filter.empty())
        return std::min(state, _changeCount);
    const auto after = std::upper_bound(_states.begin(), _states.end(), state);
    return std::size_t(after - _states.begin());
}

}
