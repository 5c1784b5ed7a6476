#include "host/QuillmereEditorApplication.h"

#include <utility>

#include <Corrade/Utility/Assert.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/Ui.h"
#include "host/ProjectFile.h"

using namespace Corrade;

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

void QuillmereEditorApplication::addChangeHandler(const EditorView& view,
    const Containers::StringView key, ViewChangeHandlers::Function function) {
    CORRADE_ASSERT(
        changeManager, "QuillmereEditorApplication::addChangeHandler(): there is no history", );
    _viewChangeHandlers.add(*changeManager, view, key, std::move(function));
}

void QuillmereEditorApplication::forgetChangeHandlers(const AbstractModule& view) {
    _viewChangeHandlers.forget(view);
}

}
