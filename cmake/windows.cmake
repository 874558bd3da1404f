# Windows build (MinGW-w64): the program and its Wine tests. Everything links
# statically so that Quillet.exe runs without the compiler's DLLs.
enable_language(RC)

set(QUILLET_WIN32_DEFINITIONS UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601 WINVER=0x0601)
set(QUILLET_STATIC_LINK -static -static-libgcc -static-libstdc++)

file(GLOB QUILLET_WIN32_SOURCES CONFIGURE_DEPENDS src/ui/win32/*.cpp src/platform/win32/*.cpp)
add_library(quillet_win32 STATIC ${QUILLET_WIN32_SOURCES})
target_link_libraries(quillet_win32 PUBLIC quillet_portable user32 gdi32 msimg32 advapi32 kernel32)
target_compile_definitions(quillet_win32 PUBLIC ${QUILLET_WIN32_DEFINITIONS})
target_compile_options(quillet_win32 PRIVATE ${QUILLET_WARNINGS})

add_executable(Quillet WIN32 src/app/main.cpp resources/Quillet.rc)
set_target_properties(Quillet PROPERTIES OUTPUT_NAME Quillet)
target_link_libraries(Quillet PRIVATE quillet_win32)
target_compile_options(Quillet PRIVATE ${QUILLET_WARNINGS})
target_link_options(Quillet PRIVATE ${QUILLET_STATIC_LINK})
# The manifest and icon are read by windres; rebuild when they change.
file(GLOB QUILLET_ART CONFIGURE_DEPENDS resources/art/*.gif)
set_source_files_properties(resources/Quillet.rc PROPERTIES
  OBJECT_DEPENDS "${CMAKE_SOURCE_DIR}/resources/Quillet.manifest;${CMAKE_SOURCE_DIR}/resources/Quillet.ico;${CMAKE_SOURCE_DIR}/resources/hand.cur;${CMAKE_SOURCE_DIR}/resources/spinner.gif;${CMAKE_SOURCE_DIR}/resources/art.rc;${QUILLET_ART}")

# GoogleTest from Debian's source package, built with this toolchain.
set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
set(gtest_disable_pthreads ON CACHE BOOL "" FORCE)
set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)

file(GLOB QUILLET_WIN_TEST_SOURCES CONFIGURE_DEPENDS tests/win/*.cpp)
add_executable(quillet_win_tests ${QUILLET_WIN_TEST_SOURCES})
target_include_directories(quillet_win_tests PRIVATE tests)
target_link_libraries(quillet_win_tests PRIVATE quillet_win32 GTest::gtest_main)
target_compile_options(quillet_win_tests PRIVATE ${QUILLET_WARNINGS})
target_link_options(quillet_win_tests PRIVATE ${QUILLET_STATIC_LINK})

# ---------------------------------------------------------------------------
# Helper programs of the Wine benchmarks (bench/wine). The scripts build their
# own copies; these targets keep the sources building under the warnings.
add_executable(ping_window bench/wine/ping_window.c)
target_link_libraries(ping_window PRIVATE winmm)
add_executable(bare_window WIN32 bench/wine/bare_window.c)
foreach(helper ping_window bare_window)
  target_compile_options(${helper} PRIVATE ${QUILLET_WARNINGS})
  target_link_options(${helper} PRIVATE ${QUILLET_STATIC_LINK})
endforeach()

# The frame-change benchmark of the GIF player in the Win32 host (bench/wine/frame_bench.sh).
add_executable(frame_bench_win bench/wine/frame_bench_win.cpp)
target_link_libraries(frame_bench_win PRIVATE quillet_win32)
target_compile_options(frame_bench_win PRIVATE ${QUILLET_WARNINGS})
target_link_options(frame_bench_win PRIVATE ${QUILLET_STATIC_LINK})
