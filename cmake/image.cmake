# koru.dll: imports from win32k.sys alone, exports DrvEnableDriver alone.
add_library(koru SHARED ${KORU_DRIVER_SOURCES} ${CMAKE_SOURCE_DIR}/packaging/koru.def)
set_target_properties(koru PROPERTIES PREFIX "" SUFFIX ".dll")
target_include_directories(koru PRIVATE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(koru PRIVATE
  ${KORU_WARNINGS} ${KORU_KERNEL_OPTIONS} -Wframe-larger-than=1024 -Os -march=pentium
  -fno-builtin-memcpy -mno-stack-arg-probe)
set(KORU_LINK_OPTIONS
  -nostdlib -nostartfiles
  -Wl,--entry,_DrvEnableDriver@12
  -Wl,--subsystem,native:5.0
  -Wl,--major-os-version,5 -Wl,--minor-os-version,0
  -Wl,--major-image-version,5 -Wl,--minor-image-version,0
  -Wl,--image-base,0x10000 -Wl,--section-alignment,0x1000 -Wl,--file-alignment,0x200
  -Wl,--dynamicbase -Wl,--no-insert-timestamp -Wl,--exclude-all-symbols -Wl,--kill-at
  -Wl,-Map,${CMAKE_BINARY_DIR}/koru.map)
target_link_options(koru PRIVATE ${KORU_LINK_OPTIONS})
target_link_libraries(koru PRIVATE win32k gcc)

# The toolchain's own declarations of the interface against the table of offsets.
enable_testing()
add_library(koru_layout_check OBJECT ${CMAKE_SOURCE_DIR}/tests/layout/toolchain_layout.cpp)
target_include_directories(koru_layout_check PRIVATE
  ${CMAKE_SOURCE_DIR}/tests/layout ${CMAKE_SOURCE_DIR}/tests/layout/shim)
target_compile_options(koru_layout_check PRIVATE -Wall -Wextra -Werror)
include(cmake/links.cmake)
