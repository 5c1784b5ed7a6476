#include "Ratio.h"

namespace QuillmereBenchmark {

void addLogRows() {}

}
