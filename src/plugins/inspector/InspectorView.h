#ifndef Quillmere_plugins_inspector_InspectorView_h
#define Quillmere_plugins_inspector_InspectorView_h

#include <cstddef>
#include <string>

#include <Corrade/Containers/Array.h>
#include <rapidjson/fwd.h>

#include "QuillmereEditor/EditorView.h"
#include "host/ResourceManager.h"

namespace QuillmereEngine {

struct ObjectMember;

/**
@brief The panel that edits the selected object of the project

The members that it knows have a place and a widget of their own, see the table in the source. All
others are below them with the widget of their JSON shape; objects and arrays are nodes to be opened,
of which the first 256 members are shown. All edits go through the history.
*/
class InspectorView: public EditorView {
public:
    explicit InspectorView(
        Corrade::PluginManager::AbstractManager& manager, Corrade::Containers::StringView plugin);

    ~InspectorView() override;

    /** @brief "Inspector" */
    const char* title() const override;

    /** @brief Go on where the former instance was, see @ref unload() */
    void load(Corrade::Containers::ArrayView<char> state) override;

    using EditorView::load;

    /** @brief The host's pointers, and behind them the text of a tag that isn't added yet and which
        tag is selected */
    Corrade::Containers::Array<char> unload(bool shutdown) override;

    /** @brief Draw the panel's window. Expects that the panel is initialized and that the application
        has a project, its history and property widgets. */
    void draw() override;

private:
    /* Bytes of a tag with its NUL */
    static constexpr std::size_t TagCapacity = 64;

    /* What a reload keeps, behind what the base class keeps */
    struct State;

    void drawContent();
    void drawObject();
    void drawIdentity(const std::string& key);
    void drawName();
    unsigned int renamingId();
    void drawTransform();
    void drawAppearance();
    void drawTexture();
    void drawColor();
    void drawLight();
    void drawRelations();
    void drawTarget();
    void drawTags();
    void drawTagEditing();
    void addTag();
    void removeTag();
    void drawUnknownMembers();
    void drawMembers(const rapidjson::Value& value);
    void drawMember(const ObjectMember& member);
    void drawValue(const char* label, const ObjectMember& member);
    void drawNode(const ObjectMember& member);
    void dropLostPick();

    bool has(const char* key);
    const rapidjson::Value* member(const char* key);

    ObjectResourceManager _objects;
    /* Which object was drawn last, as what follows belongs to it */
    std::string _shownObject;
    char _newTag[TagCapacity]{};
    int _selectedTag = -1;
    /* The panel's selector that waits for an object to be picked, 0 if none does */
    unsigned int _pickingId = 0;
    bool _isPickDrawn = false;
};

}

#endif
