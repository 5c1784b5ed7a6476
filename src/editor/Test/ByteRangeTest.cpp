#include "editor/ByteRange.h"

#include <string>
#include <utility>

#include <gmock/gmock.h>

namespace QuillmereEngine { namespace {

using Ranges = std::vector<std::pair<std::uint64_t, std::uint64_t>>;

constexpr std::uint64_t FileSize = 100;

/* Offsets and sizes */
std::optional<Ranges> ranges(const std::string& header, const std::uint64_t fileSize = FileSize) {
    const std::optional<std::vector<ByteRange>> requested = requestedRanges(header, fileSize);
    if(!requested)
        return {};
    Ranges out;
    for(const ByteRange& range: *requested)
        out.emplace_back(range.offset, range.size);
    return out;
}

struct RangeCase {
    const char* name;
    const char* header;
    Ranges expected;
};

struct RequestedRangesTest: ::testing::TestWithParam<RangeCase> {};

TEST_P(RequestedRangesTest, IsUnderstood) {
    const std::optional<Ranges> out = ranges(GetParam().header);
    ASSERT_TRUE(out);
    EXPECT_EQ(*out, GetParam().expected);
}

const RangeCase RangeCases[]{
    {"FirstByte", "bytes=0-0", {{0, 1}}},
    {"Middle", "bytes=10-19", {{10, 10}}},
    {"OpenEnd", "bytes=90-", {{90, 10}}},
    {"Whole", "bytes=0-", {{0, 100}}},
    {"BehindTheEnd", "bytes=90-1000", {{90, 10}}},
    {"Suffix", "bytes=-5", {{95, 5}}},
    {"LongSuffix", "bytes=-1000", {{0, 100}}},
    {"Several", "bytes=0-1,50-51,-1", {{0, 2}, {50, 2}, {99, 1}}},
    {"SeveralInAnyOrder", "bytes=50-51,0-1", {{50, 2}, {0, 2}}},
    {"Blanks", "bytes= 0-1 ,\t5-6", {{0, 2}, {5, 2}}},
    {"UnitInCapitals", "Bytes=0-1", {{0, 2}}},
    {"OneOfTwoCanBeHad", "bytes=200-300,0-1", {{0, 2}}},
    {"NoneCanBeHad", "bytes=100-", {}},
    {"EmptySuffix", "bytes=-0", {}},
    {"GreaterThan64Bits", "bytes=99999999999999999999999-", {}},
    {"EndGreaterThan64Bits", "bytes=99-99999999999999999999999", {{99, 1}}},
};

INSTANTIATE_TEST_SUITE_P(, RequestedRangesTest, ::testing::ValuesIn(RangeCases),
    [](const auto& row) { return std::string{row.param.name}; });

struct IgnoredRangesTest: ::testing::TestWithParam<std::pair<const char*, const char*>> {};

TEST_P(IgnoredRangesTest, WholeFileIsSent) { EXPECT_FALSE(ranges(GetParam().second)); }

INSTANTIATE_TEST_SUITE_P(, IgnoredRangesTest,
    ::testing::Values(std::pair{"Nothing", ""}, std::pair{"UnitOnly", "bytes"},
        std::pair{"NoRange", "bytes="}, std::pair{"OtherUnit", "items=0-1"},
        std::pair{"Words", "bytes=a-b"}, std::pair{"NoDash", "bytes=5"},
        std::pair{"DashOnly", "bytes=-"}, std::pair{"Backwards", "bytes=5-4"},
        std::pair{"Negative", "bytes=--5"}, std::pair{"EmptyPart", "bytes=0-1,,3-4"},
        std::pair{"CommaAtTheEnd", "bytes=0-1,"}, std::pair{"Rest", "bytes=0-1x"},
        std::pair{"MoreThanTheFile", "bytes=0-60,30-99"}),
    [](const auto& row) { return std::string{row.param.first}; });

TEST(ByteRangeTest, VeryManyAreIgnored) {
    std::string header = "bytes=0-0";
    for(int i = 1; i != 32; ++i)
        header += ",0-0";
    EXPECT_TRUE(ranges(header));
    EXPECT_FALSE(ranges(header + ",0-0"));
}

TEST(ByteRangeTest, EmptyFileHasNoParts) {
    EXPECT_EQ(ranges("bytes=0-", 0), Ranges{});
    EXPECT_EQ(ranges("bytes=-5", 0), Ranges{});
}

}}
