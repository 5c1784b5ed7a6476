#include "editor/ServedBody.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "testing/TemporaryFolder.h"

namespace QuillmereEngine { namespace {

struct ServedBodyTest: ::testing::Test {
    ServedBodyTest() { folder.write("file", "0123456789"); }

    ServedFile file() const {
        return std::move(*findServedFile(std::filesystem::canonical(folder.path()), "/file").file);
    }

    static std::string all(const ServedBody& body, const std::size_t pieceSize) {
        std::string out, piece(pieceSize, '\0');
        while(const std::size_t size = body.read(out.size(), piece.data(), pieceSize))
            out.append(piece, 0, size);
        return out;
    }

    Testing::TemporaryFolder folder;
};

TEST_F(ServedBodyTest, WholeFileIsRead) {
    const ServedBody body{file(), {0, 10}};
    EXPECT_EQ(body.size(), 10u);
    EXPECT_EQ(all(body, 3), "0123456789");
}

TEST_F(ServedBodyTest, PartIsRead) {
    const ServedBody body{file(), {3, 4}};
    EXPECT_EQ(body.size(), 4u);
    EXPECT_EQ(all(body, 100), "3456");
}

TEST_F(ServedBodyTest, PartsHaveHeadsOfTheirOwn) {
    const ServedBody body{file(), {{8, 2}, {0, 1}}, "text/plain", "B"};
    const std::string expected =
        "--B\r\nContent-Type: text/plain\r\nContent-Range: bytes 8-9/10\r\n\r\n89\r\n"
        "--B\r\nContent-Type: text/plain\r\nContent-Range: bytes 0-0/10\r\n\r\n0\r\n"
        "--B--\r\n";
    EXPECT_EQ(body.size(), expected.size());
    for(const std::size_t pieceSize: {1, 7, 1000})
        EXPECT_EQ(all(body, pieceSize), expected) << pieceSize;
}

TEST_F(ServedBodyTest, EndsWhereTheFileHasBecomeShorter) {
    const ServedBody body{file(), {0, 10}};
    std::filesystem::resize_file(folder.file("file"), 4);
    EXPECT_EQ(all(body, 3), "0123");
}

}}
