#include "host/QuillmereEditorApplication.h"

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/Ui.h"
#include "host/ProjectFile.h"

namespace QuillmereEngine {

QuillmereEditorApplication::QuillmereEditorApplication() = default;

/* Here and not in the header, as destroying its members needs their definitions */
QuillmereEditorApplication::~QuillmereEditorApplication() = default;

void QuillmereEditorApplication::consoleLinesChanged() {}

void appendConsoleLine(const char* const line, void* const application) {
    auto& host = *static_cast<QuillmereEditorApplication*>(application);
    {
        const std::lock_guard<std::mutex> lock{host.logMutex};
        host.consoleLines.append(line, -1);
    }
    host.consoleLinesChanged();
}

}
