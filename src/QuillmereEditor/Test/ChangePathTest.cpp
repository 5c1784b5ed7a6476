#include "QuillmereEditor/changePath.h"

#include <ostream>
#include <string>

#include <Corrade/Containers/StringStl.h>
#include <gtest/gtest.h>

using namespace Corrade;

namespace QuillmereEngine { namespace Test {

TEST(ChangePathTest, TextEndsAtANulOrTheEnd) {
    const char terminated[]{'/', 'a', '\0', 'b'};
    const char unterminated[]{'/', 'a'};
    const char nothing[]{'\0'};
    EXPECT_EQ(std::string{pathText(terminated)}, "/a");
    EXPECT_EQ(std::string{pathText(unterminated)}, "/a");
    EXPECT_TRUE(pathText(nothing).isEmpty());
    EXPECT_TRUE(pathText({}).isEmpty());
    EXPECT_NE(pathText({}).data(), nullptr);
}

TEST(ChangePathTest, ParentAndLastComponent) {
    const struct {
        const char* path;
        const char* parent;
        const char* last;
    } cases[]{{"/a/b", "/a", "b"}, {"/a", "", "a"}, {"", "", ""}, {"/", "", ""}, {"/a/", "/a", ""},
        {"//", "/", ""}, {"/a/b/~1c", "/a/b", "~1c"}};
    for(const auto& row: cases) {
        EXPECT_EQ(std::string{parentPath(row.path)}, row.parent) << row.path;
        EXPECT_EQ(std::string{lastComponent(row.path)}, row.last) << row.path;
    }
}

TEST(ChangePathTest, PrintableIsOneLine) {
    const std::string path{"/a\r\n\t\x01\x1f\x7f/ ~\xc3\xa4"};
    EXPECT_EQ(printable(path), "/a\\x0d\\x0a\\x09\\x01\\x1f\\x7f/ ~\xc3\xa4");
    EXPECT_EQ(printable(""), "");
}

TEST(ChangePathTest, IndexIsDigitsBehindAnOptionalMinus) {
    const struct {
        const char* component;
        IndexKind kind;
        int value;
    } cases[]{{"0", IndexKind::Index, 0}, {"17", IndexKind::Index, 17}, {"01", IndexKind::Index, 1},
        {"-0", IndexKind::Index, 0}, {"000000000000000000000000003", IndexKind::Index, 3},
        {"2147483647", IndexKind::Index, 2147483647}, {"2147483648", IndexKind::TooLarge, 0},
        {"99999999999999999999999999", IndexKind::TooLarge, 0}, {"-1", IndexKind::Negative, 0},
        {"-99999999999999999999999999", IndexKind::Negative, 0}, {"", IndexKind::None, 0},
        {"-", IndexKind::None, 0}, {"--1", IndexKind::None, 0}, {"1a", IndexKind::None, 0},
        {"+1", IndexKind::None, 0}, {" 1", IndexKind::None, 0}};
    for(const auto& row: cases) {
        EXPECT_EQ(indexKind(row.component), row.kind) << row.component;
        if(row.kind == IndexKind::Index) {
            EXPECT_EQ(indexValue(row.component), row.value) << row.component;
        }
    }
}

}}
