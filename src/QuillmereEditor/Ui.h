#ifndef Quillmere_QuillmereEditor_Ui_h
#define Quillmere_QuillmereEditor_Ui_h

#include <cstdint>
#include <initializer_list>
#include <string>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/EnumSet.h>

struct ImGuiInputTextCallbackData;
struct ImVec2;

/**
@brief Filled frame whose left and right corners are rounded or not
@param min, max     Corners in pixels of the screen
@param color        Packed as `IM_COL32()` does
@param border       Whether to draw a border, too, if the style has one
@param rounding     Radius in pixels

Dear ImGui's own frame with a choice of corners. Goes into the current window's draw list.
*/
void renderFrame(ImVec2 min, ImVec2 max, unsigned int color, bool border, float rounding,
    bool roundLeft, bool roundRight);

namespace QuillmereEngine {

class AbstractResourceManager;
class ChangeManager;
class ObjectResourceManager;
class ProjectFile;
class ValueAccess;

/**
@brief Widgets in the editor's style, and editors of the values in the project's document

UI thread, between Dear ImGui's `NewFrame()` and `Render()`. As with Dear ImGui's own widgets the
hash of a label in the present ID stack is the widget's ID.

@section Ui-properties Properties

A widget of a value takes a label, which is the value's key in the scope that @ref pushScope() has
entered: in the scope `/objects/3` the label `name` stands for the value at `/objects/3/name`. The
label is shown in the first third of the row unless @ref Flag::NoLabel is set, the value is read
from the project in each frame, and what the user makes of it goes to the history at once. Unless
it's said otherwise a widget returns whether the user changed the value in this frame, offers a
context menu with which the value is copied and pasted as JSON, and shows the value's path while the
mouse is over it and Ctrl is held.

"Merges" is said of a widget whose changes of one value are one step to undo as long as nothing else
is changed in between, see @ref ChangeManager::pushChange().

What isn't there or is null counts as empty: 0, "", no reference. So does a value of another kind
than the widget expects, and then a warning names the path, once. Nothing is written before the user
edits, and then it's a value of the widget's kind. What can't be written, because the parent of an
array's element is no array for example, stays as it is with a warning.

While the history is locked, see @ref ChangeManager::isLocked(), the widgets are drawn disabled, an
edit that is under way ends, and whatever else the user pastes, drops or picks isn't written.

If a handler of the change throws, the widget closes what it has open and leaves its scope.
@ref project and @ref changeManager are expected to be set.
*/
class Ui {
public:
    /** @brief How widgets are drawn */
    enum class Flag : std::uint32_t {
        NoLabel = 1 /**< Widgets of values have no column with their label */
    };

    /** @brief Any of @ref Flag */
    typedef Corrade::Containers::EnumSet<Flag> Flags;
    CORRADE_ENUMSET_FRIEND_OPERATORS(Flags)

    /** @brief How @ref buttonGrouped() draws a button. With neither it has square corners. */
    enum class ButtonFlag : std::uint32_t {
        RoundLeft = 1, /**< The left corners are round */
        RoundRight = 2 /**< The right corners are round */
    };

    /** @brief Any of @ref ButtonFlag */
    typedef Corrade::Containers::EnumSet<ButtonFlag> ButtonFlags;
    CORRADE_ENUMSET_FRIEND_OPERATORS(ButtonFlags)

    /**
    @brief Callback that lets Dear ImGui's text fields grow an array
    @param data     Its user data is the `Containers::Array<char>` that backs the text

    Goes with `ImGuiInputTextFlags_CallbackResize`. The array never shrinks; new bytes are zero.
    */
    static int textResizeCallback(ImGuiInputTextCallbackData* data);

    /**
    @brief Check box on a variable of the caller
    @param label    Shown up to a `##`
    @param value    Expects a valid pointer; holds the new state when the call returns
    @return Whether the box was toggled in this frame

    Needs no instance, so that any panel can use it.
    */
    static bool checkbox(const char* label, bool* value);

    /**
    @brief Radio button, drawn as chosen if @p active is true
    @return Whether it was clicked in this frame
    */
    static bool radioButton(const char* label, bool active);

    /** @brief Text as high as a widget with a frame, centred in it. What follows `##` is hidden. */
    static void alignedText(const char* text);

    /** @brief Label of a row. What comes next is at 33 % of the width that the row has. */
    static void label(const char* text);

    /**
    @brief Button with the same padding on all sides, for an icon
    @param label    An icon
    @param id       Pushed as ID around it, so that equal icons can be told apart. May be null.
    @return Whether it was pressed
    */
    static bool iconButton(const char* label, const char* id);

    /**
    @brief Button that joins with its neighbours in a row
    @param label    Shown up to a `##`
    @param id       Pushed as ID around it. May be null.
    @param flags    Which corners are round
    @return Whether it was pressed

    The first of a row gets @ref ButtonFlag::RoundLeft, the last @ref ButtonFlag::RoundRight, a
    lone one both.
    */
    static bool buttonGrouped(const char* label, const char* id, ButtonFlags flags);

    /**
    @brief Enter a scope
    @param name     A JSON pointer without its first slash, which may be there, too: keys have `~`
        escaped as `~0` and `/` as `~1`. Each segment is also an ID. Copied.
    @param id       Gets the ID of the last segment, may be null

    A name with several segments needs as many calls of @ref popScope().
    */
    Ui& pushScope(const char* name, unsigned int* id = nullptr);

    /** @brief Enter an element of an array */
    Ui& pushScope(unsigned long index, unsigned int* id = nullptr);

    /** @brief Leave the innermost segment. Expects that there's one. */
    Ui& popScope();

    /** @brief Add flags for what's drawn until @ref popFlags() */
    void pushFlags(Flags added);

    /** @brief Back to the flags before the last @ref pushFlags(). Expects that there was one. */
    void popFlags();

    /** @brief Show a string. It has no label and can't be edited. */
    void text(const char* label);

    /** @brief Edit a number. Integers become doubles when they're edited. Merges. */
    bool inputFloat(const char* label);

    /**
    @brief Edit an array that begins with two numbers
    @return Whether it changed

    What is written is an array of exactly as many doubles, each a finite 32-bit float. Merges.
    */
    bool inputFloat2(const char* label);
    /** @brief Edit an array that begins with three numbers, see @ref inputFloat2() */
    bool inputFloat3(const char* label);
    /** @brief Edit an array that begins with four numbers, see @ref inputFloat2() */
    bool inputFloat4(const char* label);

    /**
    @brief Edit an integer
    @param label    Scope of the value and text of its row, as for all widgets of values
    @param speed    Change per pixel that the mouse is dragged
    @param minimum  If negative, the value is kept between it and 0. Otherwise it has no bounds.
    @return Whether it changed

    Takes the low 32 bits of what a number stores, so a double shows something meaningless. What is
    written is an integer. Merges.
    */
    bool inputInt(const char* label, int speed, int minimum);

    /**
    @brief Edit an array that begins with two integers
    @return Whether it changed

    Takes each as @ref inputInt() does and writes an array of exactly as many. Merges.
    */
    bool inputInt2(const char* label);
    /** @brief Edit an array that begins with three integers, see @ref inputInt2() */
    bool inputInt3(const char* label);
    /** @brief Edit an array that begins with four integers, see @ref inputInt2() */
    bool inputInt4(const char* label);

    /** @brief Edit an array of red, green and blue, 0 to 1. Writes as @ref inputFloat2(). */
    bool colorEdit3(const char* label);

    /** @brief As @ref colorEdit3(), with alpha. Expects that an array has more than 3 elements. */
    bool colorEdit4(const char* label);

    /**
    @brief Context menu and shortcuts to copy and paste the present scope's value

    For widgets of values, to be called after the last item in a frame without a change.
    */
    void valueContextMenu();

    /** @brief Put the present scope's value on the clipboard, as JSON in one line */
    void copyValue();

    /**
    @brief Set the present scope's value to the JSON on the clipboard

    It has to have the kind that the value has, where true and false are two kinds, and for an array
    the number of elements. Otherwise a warning says what was wrong and nothing changes. Doesn't
    merge.
    */
    void pasteValue();

    /** @brief Whether the key for shortcuts is held, Cmd or what the system has in its place */
    bool shortcutKeyPressed();

    /**
    @brief Edit a boolean, the label to the right of its box

    Checked is true and nothing else. Writes a boolean and doesn't merge. Has no context menu.
    */
    bool checkbox(const char* label);

    /** @brief As @ref checkbox(const char*), without a text */
    bool checkboxUnlabled(const char* label);

    /**
    @brief Edit a bit of an integer
    @param label    Scope of the value and text of its row, as for all widgets of values
    @param bit      Expected to be from 0 to 31
    @param name     Shown to the right of the box, null for the bit's number

    Reads as @ref inputInt() does. Writes an integer and doesn't merge. Has no context menu.
    */
    bool checkboxBit(const char* label, int bit, const char* name);

    /**
    @brief Edit the low bits of an integer, four in a row
    @param label    Scope of the value and text of its row, as for all widgets of values
    @param count    Number of bits. Expected to be at most 32.
    @param names    Names of the first eight bits, the others have their number. Expected to be
        eight or none, which gives all their number.

    As @ref checkboxBit(). All bits that were toggled in a frame are one change.
    */
    bool checkboxBits(
        const char* label, int count, Corrade::Containers::ArrayView<const char*> names);

    /**
    @brief Choose one of some strings
    @param label    Scope of the value and text of its row, as for all widgets of values
    @param names    Those that can be chosen. A string that isn't among them is shown as "".

    Writes a string and doesn't merge.
    */
    bool inputEnum(const char* label, Corrade::Containers::ArrayView<const char* const> names);
    /** @overload */
    bool inputEnum(const char* label, std::initializer_list<const char*> names);

    /** @brief Edit a string. Merges. What follows a NUL in it isn't shown, and goes with an edit. */
    bool inputText(const char* label);

    /** @brief Edit a string of several lines, as @ref inputText() */
    bool inputTextMultiline(const char* label);

    /**
    @brief Show a string that can be edited after a double click

    Enter and a click elsewhere write the new string, Escape and a right click elsewhere don't.
    Merges. Has neither a label nor a context menu.
    */
    void renameable(const char* label);

    /**
    @brief Choose an element of an array of strings
    @param label    Scope of the value and text of its row, as for all widgets of values
    @param selected Index of the chosen element. Any other number means that none is.
    @return Whether an element was clicked in this frame

    Writes nothing, and has neither a label nor a context menu.
    */
    bool stringList(const char* label, int& selected);

    /**
    @brief Choose a resource of the project
    @param label    Scope of the value and text of its row, as for all widgets of values
    @param typeName Key in the document's root of the object with all resources of a type
    @param byName   Whether the value is the resource's name and not its id
    @param filter   Says which ones are listed. Null lists all. Expected not to change the
        document.
    @return Whether another one was chosen, dropped or picked

    Writes a string, or null for none, and doesn't merge. Takes drops whose type is @p typeName and
    whose data is an id with its NUL, which becomes the value whatever @p byName says. For the type
    "objects" there's a button to pick one in the scene, see @ref pickingId; picked by name the
    value becomes the resource itself where that is a string, and "" otherwise.
    */
    bool selectResource(const char* label, const char* typeName, bool byName,
        bool (*filter)(ValueAccess& resource) = nullptr);
    /** @overload */
    bool selectResource(const char* label, AbstractResourceManager& manager, bool byName,
        bool (*filter)(ValueAccess& resource) = nullptr);

    /** @brief Choose a resource by its name, see @ref selectResource() */
    bool selectResourceName(const char* label, AbstractResourceManager& manager,
        bool (*filter)(ValueAccess& resource) = nullptr);
    /** @overload */
    bool selectResourceName(
        const char* label, const char* typeName, bool (*filter)(ValueAccess& resource) = nullptr);

    /** @brief Choose an object that isn't deleted, see @ref selectResource() */
    bool selectObjectResource(const char* label, ObjectResourceManager& manager, bool byName);

    /**
    @brief Edit a path with the system's dialog
    @param label    Scope of the value and text of its row, as for all widgets of values
    @param title    Of the dialog
    @param filters  Pairs of a description and its patterns, see @ref openFileDialog()
    @return Whether a file was chosen, or the text in the field isn't the value

    Writes a string and merges. What's typed into the field is only where the dialog starts if it's
    opened in the same frame, and isn't kept. Has no context menu.
    */
    bool fileSelect(const char* label, const std::string& title,
        Corrade::Containers::ArrayView<const char* const> filters);

    /** Not owned */
    ProjectFile* project = nullptr;
    /** Gets every edit. Not owned. */
    ChangeManager* changeManager = nullptr;
    /** Path of the present scope with its NUL, "" at the root. Its size is a capacity. No data
        before the first @ref pushScope(). */
    Corrade::Containers::Array<char> scope;
    /** What the text fields edit. Never shrinks. */
    Corrade::Containers::Array<char> textBuffer;
    /** Selector of objects that waits for one to be picked in the scene, 0 if none does */
    unsigned int pickingId = 0;
    /** Set by whoever lets the user pick: the object's id. Not owned; has to stay until the waiting
        selector has set it back to null. */
    const char* pickedObject = nullptr;
    /** What @ref renameable() edits, 0 for nothing */
    unsigned int renamingId = 0;
    /** What @ref popFlags() goes back to */
    Corrade::Containers::Array<Flags> flagStack;
    /** Flags of what's drawn now */
    Flags flags;
};

}

#endif
