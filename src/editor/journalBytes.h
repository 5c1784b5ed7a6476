#ifndef Quillmere_editor_journalBytes_h
#define Quillmere_editor_journalBytes_h

#include <cstdint>
#include <string>
#include <string_view>

#include <rapidjson/document.h>

namespace QuillmereEngine {

/** @file
@brief Numbers, texts and values as the bytes of a journal

Numbers have their lowest byte first. Whatever takes something from the front of a view leaves the
view in any state when it gives false, because it's too short or holds something else.
*/

void appendNumber(std::string& out, std::uint32_t number);
void appendNumber(std::string& out, std::uint64_t number);
bool takeNumber(std::string_view& in, std::uint32_t& number);
bool takeNumber(std::string_view& in, std::uint64_t& number);

/** @brief Size and bytes. Expects less than 4 GB. */
void appendText(std::string& out, std::string_view text);

/** @param text Gets a part of @p in */
bool takeText(std::string_view& in, std::string_view& text);

/**
@brief Append a JSON value

Exactly: a double has its eight bytes, so that a NaN stays what it is, strings keep their NULs and
objects all members of the same name. Works for any depth of nesting.
*/
void appendValue(std::string& out, const rapidjson::Value& value);

/** @param value    Gets the value, with texts of its own. Untouched if there's none. */
bool takeValue(std::string_view& in, rapidjson::Document& value);

}

#endif
