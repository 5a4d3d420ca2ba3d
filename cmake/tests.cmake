enable_testing()

set(GTEST_SOURCE /usr/src/googletest/googletest)
add_library(gtest STATIC ${GTEST_SOURCE}/src/gtest-all.cc)
target_include_directories(gtest SYSTEM PUBLIC ${GTEST_SOURCE}/include PRIVATE ${GTEST_SOURCE})

# One program per folder of tests: `name`, its sources, what it links.
function(koru_test_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} gtest)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR})
  # Code that runs once is not worth optimising.
  target_compile_options(${name} PRIVATE ${KORU_TEST_WARNINGS} -O0 -g1)
  target_compile_definitions(${name} PRIVATE KORU_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
endfunction()

file(GLOB_RECURSE UNIT_TESTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/unit/*.cpp)
file(GLOB ENGINE_TESTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/engine/*.cpp)
file(GLOB CLIENT_TESTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/client/*.cpp)
file(GLOB CONFORMANCE_TESTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/conformance/*.cpp)
file(GLOB PROPERTY_TESTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/property/*.cpp)
set(ENGINE_MAIN ${CMAKE_SOURCE_DIR}/tests/support/engine_main.cpp)

koru_test_program(unit_tests SOURCES ${UNIT_TESTS} ${ENGINE_MAIN} LIBRARIES koru_engine)
koru_test_program(engine_tests SOURCES ${ENGINE_TESTS} ${ENGINE_MAIN} LIBRARIES koru_engine)
koru_test_program(client_tests SOURCES ${CLIENT_TESTS} ${CMAKE_SOURCE_DIR}/tests/support/plain_main.cpp
  LIBRARIES koru_client)
koru_test_program(conformance_tests SOURCES ${CONFORMANCE_TESTS} ${ENGINE_MAIN} LIBRARIES koru_engine koru_client)

koru_test_program(property_tests SOURCES ${PROPERTY_TESTS} ${CMAKE_SOURCE_DIR}/tests/conformance/session.cpp
  ${ENGINE_MAIN} LIBRARIES koru_engine koru_client)

foreach(program unit_tests engine_tests client_tests)
  add_test(NAME ${program} COMMAND ${program} --gtest_brief=1)
endforeach()
set(KORU_IMAGE_FILE ${CMAKE_SOURCE_DIR}/build/image/koru.dll)
foreach(kind conformance property)
  add_test(NAME ${kind}_linked COMMAND ${kind}_tests --gtest_brief=1)
  add_test(NAME ${kind}_image COMMAND ${kind}_tests --gtest_brief=1 --image=${KORU_IMAGE_FILE})
endforeach()

file(GLOB KORU_SCRIPT_TESTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/program/*.sh)
foreach(script ${KORU_SCRIPT_TESTS})
  get_filename_component(name ${script} NAME_WE)
  add_test(NAME program_${name} COMMAND bash ${script} $<TARGET_FILE:koru> ${CMAKE_SOURCE_DIR})
endforeach()
include(cmake/links.cmake)
include(cmake/image-tests.cmake)
