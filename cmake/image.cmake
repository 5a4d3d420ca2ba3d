# koru.dll: imports from win32k.sys alone, exports DrvEnableDriver alone. scripts/check-image holds it to that.
enable_language(RC)
set(KORU_PACKAGING ${CMAKE_SOURCE_DIR}/packaging)

set(KORU_IMAGE_COMPILE_OPTIONS
  ${KORU_WARNINGS} ${KORU_KERNEL_OPTIONS} -Wframe-larger-than=1024 -Os -march=pentium
  -fno-builtin-memcpy -mno-stack-arg-probe)
set(KORU_IMAGE_LINK_OPTIONS
  -nostdlib -nostartfiles -Wl,-T,${KORU_PACKAGING}/koru.ld
  -Wl,--subsystem,native:5.0
  -Wl,--major-os-version,5 -Wl,--minor-os-version,0
  -Wl,--image-base,0x10000 -Wl,--section-alignment,0x1000 -Wl,--file-alignment,0x200
  -Wl,--dynamicbase -Wl,--no-insert-timestamp -Wl,--exclude-all-symbols -Wl,--kill-at)

add_library(koru_objects OBJECT ${KORU_DRIVER_SOURCES})
target_include_directories(koru_objects PRIVATE ${CMAKE_SOURCE_DIR}/src)
# The symbols do not tell where the image was built. A compiler cache would write the sources' paths in its own way.
target_compile_options(koru_objects PRIVATE ${KORU_IMAGE_COMPILE_OPTIONS} -g -ffile-prefix-map=${CMAKE_SOURCE_DIR}=.)
set_target_properties(koru_objects PROPERTIES CXX_COMPILER_LAUNCHER "")

# Links koru.dll in a folder, puts koru.map and, stripped off into a file of its own, the symbols koru.dbg beside it.
function(koru_link name folder)
  add_library(${name} SHARED $<TARGET_OBJECTS:koru_objects> ${KORU_PACKAGING}/koru.def ${KORU_PACKAGING}/koru.rc)
  set_target_properties(${name} PROPERTIES
    PREFIX "" OUTPUT_NAME koru SUFFIX .dll LINK_DEPENDS ${KORU_PACKAGING}/koru.ld VERSION 5.0
    RUNTIME_OUTPUT_DIRECTORY ${folder} ARCHIVE_OUTPUT_DIRECTORY ${folder})
  target_link_options(${name} PRIVATE
    ${KORU_IMAGE_LINK_OPTIONS} -Wl,--entry,_DrvEnableDriver@12 -Wl,-Map,${folder}/koru.map)
  target_link_libraries(${name} PRIVATE win32k gcc)
  add_custom_command(TARGET ${name} POST_BUILD
    COMMAND ${CMAKE_OBJCOPY} --only-keep-debug --preserve-dates ${folder}/koru.dll ${folder}/koru.dbg
    COMMAND ${CMAKE_OBJCOPY} --strip-all --preserve-dates ${folder}/koru.dll # dates: that in the header, too
    BYPRODUCTS ${folder}/koru.dbg ${folder}/koru.map)
endfunction()

koru_link(koru ${CMAKE_BINARY_DIR})
koru_link(koru_relinked ${CMAKE_BINARY_DIR}/relinked) # must come out the same, byte for byte

# The toolchain's own declarations of the interface against the table of offsets.
enable_testing()
add_library(koru_layout_check OBJECT ${CMAKE_SOURCE_DIR}/tests/layout/toolchain_layout.cpp)
target_include_directories(koru_layout_check PRIVATE
  ${CMAKE_SOURCE_DIR}/tests/layout ${CMAKE_SOURCE_DIR}/tests/layout/shim)
target_compile_options(koru_layout_check PRIVATE -Wall -Wextra -Werror)
include(cmake/links.cmake)
include(cmake/windows_programs.cmake)
