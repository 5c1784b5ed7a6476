#include "editor/PanelEvent.h"

#include "QuillmereEditor/EditorView.h"

namespace QuillmereEngine {

namespace {

struct CallPanel {
    EditorView& panel;

    void operator()(MouseMoveEvent& event) const { panel.mouseMoveEvent(event); }
    void operator()(MousePress& press) const { panel.mousePressEvent(press.event); }
    void operator()(MouseRelease& release) const { panel.mouseReleaseEvent(release.event); }
    void operator()(MouseScrollEvent& event) const { panel.mouseScrollEvent(event); }
    void operator()(KeyPress& press) const { panel.keyPressEvent(press.event); }
    void operator()(KeyRelease& release) const { panel.keyReleaseEvent(release.event); }
    void operator()(ExitEvent& event) const { panel.exitEvent(event); }
};

struct IsAccepted {
    bool operator()(const MousePress& press) const { return press.event.accepted; }
    bool operator()(const MouseRelease& release) const { return release.event.accepted; }
    bool operator()(const KeyPress& press) const { return press.event.accepted; }
    bool operator()(const KeyRelease& release) const { return release.event.accepted; }
    template<class T> bool operator()(const T& event) const { return event.accepted; }
};

}

bool deliver(PanelEvent& event, const std::vector<EditorView*>& panels,
    const std::function<void(EditorView&, const std::function<void()>&)>& call) {
    for(EditorView* const panel: panels) {
        call(*panel, [&] { std::visit(CallPanel{*panel}, event); });
        if(std::visit(IsAccepted{}, event))
            return true;
    }
    return false;
}

}
