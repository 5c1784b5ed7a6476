#include "plugins/console/locateInRow.h"

#include <imgui.h>
#include <imgui_internal.h>

#include "plugins/console/textEditKey.h"

/* The text edit code that Dear ImGui's inputs use isn't exported by its library, so the part that
   finds a character under the mouse is compiled a second time, here on a single row of text. */

namespace {

struct Row {
    const ImWchar* begin;
    int size;
};

/* Factor from the advances that the font holds to pixels */
float fontScale() { return ImGui::GetFontSize() / ImGui::GetFont()->FontSize; }

float characterWidth(const Row* const row, const int first, const int i) {
    const ImWchar character = row->begin[first + i];
    return character == '\n' ? STB_TEXTEDIT_GETWIDTH_NEWLINE
                             : ImGui::GetFont()->GetCharAdvance(character) * fontScale();
}

float rowWidth(const Row* const row) {
    float width = 0.0f;
    for(int i = 0; i != row->size; ++i)
        if(row->begin[i] != '\n' && row->begin[i] != '\r')
            width += characterWidth(row, 0, i);
    return width;
}

}

namespace ImStb {

static void layOutRow(StbTexteditRow* const out, const Row* const row) {
    const float height = ImGui::GetFontSize();
    out->x0 = 0.0f;
    out->x1 = rowWidth(row);
    out->baseline_y_delta = height;
    out->ymin = 0.0f;
    out->ymax = height;
    out->num_chars = row->size;
}

/* The part that edits needs these as well. It's compiled, but nothing calls it. */
#undef STB_TEXTEDIT_STRING
#define STB_TEXTEDIT_STRING const Row
#define STB_TEXTEDIT_STRINGLEN(row) ((row)->size)
#define STB_TEXTEDIT_LAYOUTROW(out, row, first) layOutRow(out, row)
#define STB_TEXTEDIT_GETWIDTH(row, first, i) characterWidth(row, first, i)
#define STB_TEXTEDIT_GETCHAR(row, i) ((row)->begin[i])
#define STB_TEXTEDIT_NEWLINE '\n'
#define STB_TEXTEDIT_KEYTOTEXT(key) (key)
#define STB_TEXTEDIT_DELETECHARS(row, first, count) (void(row), void(first), void(count))
#define STB_TEXTEDIT_INSERTCHARS(row, first, text, count) ((void)(text), 0)
#define STB_TEXTEDIT_K_LEFT QuillmereEngine::TextEditKeyLeft
#define STB_TEXTEDIT_K_RIGHT QuillmereEngine::TextEditKeyRight
#define STB_TEXTEDIT_K_UP QuillmereEngine::TextEditKeyUp
#define STB_TEXTEDIT_K_DOWN QuillmereEngine::TextEditKeyDown
#define STB_TEXTEDIT_K_LINESTART QuillmereEngine::TextEditKeyLineStart
#define STB_TEXTEDIT_K_LINEEND QuillmereEngine::TextEditKeyLineEnd
#define STB_TEXTEDIT_K_TEXTSTART QuillmereEngine::TextEditKeyTextStart
#define STB_TEXTEDIT_K_TEXTEND QuillmereEngine::TextEditKeyTextEnd
#define STB_TEXTEDIT_K_DELETE 0x200008
#define STB_TEXTEDIT_K_BACKSPACE 0x200009
#define STB_TEXTEDIT_K_UNDO 0x20000A
#define STB_TEXTEDIT_K_REDO 0x20000B
#define STB_TEXTEDIT_K_PGUP 0x20000E
#define STB_TEXTEDIT_K_PGDOWN 0x20000F
#define STB_TEXTEDIT_K_SHIFT QuillmereEngine::TextEditKeyShift

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#define STB_TEXTEDIT_IMPLEMENTATION
#include <imstb_textedit.h>
#pragma GCC diagnostic pop

}

namespace QuillmereEngine {

int locateInRow(const unsigned short* const begin, const unsigned short* const end, const float x) {
    const Row row{begin, int(end - begin)};
    return ImStb::stb_text_locate_coord(&row, x, 0.0f);
}

}
