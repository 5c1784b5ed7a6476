#ifndef Quillmere_QuillmereEditor_Ui_h
#define Quillmere_QuillmereEditor_Ui_h

namespace QuillmereEngine {

/**
@brief Widgets in the editor's style

UI thread, between Dear ImGui's `NewFrame()` and `Render()`. As with Dear ImGui's own widgets the
hash of a label in the present ID stack is the widget's ID.
*/
class Ui {
public:
    /**
    @brief Check box on a variable of the caller
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
};

}

#endif
