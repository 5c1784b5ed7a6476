#ifndef Quillmere_host_jsonText_h
#define Quillmere_host_jsonText_h

#include <cstddef>
#include <string>

#include <Corrade/Containers/StringView.h>
#include <rapidjson/document.h>

namespace QuillmereEngine {

/** @brief The most levels of arrays and objects in a project, the outermost one included */
constexpr std::size_t MaxJsonDepth = 10000;

/** @brief What is wrong with a JSON text and where */
struct JsonTextError {
    std::string message;
    /** From 1 */
    std::size_t line = 0;
    /** From 1, in Unicode code points */
    std::size_t column = 0;
};

/**
@brief Parse a JSON text
@param text     UTF-8, with or without a byte order mark
@param out      Gets the value, untouched if there's an error
@param error    Gets the error, untouched if there's none
@return Whether there was none

Numbers are read in full precision. Members of the same name all stay; looking one up finds the
first. Nesting deeper than @ref MaxJsonDepth is an error, and doesn't take stack.
*/
bool parseJson(
    Corrade::Containers::StringView text, rapidjson::Document& out, JsonTextError& error);

/** @brief Whether a value is nested no deeper than @ref MaxJsonDepth, so that it can be read again */
bool isJsonDepthValid(const rapidjson::Value& value);

/** @brief JSON pointer of a member that another one of the same name hides, empty if there's none */
std::string duplicateMember(const rapidjson::Value& value);

}

#endif
