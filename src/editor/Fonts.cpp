#include "editor/Fonts.h"

#include <cstring>
#include <optional>

#include <imgui.h>
#include <imgui_freetype.h>

#include "editor/files.h"

namespace QuillmereEngine {

namespace {

static_assert(sizeof(ImWchar) == sizeof(unsigned short), "Ranges are declared without imgui.h");

/* What's in logs: Latin, Greek, Cyrillic, punctuation, currency and letter-like signs, arrows,
   mathematics, technical signs, box drawing, shapes, dingbats, and the replacement character for
   everything that was broken on its way here */
constexpr ImWchar TextRanges[]{0x0020, 0x024f, 0x0250, 0x052f, 0x1e00, 0x1fff, 0x2000, 0x206f,
    0x20a0, 0x20bf, 0x2100, 0x23ff, 0x2500, 0x27bf, 0xfffd, 0xfffd, 0};

/* Of Font Awesome 4.7: warning, trash can, copy, paste, eyedropper */
constexpr ImWchar IconRanges[]{
    0xf071, 0xf071, 0xf0c5, 0xf0c5, 0xf0ea, 0xf0ea, 0xf1f8, 0xf1f8, 0xf1fb, 0xf1fb, 0};

/* Heights of a line. Characters of the two text fonts are equally large, as their lines differ by
   as much. The console puts its "Auto-scroll" box 134 pixels from the right and its trash can at
   26: with this size the box just fits in between. */
constexpr float TextSize = 16.0f;
constexpr float FallbackSize = 14.0f;
constexpr float IconSize = 14.0f;

std::optional<std::string> readFirst(const FontFile& font, std::string& problem) {
    problem = "none of its places has it";
    for(const std::string& path: font.paths) {
        std::string reason;
        if(std::optional<std::string> content = readWholeFile(path, reason))
            return content;
    }
    return {};
}

void addFont(
    ImFontAtlas& atlas, const FontFile& font, const std::string& content, const float scale) {
    /* The atlas frees it with its own allocator */
    void* const data = IM_ALLOC(content.size());
    std::memcpy(data, content.data(), content.size());
    ImFontConfig config;
    config.MergeMode = !atlas.Fonts.empty();
    config.FontBuilderFlags = ImGuiFreeTypeBuilderFlags_LightHinting;
    config.FontData = data;
    config.FontDataSize = int(content.size());
    config.SizePixels = font.size * scale;
    config.GlyphRanges = font.ranges;
    std::strncpy(config.Name, font.name, sizeof(config.Name) - 1);
    atlas.AddFont(&config);
}

}

std::vector<FontFile> editorFonts() {
    return {
        {"JetBrains Mono",
            {"/usr/share/fonts/truetype/jetbrains-mono/JetBrainsMono-Regular.ttf",
                "/usr/share/fonts/jetbrains-mono-fonts/JetBrainsMono-Regular.ttf",
                "/usr/share/fonts/TTF/JetBrainsMono-Regular.ttf"},
            TextRanges, TextSize},
        {"DejaVu Sans Mono",
            {"/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf",
                "/usr/share/fonts/dejavu-sans-mono-fonts/DejaVuSansMono.ttf",
                "/usr/share/fonts/TTF/DejaVuSansMono.ttf"},
            TextRanges, FallbackSize},
        {"Font Awesome 4.7",
            {"/usr/share/fonts/truetype/font-awesome/fontawesome-webfont.ttf",
                "/usr/share/fonts/fontawesome/fontawesome-webfont.ttf",
                "/usr/share/fonts/TTF/fontawesome-webfont.ttf"},
            IconRanges, IconSize},
    };
}

std::vector<std::string> buildFonts(
    ImFontAtlas& atlas, const std::vector<FontFile>& fonts, const float scale) {
    std::vector<std::string> problems;
    atlas.Clear();
    /* Hints better than the built-in rasterizer at the small sizes of an interface */
    atlas.FontBuilderIO = ImGuiFreeType::GetBuilderForFreeType();

    for(const FontFile& font: fonts) {
        std::string problem;
        if(const std::optional<std::string> content = readFirst(font, problem))
            addFont(atlas, font, *content, scale);
        else
            problems.push_back(std::string{"Font "} + font.name + " is missing: " + problem);
    }
    if(!atlas.Fonts.empty() && atlas.Build())
        return problems;

    problems.push_back("No text font can be used, text outside of Latin isn't readable");
    atlas.Clear();
    ImFontConfig config;
    config.SizePixels = TextSize * scale;
    atlas.AddFontDefault(&config);
    atlas.Build();
    return problems;
}

}
