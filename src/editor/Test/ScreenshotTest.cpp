#include "editor/Screenshot.h"

#include <memory>
#include <sstream>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_PNG
#include <stb_image.h>

#include "testing/TemporaryFolder.h"

using namespace Corrade;

namespace QuillmereEngine { namespace {

using Pixels = std::vector<unsigned char>;

TEST(ScreenshotTest, PngHoldsThePixels) {
    const Testing::TemporaryFolder folder;
    const std::string path = folder.file("a.png");
    const Image image{2, 2, {255, 0, 0, 0, 255, 0, 0, 0, 255, 1, 2, 3}};
    ASSERT_TRUE(writePng(path, image));

    int width, height, channels;
    const std::unique_ptr<stbi_uc, void (*)(void*)> read{
        stbi_load(path.c_str(), &width, &height, &channels, 0), stbi_image_free};
    ASSERT_TRUE(read);
    EXPECT_EQ(width, 2);
    EXPECT_EQ(height, 2);
    EXPECT_EQ(channels, 3);
    EXPECT_EQ((Pixels{read.get(), read.get() + 12}), image.pixels);
}

TEST(ScreenshotTest, FlippingTurnsTheRowsAround) {
    Image image{1, 3, {1, 1, 1, 2, 2, 2, 3, 3, 3}};
    flipRows(image);
    EXPECT_EQ(image.pixels, (Pixels{3, 3, 3, 2, 2, 2, 1, 1, 1}));
}

TEST(ScreenshotTest, PlaceThatCanNotBeWrittenIsNamed) {
    const Testing::TemporaryFolder folder;
    std::ostringstream out;
    {
        Utility::Error redirectError{&out};
        EXPECT_FALSE(writePng(folder.file("no/a.png"), {1, 1, {1, 2, 3}}));
    }
    EXPECT_EQ(out.str(),
        "quillmere-editor: can't write screenshot " + folder.file("no/a.png") +
            ": No such file or directory\n");
}

}}
