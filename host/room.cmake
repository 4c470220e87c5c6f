# The folders of the headers that bear the names of the editor, of the framework and of the suite.
set(QRS_INTERFACE_FOLDERS
    ${CMAKE_SOURCE_DIR}/host/mfc
    ${CMAKE_SOURCE_DIR}/host/objectarx
    ${CMAKE_SOURCE_DIR}/host/suite/kernel
    ${CMAKE_SOURCE_DIR}/host/suite/public
    ${CMAKE_SOURCE_DIR}/host/suite/pipewire)

# qrs_room(NAME SOURCES...): one room of the host as an object library. It finds headers by their path from the root;
# rooms that speak the editor's language add QRS_INTERFACE_FOLDERS.
function(qrs_room name)
    add_library(${name} OBJECT ${ARGN})
    target_link_libraries(${name} PRIVATE qrs_options)
    # Whoever links a room itself, as tests do, does not take it from the host library.
    target_compile_definitions(${name} PUBLIC QRS_HOST_BUILD)
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
endfunction()
