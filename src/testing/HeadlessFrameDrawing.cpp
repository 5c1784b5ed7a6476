#include "testing/HeadlessFrameDrawing.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include <imgui_internal.h>

namespace QuillmereEngine { namespace Testing {

namespace {

using GlyphNames = std::map<std::pair<float, float>, ImWchar>;

/* Characters by where their picture lies in the font's texture */
GlyphNames glyphNames() {
    GlyphNames out;
    for(const ImFont* const font: ImGui::GetIO().Fonts->Fonts)
        for(const ImFontGlyph& glyph: font->Glyphs)
            out.emplace(std::pair{glyph.U0, glyph.V0}, ImWchar(glyph.Codepoint));
    return out;
}

/* Dear ImGui draws rectangles and glyphs as corners 0 1 2 and 0 2 3, clockwise from the upper left.
   A glyph that's cut off at its upper or left side has another corner in the texture. */
bool isQuad(const ImDrawIdx* const i, const ImDrawVert* const vertices) {
    const auto at = [&](const int n) { return vertices[i[n]].pos; };
    return i[0] == i[3] && i[2] == i[4] && at(0).y == at(1).y && at(1).x == at(2).x &&
        at(2).y == at(5).y && at(5).x == at(0).x;
}

DrawnQuad quad(const ImDrawIdx* const i, const ImDrawVert* const vertices, const ImVec4& clip,
    const GlyphNames& glyphs) {
    const ImDrawVert& first = vertices[i[0]];
    DrawnQuad out{first.pos, vertices[i[2]].pos, first.col, clip, 0};
    const ImVec2 white = ImGui::GetIO().Fonts->TexUvWhitePixel;
    if(first.uv.x != white.x || first.uv.y != white.y) {
        const auto found = glyphs.find({first.uv.x, first.uv.y});
        out.glyph = found == glyphs.end() ? ImWchar(IM_UNICODE_CODEPOINT_INVALID) : found->second;
    }
    return out;
}

void addQuads(std::vector<DrawnQuad>& out, const ImDrawList& list, const GlyphNames& glyphs) {
    for(const ImDrawCmd& command: list.CmdBuffer) {
        const ImDrawVert* const vertices = list.VtxBuffer.Data + command.VtxOffset;
        const ImDrawIdx* const indices = list.IdxBuffer.Data + command.IdxOffset;
        for(unsigned i = 0; i + 6 <= command.ElemCount;) {
            if(!isQuad(indices + i, vertices)) {
                i += 3;
                continue;
            }
            out.push_back(quad(indices + i, vertices, command.ClipRect, glyphs));
            i += 6;
        }
    }
}

/* As it was given to Begin() or BeginChild(), which put the parent's name in front and a number
   behind */
std::string givenName(const ImDrawList& list) {
    const std::string full = list._OwnerName ? list._OwnerName : "";
    const std::size_t slash = full.rfind('/');
    return slash == std::string::npos ? full : full.substr(slash + 1, full.rfind('_') - slash - 1);
}

template<class Function> void eachList(const std::string& window, const Function& function) {
    const ImDrawData& data = *ImGui::GetDrawData();
    for(int i = 0; i != data.CmdListsCount; ++i) {
        const ImDrawList& list = *data.CmdLists[i];
        if(window.empty() || givenName(list) == window)
            function(list);
    }
}

std::string utf8(const ImWchar character) {
    const ImWchar text[]{character};
    char out[8];
    ImTextStrToUtf8(out, sizeof(out), text, text + 1);
    return out;
}

}

std::vector<DrawnQuad> drawnQuads(const std::string& window) {
    const GlyphNames glyphs = glyphNames();
    std::vector<DrawnQuad> out;
    eachList(window, [&](const ImDrawList& list) { addQuads(out, list, glyphs); });
    return out;
}

std::vector<DrawnQuad> drawnRectangles(const ImU32 color, const std::string& window) {
    std::vector<DrawnQuad> out = drawnQuads(window);
    out.erase(std::remove_if(out.begin(), out.end(),
                  [color](const DrawnQuad& i) { return i.glyph || i.color != color; }),
        out.end());
    return out;
}

std::vector<DrawnQuad> drawnGlyphs(const ImU32 color, const std::string& window) {
    std::vector<DrawnQuad> out = drawnQuads(window);
    out.erase(std::remove_if(out.begin(), out.end(),
                  [color](const DrawnQuad& i) { return !i.glyph || i.color != color; }),
        out.end());
    return out;
}

std::vector<DrawnText> drawnTexts(const std::string& window) {
    std::vector<DrawnText> out;
    const float lineHeight = ImGui::GetFontSize();
    DrawnQuad last{};
    for(const DrawnQuad& i: drawnQuads(window)) {
        if(!i.glyph)
            continue;
        if(out.empty() || out.back().color != i.color || i.min.x <= last.min.x ||
            i.min.x > last.max.x + 2.0f * lineHeight || std::abs(i.min.y - last.min.y) > lineHeight)
            out.push_back({"", i.color, i.min});
        out.back().text += utf8(i.glyph);
        last = i;
    }
    return out;
}

std::optional<ImVec2> placeOfText(const std::string& text, const std::string& window) {
    std::vector<DrawnQuad> glyphs = drawnQuads(window);
    glyphs.erase(std::remove_if(glyphs.begin(), glyphs.end(),
                     [](const DrawnQuad& quad) { return !quad.glyph; }),
        glyphs.end());
    const auto found = std::find_end(glyphs.begin(), glyphs.end(), text.begin(), text.end(),
        [](const DrawnQuad& quad, const char c) { return quad.glyph == ImWchar(c); });
    return found == glyphs.end() ? std::nullopt : std::optional<ImVec2>{found->min};
}

ImVec4 boundingBox(const std::vector<DrawnQuad>& quads) {
    if(quads.empty())
        return {};
    ImVec4 out{quads[0].min.x, quads[0].min.y, quads[0].max.x, quads[0].max.y};
    for(const DrawnQuad& i: quads) {
        out.x = std::min(out.x, i.min.x);
        out.y = std::min(out.y, i.min.y);
        out.z = std::max(out.z, i.max.x);
        out.w = std::max(out.w, i.max.y);
    }
    return out;
}

std::vector<ImDrawVert> drawnVertices(const std::string& window) {
    std::vector<ImDrawVert> out;
    eachList(window, [&](const ImDrawList& list) {
        out.insert(out.end(), list.VtxBuffer.begin(), list.VtxBuffer.end());
    });
    return out;
}

}}
