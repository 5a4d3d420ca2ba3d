# Of koru.dll itself: that it is what a kernel loads, that the checks of it can fail, how it is mapped and called.
file(GLOB IMAGE_TESTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/image/*.cpp)
koru_test_program(image_tests SOURCES ${IMAGE_TESTS} ${ENGINE_MAIN} LIBRARIES koru_engine)
add_test(NAME image_tests COMMAND image_tests --gtest_brief=1 --image=${KORU_IMAGE_FILE})

set(KORU_IMAGE_FOLDER ${CMAKE_SOURCE_DIR}/build/image)
add_test(NAME image COMMAND ${CMAKE_SOURCE_DIR}/scripts/check-image ${KORU_IMAGE_FOLDER})
add_test(NAME image_checks COMMAND python3 ${CMAKE_SOURCE_DIR}/tests/image/check_image_test.py
  ${CMAKE_SOURCE_DIR} ${KORU_IMAGE_FOLDER})
