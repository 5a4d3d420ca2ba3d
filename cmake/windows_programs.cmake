# koructl.exe and koruspy.exe, and in the host form the tests of all in them that is not Windows' own.
set(PROGRAMS ${CMAKE_SOURCE_DIR}/tools)
file(GLOB PROGRAM_SOURCES CONFIGURE_DEPENDS
  ${PROGRAMS}/control/*.cpp ${PROGRAMS}/koructl/*.cpp ${PROGRAMS}/koruspy/*.cpp)
set(WINDOWS_SOURCES ${PROGRAM_SOURCES})
list(FILTER PROGRAM_SOURCES EXCLUDE REGEX "_windows\\.cpp$")
list(FILTER WINDOWS_SOURCES INCLUDE REGEX "_windows\\.cpp$")

if(NOT KORU_IMAGE)
  file(GLOB PROGRAM_TESTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/control/*.cpp)
  koru_test_program(control_tests SOURCES ${PROGRAM_TESTS} ${PROGRAM_SOURCES} ${PROGRAMS}/machine.cpp ${ENGINE_MAIN}
    LIBRARIES koru_engine koru_client)
  add_test(NAME control_tests COMMAND control_tests --gtest_brief=1)
  find_program(WINE wine)
  if(WINE)
    add_test(NAME windows_programs COMMAND bash ${CMAKE_SOURCE_DIR}/tests/control/windows_programs.sh
      ${WINE} ${CMAKE_SOURCE_DIR}/build/image)
  endif()
  return()
endif()

# CLI11 stands in the system's include folder, which is not the cross compiler's.
set(CLI11_FOLDER ${CMAKE_BINARY_DIR}/cli11)
file(MAKE_DIRECTORY ${CLI11_FOLDER})
file(CREATE_LINK /usr/include/CLI ${CLI11_FOLDER}/CLI SYMBOLIC)

file(GLOB PROGRAM_CLIENT_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/client/*.cpp)
add_library(koru_windows_common STATIC ${PROGRAM_CLIENT_SOURCES} ${PROGRAMS}/windows/system_windows.cpp)
target_include_directories(koru_windows_common PUBLIC ${CMAKE_SOURCE_DIR})
target_include_directories(koru_windows_common SYSTEM PUBLIC ${CLI11_FOLDER})
# Nothing that Windows 2000 lacks: tests/program/windows_imports.sh looks after it.
target_compile_definitions(koru_windows_common PUBLIC CLI11_HAS_FILESYSTEM=0 _WIN32_WINNT=0x0500 WINVER=0x0500)
target_compile_options(koru_windows_common PUBLIC ${KORU_WARNINGS} -Os -ffunction-sections -fdata-sections)

foreach(program koructl koruspy)
  set(sources ${PROGRAM_SOURCES} ${WINDOWS_SOURCES})
  list(FILTER sources INCLUDE REGEX "/(control|${program})/")
  add_executable(${program} ${sources} ${PROGRAMS}/windows/old_runtime_windows.cpp)
  set_target_properties(${program} PROPERTIES SUFFIX ".exe")
  target_link_libraries(${program} PRIVATE koru_windows_common gdi32 advapi32)
  target_link_options(${program} PRIVATE -static -s
    -Wl,--subsystem,console:5.0 -Wl,--major-os-version,5 -Wl,--minor-os-version,0
    -Wl,--gc-sections -Wl,--no-insert-timestamp)
endforeach()
