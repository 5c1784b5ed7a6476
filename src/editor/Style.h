#ifndef Quillmere_editor_Style_h
#define Quillmere_editor_Style_h

struct ImGuiStyle;

namespace QuillmereEngine {

/**
@brief The editor's look

Dark and flat. Frames, where panels show text, are dark enough that pure red, the darkest colour
that panels write in, has the contrast of at least 4.5 that WCAG 2.1 asks of small text.
*/
void setEditorStyle(ImGuiStyle& style);

}

#endif
