#ifndef Quillmere_plugins_console_shownText_h
#define Quillmere_plugins_console_shownText_h

#include <Corrade/Containers/Array.h>

#include "common/StringArrayView.h"

namespace QuillmereEngine {

/** @brief Levels that the user wants to see */
struct ShownLevels {
    bool errors;
    bool warnings;
    bool info;

    bool isAll() const { return errors && warnings && info; }
    bool isNone() const { return !errors && !warnings && !info; }
};

/**
@brief The text to be searched, selected and copied in: the shown lines, joined by newlines
@return As @ref join() gives it, so empty when no line is left

With one level hidden every line that isn't of it stays, also one of no known level. With one level
shown only lines of that level stay.
*/
Corrade::Containers::Array<char> shownText(const StringArrayView& store, ShownLevels levels);

/** @brief The lines to be drawn from: all of the store's, or none if no level is shown */
StringArrayView shownLines(const StringArrayView& store, ShownLevels levels);

}

#endif
