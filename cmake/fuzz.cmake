# One program for each tests/fuzz/fuzz_*.cpp, built on demand by the target `fuzzers`. Compiled with g++ it is
# given pseudo-random inputs (tests/fuzz/main.cpp says how), compiled with clang it is a libFuzzer.
set(FUZZ ${CMAKE_SOURCE_DIR}/tests/fuzz)
set(FUZZ_SEEDS_fuzz_metafile ${CMAKE_SOURCE_DIR}/samples)

add_library(koru_fuzz_support STATIC EXCLUDE_FROM_ALL
  ${FUZZ}/machine.cpp ${FUZZ}/objects.cpp ${FUZZ}/drawing.cpp ${FUZZ}/escapes.cpp ${FUZZ}/sequences.cpp)
target_link_libraries(koru_fuzz_support PUBLIC koru_engine koru_client)
target_compile_options(koru_fuzz_support PRIVATE ${KORU_WARNINGS})

if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  foreach(library koru_driver koru_engine koru_client koru_fuzz_support)
    target_compile_options(${library} PRIVATE -fsanitize=fuzzer-no-link -Wno-unknown-warning-option)
  endforeach()
endif()

add_custom_target(fuzzers)
file(GLOB FUZZERS CONFIGURE_DEPENDS ${FUZZ}/fuzz_*.cpp)
foreach(source ${FUZZERS})
  get_filename_component(name ${source} NAME_WE)
  add_executable(${name} EXCLUDE_FROM_ALL ${source})
  target_link_libraries(${name} PRIVATE koru_fuzz_support)
  target_compile_options(${name} PRIVATE ${KORU_WARNINGS})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer-no-link -Wno-unknown-warning-option)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  else()
    if(NOT DEFINED FUZZ_SEEDS_${name})
      set(FUZZ_SEEDS_${name} ${FUZZ}/seeds/${name})
    endif()
    target_link_options(${name} PRIVATE $<$<BOOL:${KORU_SANITIZE}>:-static-libasan -static-libubsan>) # faster
    target_sources(${name} PRIVATE ${FUZZ}/main.cpp ${FUZZ}/random_inputs.cpp)
    target_compile_definitions(${name} PRIVATE KORU_FUZZ_SEEDS="${FUZZ_SEEDS_${name}}")
  endif()
  add_dependencies(fuzzers ${name})
endforeach()
