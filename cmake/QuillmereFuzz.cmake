# quillmere_add_fuzzer(NAME SOURCES... [LIBRARIES targets...])
#
# An executable NAME around LLVMFuzzerTestOneInput(). With QUILLMERE_BUILD_FUZZERS it's a fuzzer:
# `build/fuzz/fuzz/NAME fuzz/corpus/NAME` adds to the corpus what it finds. Anywhere else it only
# replays files, so that every compiler and preset does. Either way CTest replays the corpus.
if(QUILLMERE_BUILD_FUZZERS)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "QUILLMERE_BUILD_FUZZERS needs clang, for libFuzzer")
  endif()
  # What is fuzzed lies in the library, so that has to tell which branches were taken
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

function(quillmere_add_fuzzer name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES")
  add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
  quillmere_target(${name})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} QuillmereEditor)
  set(_corpus ${CMAKE_CURRENT_SOURCE_DIR}/corpus/${name})
  if(QUILLMERE_BUILD_FUZZERS)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    add_test(NAME ${name}.Corpus COMMAND ${name} -runs=0 ${_corpus})
  else()
    target_sources(${name} PRIVATE ${PROJECT_SOURCE_DIR}/fuzz/replay.cpp)
    add_test(NAME ${name}.Corpus COMMAND ${name} ${_corpus})
  endif()
  set_tests_properties(${name}.Corpus PROPERTIES TIMEOUT 300)
endfunction()
