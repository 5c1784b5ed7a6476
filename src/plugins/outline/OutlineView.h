#ifndef Quillmere_plugins_outline_OutlineView_h
#define Quillmere_plugins_outline_OutlineView_h

#include <rapidjson/fwd.h>

#include "QuillmereEditor/EditorView.h"

namespace QuillmereEngine {

class ValueAccess;

/**
@brief The panel that lists what's in the project

First the objects, of which a click selects one, see @ref EditorData::selectedObject, and then the
resources of each other type. All can be dragged onto the selectors of their type. While a selector
waits for an object to be picked, a click picks it and leaves the selection as it is. While the
history is locked nothing can be dragged or picked, as it couldn't be written.

Work per frame follows the rows that are seen.
*/
class OutlineView: public EditorView {
public:
    explicit OutlineView(
        Corrade::PluginManager::AbstractManager& manager, Corrade::Containers::StringView plugin);

    ~OutlineView() override;

    /** @brief "Outline" */
    const char* title() const override;

    /** @brief Draw the panel's window. Expects that the panel is initialized and that the application
        has a project and property widgets. */
    void draw() override;

private:
    void drawContent();
    void drawPickHint();
    void drawObjects(const rapidjson::Value* objects);
    void drawObject(const char* key, const ValueAccess& object);
    void clicked(const char* key);
    bool canBeWritten() const;
};

}

#endif
