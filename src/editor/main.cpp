#include <cstddef>

#include "editor/runEditor.h"

int main(const int argc, char** const argv) {
    return argc < 1 ? QuillmereEngine::runEditor({})
                    : QuillmereEngine::runEditor({argv + 1, std::size_t(argc - 1)});
}
