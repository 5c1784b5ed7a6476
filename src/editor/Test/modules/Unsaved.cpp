/* A panel that doesn't let the editor be closed the first time */

#include <Corrade/PluginManager/AbstractManager.h>

#include "QuillmereEditor/EditorView.h"
#include "QuillmereEditor/Tools/Log.h"
#include "host/Events.h"

namespace QuillmereEngine { namespace {

class UnsavedPanel: public EditorView {
public:
    using EditorView::EditorView;

    const char* title() const override { return "Unsaved"; }
    void draw() override {}

    void exitEvent(ExitEvent& event) override {
        event.accepted = !_wasAsked;
        if(event.accepted)
            log(LogLevel::Info, "Not yet");
        _wasAsked = true;
    }

private:
    bool _wasAsked = false;
};

}}

CORRADE_PLUGIN_REGISTER(
    Unsaved, QuillmereEngine::UnsavedPanel, "com.quillmere.QuillmereEditor.AbstractModule/1.1")
