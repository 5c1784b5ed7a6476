#include "Ratio.h"

namespace QuillmereBenchmark {

void addStoreRows() {}

}
