#include "common/StringArrayView.h"

#include <cstring>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/blockReserve.h"

namespace QuillmereEngine { namespace {

using namespace Corrade;
using ::testing::ElementsAre;

std::vector<std::string> strings(const StringArrayView& lines) {
    std::vector<std::string> out;
    for(std::size_t i = 0; i != lines.size(); ++i)
        out.emplace_back(lines.get(i), lines.sizeOf(i) - 1);
    return out;
}

std::vector<std::size_t> offsets(const StringArrayView& lines) {
    return {lines.offsets().begin(), lines.offsets().end()};
}

std::string text(const Containers::Array<char>& joined) { return {joined.data(), joined.size()}; }

StringArray store(const std::vector<std::string>& lines) {
    StringArray out;
    for(const std::string& line: lines)
        out.append(line.data(), int(line.size()));
    return out;
}

/* Whatever lies in freed memory, the reserve's included, shall not look like padding */
bool isPadded(const StringArrayView& lines) {
    const char* const end = lines.data().end();
    for(std::size_t i = 0; i != StringArray::Padding; ++i)
        if(end[i] != '\0')
            return false;
    return true;
}

TEST(StringArrayViewTest, DefaultViewHasNoStringsAndTheOffsetZero) {
    const StringArrayView lines;
    EXPECT_EQ(lines.size(), 0);
    EXPECT_TRUE(lines.isEmpty());
    EXPECT_THAT(offsets(lines), ElementsAre(0));
}

TEST(StringArrayViewTest, EmptyStoreHasNoStringsAndTheOffsetZero) {
    const StringArray lines;
    EXPECT_EQ(lines.size(), 0);
    EXPECT_THAT(offsets(lines), ElementsAre(0));
}

TEST(StringArrayViewTest, StringsArePackedWithTheirNuls) {
    const StringArray lines = store({"a", "", "bc"});
    EXPECT_EQ(lines.size(), 3);
    EXPECT_THAT(offsets(lines), ElementsAre(0, 2, 3, 6));
    EXPECT_EQ(lines.sizeOf(0), 2);
    EXPECT_EQ(lines.sizeOf(1), 1);
    EXPECT_EQ(lines.sizeOf(2), 3);
    EXPECT_STREQ(lines.get(0), "a");
    EXPECT_STREQ(lines.get(1), "");
    EXPECT_STREQ(lines.get(2), "bc");
    EXPECT_EQ(std::string(lines.data().data(), lines.data().size()), std::string("a\0\0bc\0", 6));
}

TEST(StringArrayViewTest, CopyViewsTheSameCharactersWithItsOwnOffsets) {
    const StringArray lines = store({"a", "bc"});
    const StringArrayView copy{lines};
    EXPECT_EQ(copy.get(0), lines.get(0));
    EXPECT_EQ(copy.data().data(), lines.data().data());
    EXPECT_NE(copy.offsets().data(), lines.offsets().data());
    EXPECT_EQ(offsets(copy), offsets(lines));
}

TEST(StringArrayViewTest, CopyIsUntouchedByWhatIsAppendedLater) {
    StringArray lines = store({"a"});
    lines.append("room", -1);
    const StringArrayView copy{lines};
    lines.append("b", -1);
    EXPECT_EQ(copy.size(), 2);
}

TEST(StringArrayViewTest, CopyAssignmentReplacesOffsets) {
    const StringArray lines = store({"a", "bc"});
    StringArrayView copy{store({"x"})};
    copy = lines;
    EXPECT_THAT(strings(copy), ElementsAre("a", "bc"));
    copy = *&copy;
    EXPECT_THAT(strings(copy), ElementsAre("a", "bc"));
}

TEST(StringArrayViewTest, MovedFromViewIsEmpty) {
    const StringArray lines = store({"a"});
    StringArrayView from{lines};
    const StringArrayView to{std::move(from)};
    EXPECT_EQ(to.size(), 1);
    EXPECT_EQ(from.size(), 0);
    EXPECT_THAT(offsets(from), ElementsAre(0));
}

TEST(StringArrayViewTest, MovedFromStoreIsEmptyAndUsable) {
    StringArray from = store({"a", "b"});
    const char* const characters = from.get(0);
    StringArray to{std::move(from)};
    EXPECT_EQ(to.get(0), characters);
    EXPECT_THAT(strings(to), ElementsAre("a", "b"));
    EXPECT_THAT(offsets(from), ElementsAre(0));

    from.append("new", -1);
    EXPECT_THAT(strings(from), ElementsAre("new"));
    from = std::move(to);
    EXPECT_THAT(strings(from), ElementsAre("a", "b"));
    EXPECT_TRUE(to.isEmpty());
}

TEST(StringArrayViewTest, StoresMoveWithoutThrowingAndDoNotCopy) {
    EXPECT_TRUE(std::is_nothrow_move_constructible<StringArray>::value);
    EXPECT_TRUE(std::is_nothrow_move_assignable<StringArray>::value);
    EXPECT_FALSE(std::is_copy_constructible<StringArray>::value);
    EXPECT_FALSE(std::is_copy_assignable<StringArray>::value);
}

TEST(StringArrayViewTest, ClearLeavesAViewEmptyAndTheStoreAsItWas) {
    const StringArray lines = store({"a"});
    StringArrayView view{lines};
    view.clear();
    EXPECT_THAT(offsets(view), ElementsAre(0));
    EXPECT_EQ(lines.size(), 1);
}

TEST(StringArrayViewTest, ClearThroughTheBaseEmptiesAStoreForGood) {
    StringArray lines = store({"former", "lines"});
    StringArrayView& base = lines;
    base.clear();
    EXPECT_TRUE(lines.isEmpty());
    EXPECT_EQ(lines.data().size(), 0);
    base.append("new", -1);
    EXPECT_THAT(strings(lines), ElementsAre("new"));
    EXPECT_THAT(offsets(lines), ElementsAre(0, 4));
}

/* Two slots in front of the destructor's, in this order: modules built elsewhere call them so */
TEST(StringArrayViewTest, VirtualTableBeginsWithAppendAndClear) {
    StringArray lines = store({"a"});
    void** const table = *reinterpret_cast<void***>(&lines);
    using Append = void (*)(StringArrayView*, const char*, int);
    using Clear = void (*)(StringArrayView*);
    reinterpret_cast<Append>(table[0])(&lines, "b", -1);
    EXPECT_THAT(strings(lines), ElementsAre("a", "b"));
    reinterpret_cast<Clear>(table[1])(&lines);
    EXPECT_TRUE(lines.isEmpty());
}

/* A large log that's cleared shall not keep its memory in the reserve */
TEST(StringArrayTest, ClearFreesWhatTheReserveHolds) {
    StringArray lines = store(std::vector<std::string>(10000, std::string(99, 'x')));
    join(lines, '\n');
    EXPECT_GE(reservedBlockCount(), 1);
    lines.clear();
    EXPECT_EQ(reservedBlockCount(), 0);
}

TEST(StringArrayTest, AppendTakesLengthOrGoesToTheNul) {
    StringArray lines;
    lines.append("whole line", -1);
    lines.append("prefix and more", 6);
    lines.append("never read", 0);
    lines.append(nullptr, 0);
    lines.append("with\0nul", 8);
    EXPECT_THAT(
        strings(lines), ElementsAre("whole line", "prefix", "", "", std::string("with\0nul", 8)));
}

TEST(StringArrayTest, AppendTakesAStringOfItsOwn) {
    StringArray lines = store({"the first line, which is copied each time the store grows"});
    std::vector<std::string> expected = strings(lines);
    for(int i = 0; i != 100; ++i) {
        lines.append(lines.get(std::size_t(i)), -1);
        expected.push_back(expected.back());
    }
    EXPECT_EQ(strings(lines), expected);
}

TEST(StringArrayTest, ZeroesFollowTheLastString) {
    /* A long line leaves its characters where the padding of a shorter one will be */
    StringArray lines;
    for(const char* const line: {"x", "", "something of more than thirty-two characters", "y"}) {
        lines.append(line, -1);
        EXPECT_TRUE(isPadded(lines)) << line;
    }
}

TEST(StringArrayTest, AppendGrowsByAConstantFactor) {
    StringArray lines;
    const char* last = nullptr;
    int moves = 0;
    for(int i = 0; i != 100000; ++i) {
        lines.append("0123456789", -1);
        moves += lines.get(0) != last;
        last = lines.get(0);
    }
    /* The first, log(1100032 / 43) / log(1.5) = 25.03 more, fewer where the allocator can extend */
    EXPECT_LE(moves, 27);
}

TEST(StringArrayTest, RandomStringsComeBack) {
    std::mt19937 random{42};
    StringArray lines;
    std::vector<std::string> expected;
    for(int i = 0; i != 2000; ++i) {
        std::string line(random() % 100, '\0');
        for(char& c: line)
            c = char(random());
        lines.append(line.data(), int(line.size()));
        expected.push_back(line);
    }
    EXPECT_EQ(strings(lines), expected);
    EXPECT_TRUE(isPadded(lines));
}

bool always(const char*) { return true; }
bool never(const char*) { return false; }
bool isLong(const char* line) { return std::strlen(line) > 3; }

TEST(StringArrayFilterTest, KeepsExactlyWhatThePredicateHoldsFor) {
    const StringArray lines = store({"long one", "no", "", "long two", "abc", "last"});
    const StringArray kept = filter(lines, isLong);
    EXPECT_THAT(strings(kept), ElementsAre("long one", "long two", "last"));
    EXPECT_THAT(offsets(kept), ElementsAre(0, 9, 18, 23));
    EXPECT_TRUE(isPadded(kept));
}

TEST(StringArrayFilterTest, PredicateThatAlwaysHoldsGivesAnIndependentCopy) {
    StringArray lines = store({"a", "", "b"});
    StringArray kept = filter(lines, always);
    lines.clear();
    EXPECT_THAT(strings(kept), ElementsAre("a", "", "b"));
    kept.append("c", -1);
    EXPECT_THAT(strings(kept), ElementsAre("a", "", "b", "c"));
    EXPECT_TRUE(isPadded(kept));
}

TEST(StringArrayFilterTest, PredicateThatNeverHoldsGivesAnEmptyStore) {
    const StringArray kept = filter(store({"a", "b"}), never);
    EXPECT_THAT(offsets(kept), ElementsAre(0));
    EXPECT_EQ(join(kept, '\n').size(), 0);
}

TEST(StringArrayFilterTest, EmptyStoreGivesAnEmptyStore) {
    EXPECT_THAT(offsets(filter(StringArrayView{}, always)), ElementsAre(0));
}

TEST(StringArrayJoinTest, SeparatorStandsBetweenNeighboursAndANulAtTheEnd) {
    EXPECT_EQ(text(join(store({"a", "", "bc"}), '\n')), std::string("a\n\nbc\0", 6));
    EXPECT_EQ(text(join(store({"one"}), ';')), std::string("one\0", 4));
    EXPECT_EQ(text(join(store({""}), '\n')), std::string("\0", 1));
    EXPECT_EQ(text(join(store({"", ""}), '\n')), std::string("\n\0", 2));
}

TEST(StringArrayJoinTest, NothingGivesAnEmptyArray) {
    const Containers::Array<char> joined = join(StringArrayView{}, '\n');
    EXPECT_EQ(joined.size(), 0);
    EXPECT_EQ(joined.data(), nullptr);
}

TEST(StringArrayJoinTest, NulsInsideOfAStringStay) {
    EXPECT_EQ(text(join(store({std::string("a\0b", 3), "c"}), '\n')), std::string("a\0b\nc\0", 6));
}

/* Every way in which the ends of lines can meet the ends of what's copied at a time */
TEST(StringArrayJoinTest, TextOfAnyLengthIsJoinedAsOneLineAtATimeWouldBe) {
    std::mt19937 random{7};
    for(const std::size_t longest: {1, 3, 100, 16383, 16384, 16385, 50000}) {
        StringArray lines;
        std::string expected;
        for(std::size_t size = 0; size < 150000;) {
            const std::string line(longest == 16384 ? 16383 : random() % (longest + 1), 'x');
            lines.append(line.data(), int(line.size()));
            expected += line + '\n';
            size += line.size() + 1;
        }
        expected.back() = '\0';
        EXPECT_EQ(text(join(lines, '\n')), expected) << longest;
    }
}

TEST(StringArrayJoinTest, MemoryIsHandedOutAgain) {
    const StringArray lines = store(std::vector<std::string>(10000, std::string(99, 'x')));
    const char* const first = join(lines, '\n').data();
    EXPECT_EQ(join(lines, '\n').data(), first);
}

/* Exposes what a view that goes wrong would hold */
struct CorruptView: StringArrayView {
    CorruptView() {
        _data = "abc";
        _offsets = Containers::array<std::size_t>({0, 3, 1});
    }
};

using StringArrayViewDeathTest = ::testing::Test;

TEST(StringArrayViewDeathTest, GetBehindTheEndAborts) {
    EXPECT_DEATH(store({"a"}).get(1), "^StringArrayView::get\\(\\): invalid index 1 for size 1\n$");
    EXPECT_DEATH(
        StringArrayView{}.get(0), "^StringArrayView::get\\(\\): invalid index 0 for size 0\n$");
}

TEST(StringArrayViewDeathTest, SizeOfBehindTheEndAborts) {
    EXPECT_DEATH(store({"a", "b"}).sizeOf(5),
        "^StringArrayView::sizeOf\\(\\): invalid index 5 for size 2\n$");
    EXPECT_DEATH(StringArrayView{}.sizeOf(0),
        "^StringArrayView::sizeOf\\(\\): invalid index 0 for size 0\n$");
}

TEST(StringArrayViewDeathTest, DecreasingOffsetsAbort) {
    constexpr const char* message = "^StringArrayView::sizeOf\\(\\): offset 2 is smaller than "
                                    "offset 1 previous: 1 < 3\n$";
    EXPECT_DEATH(CorruptView{}.sizeOf(1), message);
    EXPECT_DEATH(filter(CorruptView{}, always), message);
}

TEST(StringArrayViewDeathTest, AppendToAPlainViewAborts) {
    EXPECT_DEATH(StringArrayView{}.append("a", -1),
        "^StringArrayView::append\\(\\): a view doesn't own its strings\n$");
}

TEST(StringArrayViewDeathTest, AppendOfAnImpossibleLengthAborts) {
    EXPECT_DEATH(StringArray{}.append("a", -2),
        "^StringArray::append\\(\\): expected a string with a length of at least -1 but got "
        "0x[0-9a-f]+ and -2\n$");
    EXPECT_DEATH(StringArray{}.append(nullptr, -1),
        "^StringArray::append\\(\\): expected a string with a length of at least -1 but got 0x0 "
        "and -1\n$");
}

}}
