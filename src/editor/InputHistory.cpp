#include "editor/InputHistory.h"

namespace QuillmereEngine {

void InputHistory::add(const std::string& line) {
    if(_lines.empty() || _lines.back() != line)
        _lines.push_back(line);
    if(_lines.size() > MaxLines)
        _lines.erase(_lines.begin());
    _shown = _lines.size();
    _typed.clear();
}

std::optional<std::string> InputHistory::earlier(const std::string& text) {
    if(_shown == 0)
        return {};
    if(_shown == _lines.size())
        _typed = text;
    return _lines[--_shown];
}

std::optional<std::string> InputHistory::later() {
    if(_shown == _lines.size())
        return {};
    ++_shown;
    return _shown == _lines.size() ? _typed : _lines[_shown];
}

}
