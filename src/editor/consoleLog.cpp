#include "editor/consoleLog.h"

#include <mutex>

#include "QuillmereEditor/Tools/Log.h"
#include "host/QuillmereEditorApplication.h"

namespace QuillmereEngine {

namespace {

void appendLine(const char* const line, void* const userData) {
    auto& application = *static_cast<QuillmereEditorApplication*>(userData);
    {
        const std::lock_guard<std::mutex> lock{application.logMutex};
        application.consoleLines.append(line, -1);
    }
    application.consoleLinesChanged();
}

}

void ensureLogCallback(QuillmereEditorApplication& application) {
    if(!getLogCallback().first)
        setLogCallback(appendLine, &application);
}

}
