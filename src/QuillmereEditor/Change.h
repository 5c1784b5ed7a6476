#ifndef Quillmere_QuillmereEditor_Change_h
#define Quillmere_QuillmereEditor_Change_h

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/Utility/Utility.h>
#include <rapidjson/document.h>

namespace QuillmereEngine {

/**
@brief The value at one JSON pointer went from one value to another

An entry of the undo history, see @ref ChangeManager. Owns deep copies of both values, made in the
memory pool of the project's document: they stay valid whatever happens to the document's content,
but not longer than the document itself. Without @ref newValue it's a removal, without
@ref oldValue a creation.

Move-only. A move assignment exchanges the path and the values, so that the source gets and frees
what the destination held; the number of the group is copied.
*/
struct Change {
    /** JSON pointer (RFC 6901) and its NUL, which counts to the size */
    Corrade::Containers::Array<char> path;
    /** What stood there before, null if nothing did */
    Corrade::Containers::Pointer<rapidjson::Value> oldValue;
    /** What stands there after, null if nothing does */
    Corrade::Containers::Pointer<rapidjson::Value> newValue;
    /** Group that was open when the change was recorded, -1 if none was */
    int group = -1;
};

/** @brief Print as `Change /a/b: 1 -> 2`, with `Create` or `Remove` and `()` where a value is null */
Corrade::Utility::Debug& operator<<(Corrade::Utility::Debug& debug, const Change& change);

}

#endif
