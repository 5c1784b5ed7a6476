#ifndef Quillmere_plugins_console_textEditKey_h
#define Quillmere_plugins_console_textEditKey_h

namespace QuillmereEngine {

/**
@brief Keys as `ImGuiInputTextState::OnKeyPressed()` of Dear ImGui 1.86 knows them

They're defined in one of its sources and in none of its headers.
*/
enum TextEditKey : int {
    TextEditKeyLeft = 0x200000,
    TextEditKeyRight = 0x200001,
    TextEditKeyUp = 0x200002,
    TextEditKeyDown = 0x200003,
    TextEditKeyLineStart = 0x200004,
    TextEditKeyLineEnd = 0x200005,
    TextEditKeyTextStart = 0x200006,
    TextEditKeyTextEnd = 0x200007,
    TextEditKeyWordLeft = 0x20000C,
    TextEditKeyWordRight = 0x20000D,
    /** Added to one of the others: extends the selection */
    TextEditKeyShift = 0x400000
};

}

#endif
