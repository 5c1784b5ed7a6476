#include "editor/contentType.h"

#include <string>

#include <gtest/gtest.h>

namespace QuillmereEngine { namespace {

TEST(ContentTypeTest, FollowsTheExtension) {
    EXPECT_EQ(contentType("index.html"), "text/html; charset=utf-8");
    EXPECT_EQ(contentType("a.css"), "text/css; charset=utf-8");
    EXPECT_EQ(contentType("a.js"), "text/javascript; charset=utf-8");
    EXPECT_EQ(contentType("a.mjs"), "text/javascript; charset=utf-8");
    EXPECT_EQ(contentType("a.json"), "application/json");
    EXPECT_EQ(contentType("a.png"), "image/png");
    EXPECT_EQ(contentType("a.jpeg"), "image/jpeg");
    EXPECT_EQ(contentType("a.svg"), "image/svg+xml");
    EXPECT_EQ(contentType("a.wasm"), "application/wasm");
    EXPECT_EQ(contentType("a.woff2"), "font/woff2");
    EXPECT_EQ(contentType("a.mp3"), "audio/mpeg");
    EXPECT_EQ(contentType("a.mp4"), "video/mp4");
    EXPECT_EQ(contentType("a.glb"), "model/gltf-binary");
    EXPECT_EQ(contentType("a.gltf"), "model/gltf+json");
}

TEST(ContentTypeTest, LastExtensionCountsInAnyCase) {
    EXPECT_EQ(contentType("a.html.PNG"), "image/png");
    EXPECT_EQ(contentType(".json"), "application/json");
}

TEST(ContentTypeTest, UnknownIsBytes) {
    for(const char* const name:
        {"", ".", "README", "a.", "a.htmlx", "a.ht", "a.png ", "png", "a.bin"})
        EXPECT_EQ(contentType(name), "application/octet-stream") << name;
}

}}
