#include "editor/escapedForUrl.h"

#include <gtest/gtest.h>

namespace QuillmereEngine { namespace {

TEST(EscapedForUrlTest, UnreservedCharactersStay) {
    EXPECT_EQ(escapedForUrl("Az-09._~"), "Az-09._~");
    EXPECT_EQ(escapedForUrl(""), "");
}

TEST(EscapedForUrlTest, AllElseIsEscaped) {
    EXPECT_EQ(escapedForUrl("a b/%:?#\r\n"), "a%20b%2F%25%3A%3F%23%0D%0A");
    EXPECT_EQ(escapedForUrl("\xc3\xbc\xff"), "%C3%BC%FF");
}

}}
