#ifndef Quillmere_plugins_console_ConsoleTextEx_h
#define Quillmere_plugins_console_ConsoleTextEx_h

#include "common/StringArrayView.h"

struct ImVec2;

/**
@brief Read-only text with coloured lines, in which one can select and copy
@param label            Its hash in the present ID stack is the widget's ID. What's in front of a
    `##` is drawn to the right of the frame.
@param lines            All lines, unfiltered; what's drawn. Readable for
    @ref QuillmereEngine::StringArray::Padding bytes behind the last.
@param text             UTF-8, NUL-terminated at or before @p textSize: the lines that pass the
    caller's filter, joined by newlines. Rows, cursor, selection and copies are about it. Not
    retained.
@param textSize         Size of @p text in bytes, with or without its NUL. A negative size counts as
    zero. Only the first 700 MB are looked at.
@param showInfo         Draw the lines that carry neither `[error]` nor `[warn]`
@param showWarnings     Draw the lines that carry `[warn]`
@param showErrors       Draw the lines that carry `[error]`
@param filtersChanged   Whether @p text is filtered by another rule than in the last frame; the
    selection then collapses to the cursor
@param scrollToBottom   Show the end of the text
@param size             Of the frame in pixels, as for `ImGui::CalcItemSize()`
@param flags            `ImGuiInputTextFlags`; `AlwaysOverwrite`, `CallbackCompletion`,
    `AllowTabInput` and `NoHorizontalScroll` make a difference
@return Always false, as nothing is edited

Dear ImGui's multi-line text input without its editing: it shares the one text edit state of the
context with all text inputs, but draws no caret. The selection outlives the widget's activity, and
then is dimmed, until another text input takes the state over.

Lines and rows of the text match only while both are filtered by the same rule and no line holds a
newline. Glyphs aren't moved by the horizontal offset that follows the cursor, the selection is.

UI thread, between `Begin()` and `End()` of a window. The caller holds the lock that guards @p lines.

The work in a frame follows the size of the text: one pass that counts its rows, or while there is
a selection or a cursor one that converts it. Lines outside of the frame cost next to nothing while
all levels are shown, and a look at their tag otherwise.
*/
bool ConsoleTextEx(const char* label, QuillmereEngine::StringArrayView lines, const char* text,
    int textSize, bool showInfo, bool showWarnings, bool showErrors, bool filtersChanged,
    bool scrollToBottom, const ImVec2& size, int flags);

#endif
