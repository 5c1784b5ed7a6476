include(GoogleTest)

# Compile options of everything below a Test/. The tests use nothing but the
# public targets, so they can be built against Corrade itself as well: it leaves
# some of its checks out of a release build unless told that this isn't one.
function(corrade_test_options target)
    target_compile_features(${target} PRIVATE cxx_std_17)
    target_compile_definitions(${target} PRIVATE CORRADE_IS_DEBUG_BUILD)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wno-deprecated-declarations)
endfunction()

# A test executable from NAME.cpp, linked to the libraries that follow
function(corrade_test name)
    add_executable(Corrade${name} ${name}.cpp)
    corrade_test_options(Corrade${name})
    target_link_libraries(Corrade${name} PRIVATE ${ARGN} GTest::gmock_main)
    gtest_discover_tests(Corrade${name} DISCOVERY_MODE PRE_TEST)
endfunction()
