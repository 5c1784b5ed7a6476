#include "editor/PanelEvent.h"

#include "QuillmereEditor/EditorView.h"

namespace QuillmereEngine {

namespace {

/* Each gives whether the panel accepted the event */
struct Deliver {
    EditorView& panel;

    bool operator()(MouseMoveEvent& event) const {
        panel.mouseMoveEvent(event);
        return event.accepted;
    }
    bool operator()(MousePress& press) const {
        panel.mousePressEvent(press.event);
        return press.event.accepted;
    }
    bool operator()(MouseRelease& release) const {
        panel.mouseReleaseEvent(release.event);
        return release.event.accepted;
    }
    bool operator()(MouseScrollEvent& event) const {
        panel.mouseScrollEvent(event);
        return event.accepted;
    }
    bool operator()(KeyPress& press) const {
        panel.keyPressEvent(press.event);
        return press.event.accepted;
    }
    bool operator()(KeyRelease& release) const {
        panel.keyReleaseEvent(release.event);
        return release.event.accepted;
    }
};

}

bool deliver(PanelEvent& event, EditorView& panel) { return std::visit(Deliver{panel}, event); }

}
