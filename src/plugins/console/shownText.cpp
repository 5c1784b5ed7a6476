#include "plugins/console/shownText.h"

#include "plugins/console/LineClassification.h"

using namespace Corrade;

namespace QuillmereEngine {

namespace {

using Predicate = bool (*)(const char*);

bool isNoError(const char* const line) { return !isError(line); }
bool isNoWarning(const char* const line) { return !isWarning(line); }
bool isNoInfo(const char* const line) { return !isInfo(line); }

/* Expects that some level is shown and some is hidden */
Predicate predicateFor(const ShownLevels levels) {
    if(levels.errors && levels.warnings)
        return isNoInfo;
    if(levels.errors && levels.info)
        return isNoWarning;
    if(levels.warnings && levels.info)
        return isNoError;
    if(levels.errors)
        return isError;
    return levels.warnings ? isWarning : isInfo;
}

}

Containers::Array<char> shownText(const StringArrayView& store, const ShownLevels levels) {
    if(levels.isNone())
        return {};
    if(levels.isAll())
        return join(store, '\n');
    return join(filter(store, predicateFor(levels)), '\n');
}

StringArrayView shownLines(const StringArrayView& store, const ShownLevels levels) {
    return levels.isNone() ? StringArrayView{} : StringArrayView{store};
}

}
