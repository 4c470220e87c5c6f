# Compiler options every target of the project takes.
add_library(qrs_options INTERFACE)
if(MSVC)
    target_compile_options(qrs_options INTERFACE /utf-8 /EHsc /permissive-)
    target_compile_definitions(qrs_options INTERFACE NOMINMAX)
else()
    target_compile_options(qrs_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
                                                 -Wnon-virtual-dtor -Woverloaded-virtual)
endif()
if(QRS_WARNINGS_AS_ERRORS)
    target_compile_options(qrs_options INTERFACE -Werror)
endif()
if(QRS_SANITIZE)
    target_compile_options(qrs_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                 -fno-omit-frame-pointer)
    target_link_options(qrs_options INTERFACE -fsanitize=address,undefined)
endif()
# A plug-in must really leave the process when it is unloaded; unique symbols would pin it.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(qrs_options INTERFACE -fno-gnu-unique)
endif()
