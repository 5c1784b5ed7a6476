#ifndef Corrade_Utility_Directory_h
#define Corrade_Utility_Directory_h

/** @file
@brief Functions on paths and folders

Paths are bytes as the system has them. What fails prints one message to
@ref Corrade::Utility::Error.
*/

#include <Corrade/Containers/EnumSet.h>
#include <Corrade/Utility/VisibilityMacros.h>
#include <initializer_list>
#include <string>
#include <vector>

namespace Corrade { namespace Utility { namespace Directory {

/** @brief What @ref list() leaves out and how it sorts */
enum class Flag {
    SkipDotAndDotDot = 1,
    SkipFiles = 2,
    SkipDirectories = 4,
    SkipSpecial = 8,
    /** By bytes. Has the bit of the other order, so it wins where both are given. */
    SortAscending = 48,
    SortDescending = 32
};
typedef Containers::EnumSet<Flag> Flags;
CORRADE_ENUMSET_OPERATORS(Flags)

/** @brief Both paths with a `/` between, @p path alone if it's absolute or @p base is empty */
CORRADE_UTILITY_EXPORT std::string join(const std::string& base, const std::string& path);
/** @brief All paths, joined from the left */
CORRADE_UTILITY_EXPORT std::string join(std::initializer_list<std::string> paths);

/** @brief The path unchanged, as `/` is native */
CORRADE_UTILITY_EXPORT std::string toNativeSeparators(const std::string& path);
/** @brief The path unchanged, as `/` is native */
CORRADE_UTILITY_EXPORT std::string fromNativeSeparators(const std::string& path);

/** @brief `$HOME`, with a message and empty if there is none */
CORRADE_UTILITY_EXPORT std::string home();

/** @brief Whether there is a file of any kind. Follows links. */
CORRADE_UTILITY_EXPORT bool exists(const std::string& path);
/** @brief Whether there is a folder. Follows links. */
CORRADE_UTILITY_EXPORT bool isDirectory(const std::string& path);

/** @brief Make a folder and all above it, true as well if it's there already */
CORRADE_UTILITY_EXPORT bool mkpath(const std::string& path);

/**
@brief Names in a folder
@return Names alone, `.` and `..` among them, in no particular order unless
    sorted. Empty, with a message, if the folder can't be read.

A link counts as what it leads to, as special if it leads nowhere.
*/
CORRADE_UTILITY_EXPORT std::vector<std::string> list(const std::string& path, Flags flags = {});

/** @brief Copy the bytes of a file, replacing one that's there */
CORRADE_UTILITY_EXPORT bool copy(const std::string& from, const std::string& to);

}}}

#endif
