#ifndef Quillmere_QuillmereEditor_uiValue_h
#define Quillmere_QuillmereEditor_uiValue_h

#include <cstddef>

#include <Corrade/Containers/ArrayView.h>
#include <rapidjson/document.h>

/** @file
@brief From JSON to what widgets edit and back, whatever the document holds
*/

namespace QuillmereEngine {

/** @brief Nearest float of a number, infinite if it's too large for one. 0 for anything else. */
float floatFrom(const rapidjson::Value& value);

/**
@brief Low 32 bits of what a number stores, 0 for anything else

Of a double that's the lower half of its bits, which means nothing but is the same everywhere.
*/
int integerFrom(const rapidjson::Value& value);

/**
@brief A double for the document

JSON has neither infinities nor NaN, which can be typed into a field all the same. They become the
largest floats and 0.
*/
rapidjson::Value jsonNumber(float value);

/** @brief An integer for the document */
rapidjson::Value jsonNumber(int value);

/** @brief An array for the document, with its numbers made by @ref jsonNumber() */
rapidjson::Value jsonArray(
    Corrade::Containers::ArrayView<const float> values, rapidjson::MemoryPoolAllocator<>& pool);

/** @overload */
rapidjson::Value jsonArray(
    Corrade::Containers::ArrayView<const int> values, rapidjson::MemoryPoolAllocator<>& pool);

/**
@brief Warn that a value isn't what its widget expects

The first time for a path in this process. Does nothing afterwards, as widgets come here in each
frame.
*/
void warnOfShape(const char* path, const char* expected, const rapidjson::Value& value);

/** @brief Warn that a value isn't an array that begins with @p count numbers, as above */
void warnOfNumbers(const char* path, std::size_t count, const rapidjson::Value& value);

}

#endif
