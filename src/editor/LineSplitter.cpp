#include "editor/LineSplitter.h"

#include <utility>

namespace QuillmereEngine {

namespace {

constexpr std::string_view ReplacementCharacter = "\xef\xbf\xbd";

}

LineSplitter::LineSplitter(std::function<void(const std::string&)> sink): _sink{std::move(sink)} {}

void LineSplitter::push(std::string_view bytes) {
    for(;;) {
        const std::size_t end = bytes.find('\n');
        append(bytes.substr(0, end));
        if(end == std::string_view::npos)
            return;
        if(!_line.empty() && _line.back() == '\r')
            _line.pop_back();
        emitLine();
        bytes.remove_prefix(end + 1);
    }
}

void LineSplitter::finish() {
    if(!_line.empty())
        emitLine();
}

void LineSplitter::append(std::string_view bytes) {
    while(!bytes.empty()) {
        if(_line.size() >= MaxLineSize)
            emitLine();
        const std::string_view piece = bytes.substr(0, MaxLineSize - _line.size());
        const std::size_t nul = piece.find('\0');
        _line += piece.substr(0, nul);
        bytes.remove_prefix(nul == std::string_view::npos ? piece.size() : nul + 1);
        if(nul != std::string_view::npos)
            _line += ReplacementCharacter;
    }
}

void LineSplitter::emitLine() {
    _sink(_line);
    _line.clear();
}

}
