#include "editor/Fonts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <imgui.h>

#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct FontsTest: ::testing::Test {
    ~FontsTest() override { ImGui::DestroyContext(context); }

    bool has(const int glyph) { return atlas.Fonts[0]->FindGlyphNoFallback(ImWchar(glyph)); }

    ImGuiContext* context = ImGui::CreateContext();
    ImFontAtlas& atlas = *ImGui::GetIO().Fonts;
};

TEST_F(FontsTest, EditorFontHoldsTextAndIcons) {
    EXPECT_THAT(buildFonts(atlas, editorFonts(), 1.0f), IsEmpty());
    ASSERT_EQ(atlas.Fonts.Size, 1);
    for(const int glyph: {int('A'), 0xe9, 0x153, 0x3b1, 0x416, 0x2013, 0x2018, 0x2026, 0x20ac,
            0x2192, 0x2260, 0x2500, 0x2588, 0x2713, 0xfffd, 0xf071, 0xf0c5, 0xf0ea, 0xf1f8, 0xf1fb})
        EXPECT_TRUE(has(glyph)) << std::hex << glyph;
}

TEST_F(FontsTest, AllTextHasOneWidth) {
    buildFonts(atlas, editorFonts(), 1.0f);
    const float width = atlas.Fonts[0]->GetCharAdvance('i');
    for(const int glyph: {int('W'), 0x416, 0x3b1, 0x2500})
        EXPECT_EQ(atlas.Fonts[0]->GetCharAdvance(ImWchar(glyph)), width) << std::hex << glyph;
}

/* The console's toolbar puts its "Auto-scroll" box 134 pixels from the right, and 26 from there
   is the trash can */
TEST_F(FontsTest, AutoScrollBoxFitsInFrontOfTheTrashCan) {
    buildFonts(atlas, editorFonts(), 1.0f);
    const ImFont& font = *atlas.Fonts[0];
    const float text = font.CalcTextSizeA(font.FontSize, 1000.0f, 0.0f, "Auto-scroll").x;
    const float box = font.FontSize + 2.0f, gap = 4.0f;
    EXPECT_LE(box + gap + text, 134.0f - 26.0f);
}

TEST_F(FontsTest, ScaleMakesTheFontLarger) {
    buildFonts(atlas, editorFonts(), 1.0f);
    const float size = atlas.Fonts[0]->FontSize;
    buildFonts(atlas, editorFonts(), 2.0f);
    EXPECT_EQ(atlas.Fonts[0]->FontSize, 2.0f * size);
}

TEST_F(FontsTest, MissingFontIsReportedAndTheOthersStay) {
    std::vector<FontFile> fonts = editorFonts();
    fonts[2].paths = {"/no/such/font.ttf"};
    EXPECT_THAT(buildFonts(atlas, fonts, 1.0f),
        ElementsAre("Font Font Awesome 4.7 is missing: none of its places has it"));
    EXPECT_TRUE(has('A'));
    EXPECT_FALSE(has(0xf1f8));
}

TEST_F(FontsTest, WithoutAnyFontDearImGuisOwnIsUsed) {
    std::vector<FontFile> fonts = editorFonts();
    for(FontFile& font: fonts)
        font.paths = {"/no/such/font.ttf"};
    EXPECT_EQ(buildFonts(atlas, fonts, 1.0f).size(), fonts.size() + 1);
    EXPECT_TRUE(atlas.IsBuilt());
    EXPECT_TRUE(has('A'));
}

TEST_F(FontsTest, FileThatIsNoFontIsReplaced) {
    const Testing::TemporaryFolder folder;
    std::vector<FontFile> fonts = editorFonts();
    fonts[0].paths = {folder.write("font.ttf", "this is no font")};
    EXPECT_FALSE(buildFonts(atlas, fonts, 1.0f).empty());
    EXPECT_TRUE(atlas.IsBuilt());
    EXPECT_TRUE(has('A'));
}

}}
