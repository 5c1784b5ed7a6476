#ifndef Quillmere_editor_Shortcut_h
#define Quillmere_editor_Shortcut_h

namespace QuillmereEngine {

struct KeyEvent;

/** @brief What a key of the host's own does */
enum class Shortcut {
    None,
    Undo, /**< Ctrl+Z */
    Redo, /**< Ctrl+Shift+Z or Ctrl+Y */
    Save, /**< Ctrl+S */
    Quit  /**< Ctrl+Q */
};

/** @brief Key that makes another one a shortcut */
enum class ShortcutKey {
    Ctrl,
    Super /**< Cmd, on macOS */
};

/**
@brief What a pressed key means to the host

Modifiers have to be those of the shortcut and no others. A held key goes on undoing and redoing, but
saves and quits just once.
*/
Shortcut shortcutOf(const KeyEvent& event, ShortcutKey key);

}

#endif
