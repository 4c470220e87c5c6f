# Cross-compiler for 32-bit Windows (Debian's g++-mingw-w64-i686-posix).
set(QRS_MINGW_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
