#ifndef Quillmere_QuillmereEditor_changePath_h
#define Quillmere_QuillmereEditor_changePath_h

#include <string>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>

namespace QuillmereEngine {

/**
@brief Text of a change's path
@return Up to the first NUL, or to the end of an array that has none. Not null, and valid as long
    as the array.
*/
Corrade::Containers::StringView pathText(Corrade::Containers::ArrayView<const char> path);

/** @brief `/a` for `/a/b`, the empty path for `/a` and for the empty path */
Corrade::Containers::StringView parentPath(Corrade::Containers::StringView path);

/** @brief What stands behind the last slash: `b` for `/a/b`, all of it if there's no slash */
Corrade::Containers::StringView lastComponent(Corrade::Containers::StringView path);

/** @brief The path for a message of one line: a control character shows as `\x0a` */
std::string printable(Corrade::Containers::StringView path);

/** @brief What a component of a path says as an array index */
enum class IndexKind {
    None,     /**< Not a number */
    Index,    /**< 0 to `INT_MAX`, leading zeros and a negative zero included */
    Negative, /**< Less than zero */
    TooLarge  /**< More than `INT_MAX` */
};

/** @brief An optional minus and decimal digits are an index, see @ref IndexKind */
IndexKind indexKind(Corrade::Containers::StringView component);

/** @brief Value of a component of which @ref indexKind() said @ref IndexKind::Index */
int indexValue(Corrade::Containers::StringView component);

}

#endif
