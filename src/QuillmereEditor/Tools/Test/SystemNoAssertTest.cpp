#include "QuillmereEditor/Tools/System.h"

#include <gtest/gtest.h>

/* The source as it is in a build that leaves assertions out */

namespace QuillmereEngine { namespace {

TEST(SystemNoAssertTest, UuidIsRandom) { EXPECT_NE(generateUUID(), generateUUID()); }

}}
