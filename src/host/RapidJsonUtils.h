#ifndef Quillmere_host_RapidJsonUtils_h
#define Quillmere_host_RapidJsonUtils_h

#include <string>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Utility/Utility.h>
#include <rapidjson/document.h>

namespace QuillmereEngine { namespace RapidJsonUtils {

/**
@brief Value of an enumeration by its name
@return Index of the first of @p names that equals @p string, -1 if none does
*/
int enumStringToValue(const char* string, Corrade::Containers::ArrayView<const char* const> names);

/**
@brief Copy a value deeply
@return A copy that holds nothing of the original. RapidJSON's own copies go on referring to strings
    that the original holds by reference; these are copied here, names of members included.

Arrays and objects take just the memory they need. Works for any depth of nesting.
*/
rapidjson::Value copy(const rapidjson::Value& value, rapidjson::Document::AllocatorType& allocator);

/**
@brief Compact one-line JSON
@return What RapidJSON reads back, with `kParseFullPrecisionFlag`, as a value equal in kinds and
    bits. Doubles have the shortest digits that do so and a point or an exponent, so that they stay
    doubles. NaN and infinities, which JSON hasn't, become null.
*/
std::string toJson(const rapidjson::Value& value);

/** @brief JSON as people read it, four spaces a level and a newline at the end. Otherwise as
    @ref toJson(). */
std::string toPrettyJson(const rapidjson::Value& value);

}}

namespace rapidjson {

/** @brief Print as compact one-line JSON, see @ref QuillmereEngine::RapidJsonUtils::toJson() */
Corrade::Utility::Debug& operator<<(Corrade::Utility::Debug& debug, const Value& value);

}

#endif
