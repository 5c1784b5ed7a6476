#include "Ratio.h"

namespace QuillmereBenchmark {

void addConsoleRows() {}

}
