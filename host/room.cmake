# qrs_room(NAME SOURCES...): one room of the host as an object library with the host's include folders.
function(qrs_room name)
    add_library(${name} OBJECT ${ARGN})
    target_link_libraries(${name} PRIVATE qrs_options)
    target_compile_definitions(${name} PRIVATE QRS_HOST_BUILD)
    target_include_directories(${name} PUBLIC
        ${CMAKE_SOURCE_DIR}
        ${CMAKE_SOURCE_DIR}/host/mfc
        ${CMAKE_SOURCE_DIR}/host/objectarx
        ${CMAKE_SOURCE_DIR}/host/suite/kernel
        ${CMAKE_SOURCE_DIR}/host/suite/public
        ${CMAKE_SOURCE_DIR}/host/suite/pipewire)
endfunction()
