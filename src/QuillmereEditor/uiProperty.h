#ifndef Quillmere_QuillmereEditor_uiProperty_h
#define Quillmere_QuillmereEditor_uiProperty_h

#include <cstddef>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/ScopeGuard.h>
#include <rapidjson/document.h>

#include "QuillmereEditor/Ui.h"
#include "QuillmereEditor/uiValue.h"

namespace QuillmereEngine {

/** @brief Whether a change may become part of the one before it, see @ref ChangeManager */
enum class Merge { No, Yes };

/** @brief Path of the present scope, "" at the root. Valid until the next one is pushed. */
const char* scopePath(const Ui& ui);

/** @brief Value at the present scope, a JSON null if there's none. Valid until a change. */
const rapidjson::Value& scopeValue(const Ui& ui);

/**
@brief Change the value at the present scope
@param value    Copied
@return Whether the history was told

It isn't while it's reserved for someone else, see @ref ChangeManager::isLocked(), whatever the user
does. Nor if it would take the change as a programming error, as a project with a number where a
list should be isn't one; then there's a warning.
*/
bool writeScopeValue(Ui& ui, const rapidjson::Value& value, Merge merge);

/**
@brief A value of the project while its widget is drawn

What all widgets of values have in common: enters the value's scope, finds the value, disables what
is drawn while the history is locked, and in the end shows the path if it's asked for and leaves the
scope, also when an exception passes. A widget reads the value, draws the label, draws itself as
"##val" and finishes with what the user made of it:

@code
bool Ui::inputAngle(const char* const label) {
    UiProperty property{*this, label};
    float radians = property.number();
    property.drawLabel();
    const bool changed = ImGui::SliderAngle("##val", &radians);
    return property.finish(changed, [&] { return jsonNumber(radians); }, Merge::Yes);
}
@endcode
*/
class UiProperty {
public:
    /** @param label    Has to live as long */
    explicit UiProperty(Ui& ui, const char* label);
    UiProperty(const UiProperty&) = delete;
    UiProperty& operator=(const UiProperty&) = delete;
    ~UiProperty();

    /** @brief ID of the scope, in the stack that was there before it */
    unsigned int id() const { return _id; }

    /** @brief Path of the value, for messages and changes */
    const char* path() const { return scopePath(_ui); }

    /** @brief The value as it was before any @ref write() */
    const rapidjson::Value& value() const { return _value; }

    /** @brief The value as a number, 0 for anything else */
    float number() const;

    /** @brief The low 32 bits of what the number stores, 0 for anything else */
    int integer() const;

    /** @brief The first numbers of an array, 0 for those that aren't there */
    void read(Corrade::Containers::ArrayView<float> out) const;

    /** @overload */
    void read(Corrade::Containers::ArrayView<int> out) const;

    /** @brief The value as a string, "" for anything else. Belongs to the document. */
    const char* string() const;

    /** @brief Draw the label and go to the column of the widget, unless the labels are off */
    void drawLabel() const;

    /** @brief Change the value, see @ref writeScopeValue() */
    bool write(const rapidjson::Value& value, Merge merge) const;

    /** @brief Set a string. The present value may be the one it's a part of. */
    bool write(const char* string, Merge merge) const;

    /**
    @brief Write what @p make gives if the widget reported a change, else offer the context menu
    @param make     Gives a value or a string
    @return Whether a change was written
    */
    template<class Make> bool finish(const bool changed, Make&& make, const Merge merge) const {
        if(changed)
            return write(make(), merge);
        _ui.valueContextMenu();
        return false;
    }

private:
    template<class T> void readArray(
        Corrade::Containers::ArrayView<T> out, T (*convert)(const rapidjson::Value&)) const;

    /* Closed from the last to the first, also by what throws while the widget is constructed */
    Ui& _ui;
    const char* _label;
    unsigned int _id = 0;
    Corrade::Containers::ScopeGuard _leaveScope;
    const rapidjson::Value& _value;
    Corrade::Containers::ScopeGuard _enable;
};

}

#endif
