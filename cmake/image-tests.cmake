# Of koru.dll itself: that it is what a kernel loads, and that the checks of it can fail.
set(KORU_IMAGE_FOLDER ${CMAKE_SOURCE_DIR}/build/image)
add_test(NAME image COMMAND ${CMAKE_SOURCE_DIR}/scripts/check-image ${KORU_IMAGE_FOLDER})
add_test(NAME image_checks COMMAND python3 ${CMAKE_SOURCE_DIR}/tests/image/check_image_test.py
  ${CMAKE_SOURCE_DIR} ${KORU_IMAGE_FOLDER})
