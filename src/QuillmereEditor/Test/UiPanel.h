#ifndef Quillmere_QuillmereEditor_Test_UiPanel_h
#define Quillmere_QuillmereEditor_Test_UiPanel_h

#include <functional>
#include <map>
#include <string>
#include <vector>

#include <Corrade/Containers/Pointer.h>
#include <imgui.h>
#include <rapidjson/document.h>

#include "QuillmereEditor/ChangeManager.h"
#include "QuillmereEditor/Ui.h"
#include "host/ProjectFile.h"
#include "testing/HeadlessFrame.h"
#include "testing/InputDriver.h"

namespace QuillmereEngine { namespace Testing {

/** @brief Left, top, right and bottom of something on the screen */
struct ScreenBox {
    ImVec2 min, max;

    ImVec2 center() const { return {(min.x + max.x) * 0.5f, (min.y + max.y) * 0.5f}; }
    /** @brief A point at parts of the width and height */
    ImVec2 at(float x, float y) const;
};

/**
@brief A panel of property widgets in front of a project, with a user

The panel is a window at the corner of the display. After each frame it's checked that nothing the
widgets pushed or opened is left, and that the scope is back at the root.
*/
class UiPanel {
public:
    /** @param document     JSON */
    explicit UiPanel(const std::string& document = "{}");

    /** @brief Draw something else from now on, and two frames of it */
    void show(std::function<void()> content);

    /** @brief Remember under a name where the last item is. To be called while drawing. */
    void mark(const std::string& name = {});

    /** @brief Where a mark is. One that wasn't drawn fails the test. */
    ScreenBox box(const std::string& name = {}) const;

    /** @brief The document as JSON */
    std::string document() const;

    /** @brief The newest change, as "Change /a: 1 -> 2", "" if there's none */
    std::string lastChange();

    /** @brief Set the document. The history knows nothing of it. */
    void setDocument(const std::string& json);

    /** @brief Let all handlers of a path's component throw */
    void throwAt(const char* component);

    /** @brief Text of the tooltip in the last frame without its spaces, "" if there was none */
    std::string tooltip() const;

    /** @brief Click an item of an open popup by its text */
    void clickItem(const std::string& text, const char* window);

    HeadlessFrame frame;
    ProjectFile project;
    ChangeManager manager{project};
    Ui ui;
    InputDriver input;

    /** Everything that the last call to @ref show() and what came after it has warned of */
    std::string warnings;
    /** Exceptions that reached the panel */
    int caught = 0;
    ImVec2 position{0.0f, 0.0f};
    ImVec2 size{640.0f, 480.0f};

private:
    void draw();
    void drawChecked();

    /* The history has values in their pools */
    std::vector<Corrade::Containers::Pointer<rapidjson::Document>> _formerDocuments;
    std::function<void()> _content;
    std::map<std::string, ScreenBox> _boxes;
};

}}

#endif
