# Cross-compiler for 64-bit Windows (Debian's g++-mingw-w64-x86-64-posix).
set(QRS_MINGW_PROCESSOR x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
