#ifndef Quillmere_benchmark_LogLines_h
#define Quillmere_benchmark_LogLines_h

#include <cstddef>
#include <memory>

#include "common/StringArrayView.h"

namespace QuillmereBenchmark {

/**
@brief Lines as the log writes them, each of a hundred characters

A tenth of them are errors, a tenth warnings, a tenth verbose and the rest info, without a pattern
that a processor could learn.
*/
std::shared_ptr<const QuillmereEngine::StringArray> logLines(std::size_t count);

}

#endif
