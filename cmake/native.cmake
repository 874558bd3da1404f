# Native build: the portable code, its tests, benchmarks and fuzz targets.
find_package(GTest REQUIRED)

file(GLOB_RECURSE QUILLET_TEST_SOURCES CONFIGURE_DEPENDS tests/*.cpp)
list(FILTER QUILLET_TEST_SOURCES EXCLUDE REGEX "/tests/win/")
add_executable(quillet_tests ${QUILLET_TEST_SOURCES})
target_include_directories(quillet_tests PRIVATE tests)
target_link_libraries(quillet_tests PRIVATE quillet_portable GTest::gtest_main)
target_compile_options(quillet_tests PRIVATE ${QUILLET_WARNINGS})
target_compile_definitions(quillet_tests PRIVATE QUILLET_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
include(GoogleTest)
gtest_discover_tests(quillet_tests DISCOVERY_TIMEOUT 60)

if(EXISTS ${CMAKE_SOURCE_DIR}/bench/CMakeLists.txt AND NOT QUILLET_FUZZ)
  add_subdirectory(bench)
endif()
if(QUILLET_FUZZ AND EXISTS ${CMAKE_SOURCE_DIR}/fuzz/CMakeLists.txt)
  add_subdirectory(fuzz)
endif()

# The art generator for the copy spinner; its output is committed under resources/.
add_executable(make_spinner tools/spinner/make_spinner.cpp)
target_link_libraries(make_spinner PRIVATE quillet_portable)
target_compile_options(make_spinner PRIVATE ${QUILLET_WARNINGS})

# The art generator for the side bar's pictures, icon and cursor; its output is committed under resources/.
add_executable(make_art tools/art/make_art.cpp tools/art/canvas.cpp tools/art/gif_file.cpp tools/art/ico_file.cpp
                        tools/art/panel.cpp tools/art/drive_icons.cpp tools/art/quick_icons.cpp
                        tools/art/card_marks.cpp tools/art/tray_icons.cpp tools/art/launch_art.cpp)
target_link_libraries(make_art PRIVATE quillet_portable)
target_compile_options(make_art PRIVATE ${QUILLET_WARNINGS})
