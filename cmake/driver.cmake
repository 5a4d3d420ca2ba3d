# The driver's sources and how they are compiled, the same in every form.
file(GLOB_RECURSE KORU_DRIVER_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/*.cpp)

set(KORU_TEST_WARNINGS -Wall -Wextra -Werror)
set(KORU_WARNINGS ${KORU_TEST_WARNINGS} -Wshadow=local)
set(KORU_KERNEL_OPTIONS
  -ffreestanding -fno-exceptions -fno-rtti -fno-threadsafe-statics -mgeneral-regs-only
  -fno-stack-protector -fno-asynchronous-unwind-tables)
