#include "editor/StoreLog.h"

#include <algorithm>
#include <mutex>
#include <string>

#include "QuillmereEditor/Tools/logLine.h"
#include "editor/escapedForLog.h"
#include "host/QuillmereEditorApplication.h"

using namespace Corrade;

namespace QuillmereEngine {

StoreLog::StoreLog(QuillmereEditorApplication& application, StringArray& store, const Echo echo):
    _application{application},
    _store{store},
    _echo{echo} {}

void StoreLog::append(const LogLevel level, const Containers::StringView message) {
    const char* begin = message.data();
    const char* const end = begin + message.size();
    do {
        const char* const lineEnd = std::find(begin, end, '\n');
        appendLine(level, {begin, std::size_t(lineEnd - begin)});
        begin = lineEnd == end ? end : lineEnd + 1;
    } while(begin != end);
    _application.consoleLinesChanged();
}

void StoreLog::appendLine(const LogLevel level, const Containers::StringView text) {
    const std::string shown = withoutControls({text.data(), text.size()});
    const std::string line = logLine(level, {shown.data(), shown.size()});
    if(_echo == Echo::Yes)
        writeLogLine(line, logStream(level), nullptr);
    const std::lock_guard<std::mutex> lock{_application.logMutex};
    _store.append(line.data(), int(line.size() - 1));
}

}
