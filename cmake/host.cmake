# Everything that runs here: the driver's library, the stand-in engine, the client room, the `koru`
# program and the tests. All of it is 32-bit, as the driver is.
option(KORU_SANITIZE "address and undefined-behaviour sanitizers" OFF)
option(KORU_COVERAGE "count executed lines" OFF)

add_compile_options(-m32)
add_link_options(-m32 -no-pie)
set(CMAKE_POSITION_INDEPENDENT_CODE OFF)
if(KORU_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(KORU_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()

# runtime.cpp stands in for a C library, which is here.
list(FILTER KORU_DRIVER_SOURCES EXCLUDE REGEX "/platform/runtime\\.cpp$")
add_library(koru_driver STATIC ${KORU_DRIVER_SOURCES})
target_include_directories(koru_driver PUBLIC ${CMAKE_SOURCE_DIR}/src)
target_compile_options(koru_driver PRIVATE ${KORU_WARNINGS} ${KORU_KERNEL_OPTIONS} -fno-pie)
if(KORU_COVERAGE)
  target_compile_options(koru_driver PRIVATE -fdata-sections) # for driver_data.ld to tell the counters
elseif(NOT KORU_SANITIZE)
  target_compile_options(koru_driver PRIVATE -Wframe-larger-than=1024)
endif()

file(GLOB_RECURSE KORU_ENGINE_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/engine/*.cpp)
add_library(koru_engine STATIC ${KORU_ENGINE_SOURCES})
target_include_directories(koru_engine PUBLIC ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/src)
target_compile_options(koru_engine PRIVATE ${KORU_WARNINGS} -fno-pie)
target_link_options(koru_engine INTERFACE -Wl,-T,${CMAKE_SOURCE_DIR}/engine/loader/driver_data.ld)
target_link_libraries(koru_engine PUBLIC koru_driver)
target_link_libraries(koru_driver INTERFACE koru_engine) # its imports

file(GLOB KORU_CLIENT_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/client/*.cpp)
add_library(koru_client STATIC ${KORU_CLIENT_SOURCES})
target_include_directories(koru_client PUBLIC ${CMAKE_SOURCE_DIR})
target_compile_options(koru_client PRIVATE ${KORU_WARNINGS})

file(GLOB KORU_TOOL_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tools/*.cpp)
add_executable(koru ${KORU_TOOL_SOURCES})
target_link_libraries(koru PRIVATE koru_engine koru_client)
target_compile_options(koru PRIVATE ${KORU_WARNINGS})

include(cmake/tests.cmake)
include(cmake/windows_programs.cmake)

# Built on demand: `make bench`, `make fuzz`.
add_executable(koru_bench EXCLUDE_FROM_ALL bench/captured_call.cpp tools/machine.cpp)
target_link_libraries(koru_bench PRIVATE koru_engine koru_client)
target_compile_options(koru_bench PRIVATE ${KORU_WARNINGS})
if(EXISTS ${CMAKE_SOURCE_DIR}/cmake/fuzz.cmake)
  include(cmake/fuzz.cmake)
endif()
