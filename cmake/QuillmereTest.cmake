include(GoogleTest)

# quillmere_add_test(NAME SOURCES... [LIBRARIES targets...] [PROPERTIES CTest properties...])
#
# One executable NAME of GoogleTest cases, each of which CTest runs in a process of its own.
function(quillmere_add_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES;PROPERTIES")
  add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
  quillmere_target(${name})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} QuillmereTesting)
  set_target_properties(${name} PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300
    ${arg_PROPERTIES})
endfunction()
