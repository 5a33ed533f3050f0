# orvan_add_part(NAME SOURCES ... [DEPENDS ...])
# A static part of liborvan.so. Parts are linked whole into the shared library,
# and tests link them directly so that internal functions can be tested.
# Calls into the sibling libraries stay unresolved in a part: the shared library
# resolves them against libovgame/libovkey, contract tests against the fakes.
function(orvan_add_part name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR})
  if(ARG_DEPENDS)
    target_link_libraries(${name} PUBLIC ${ARG_DEPENDS})
  endif()
  set_property(GLOBAL APPEND PROPERTY ORVAN_PARTS ${name})
endfunction()

# orvan_add_test(NAME SOURCES ... LIBS ...)
# A GoogleTest program registered with CTest, one CTest entry per test case.
function(orvan_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gtest GTest::gtest_main GTest::gmock)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/tests)
  target_compile_definitions(${name} PRIVATE ORVAN_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
                       PROPERTIES TIMEOUT 900)
endfunction()
