# The small kernel images beside koru.dll, built as it is, and the tests that map them.
set(LINKS ${CMAKE_SOURCE_DIR}/packaging)

if(NOT KORU_IMAGE)
  file(GLOB LINKS_TESTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/links/*.cpp)
  koru_test_program(links_tests SOURCES ${LINKS_TESTS} ${LINKS}/korutap/ring.cpp
    ${CMAKE_SOURCE_DIR}/tests/conformance/session.cpp ${ENGINE_MAIN} LIBRARIES koru_engine koru_client)
  add_test(NAME links_tests COMMAND links_tests --gtest_brief=1 --image=${KORU_IMAGE_FILE})
  return()
endif()

function(koru_kernel_image name suffix entry)
  target_sources(${name} PRIVATE ${CMAKE_SOURCE_DIR}/src/platform/runtime.cpp)
  set_target_properties(${name} PROPERTIES PREFIX "" SUFFIX ${suffix})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/src)
  target_compile_options(${name} PRIVATE ${KORU_IMAGE_COMPILE_OPTIONS})
  target_link_options(${name} PRIVATE ${KORU_IMAGE_LINK_OPTIONS} -Wl,--entry,${entry})
  target_link_libraries(${name} PRIVATE ${ARGN})
endfunction()

add_library(dcmkrnl SHARED ${LINKS}/dcmkrnl/dcmkrnl.cpp ${LINKS}/name_file.cpp ${LINKS}/dcmkrnl/dcmkrnl.def)
koru_kernel_image(dcmkrnl .dll _DrvEnableDriver@12 win32k gcc)

add_library(korulink SHARED ${LINKS}/korulink/korulink.cpp ${LINKS}/name_file.cpp ${LINKS}/korulink/korulink.def)
koru_kernel_image(korulink .dll _DrvEnableDriver@12 win32k gcc)

add_executable(korutap ${LINKS}/korutap/korutap.cpp ${LINKS}/korutap/ring.cpp)
koru_kernel_image(korutap .sys _DriverEntry@8 ntoskrnl hal gcc)
target_include_directories(korutap SYSTEM PRIVATE /usr/share/mingw-w64/include/ddk)

# The toolchain's own declarations of the kernel's structures against the table of offsets.
add_library(korutap_layout_check OBJECT ${CMAKE_SOURCE_DIR}/tests/links/layout/toolchain_kernel_layout.cpp)
target_include_directories(korutap_layout_check PRIVATE ${CMAKE_SOURCE_DIR})
target_include_directories(korutap_layout_check SYSTEM PRIVATE /usr/share/mingw-w64/include/ddk)
target_compile_options(korutap_layout_check PRIVATE -Wall -Wextra -Werror)
