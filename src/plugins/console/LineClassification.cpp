#include "plugins/console/LineClassification.h"

#include "plugins/console/lineTag.h"

namespace QuillmereEngine {

bool isError(const char* const line) { return hasErrorTag(line); }

bool isWarning(const char* const line) { return hasWarningTag(line); }

bool isInfo(const char* const line) { return hasInfoTag(line); }

}
