#include <type_traits>

#include <Corrade/Tags.h>
#include <Corrade/configure.h>

#include <gtest/gtest.h>

namespace {

using namespace Corrade;

template<class Tag> constexpr bool isTag(Tag) {
    return std::is_empty<Tag>::value && !std::is_default_constructible<Tag>::value;
}

TEST(TagsTest, TagsAreEmptyAndNotMadeOfBraces) {
    static_assert(isTag(DefaultInit) && isTag(ValueInit) && isTag(NoInit), "");
    static_assert(isTag(NoCreate) && isTag(DirectInit) && isTag(InPlaceInit), "");
    static_assert(std::is_same<decltype(NoInit), const NoInitT>::value, "");
}

TEST(ConfigureTest, SaysWhatItIsBuiltFor) {
#if !defined(CORRADE_TARGET_UNIX) || !defined(CORRADE_BUILD_MULTITHREADED) ||                      \
    !defined(CORRADE_BUILD_DEPRECATED) || defined(CORRADE_TARGET_WINDOWS)
    FAIL() << "configure.h isn't that of a multithreaded Unix build with deprecated interfaces";
#endif
}

}
