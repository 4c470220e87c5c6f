# Tests of the editor half, with the plug-ins they load.
foreach(plugin ed_plugin ed_noentry)
    add_library(${plugin} MODULE ${plugin}.cpp)
    target_link_libraries(${plugin} PRIVATE qrs_options qrs_host)
    set_target_properties(${plugin} PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
endforeach()
qrs_test(objectarx_editor_test
    SOURCES ed_commands_test.cpp ed_documents_test.cpp ed_pick_kinds_test.cpp
        ed_pick_test.cpp ed_prompts_test.cpp ed_selection_test.cpp
    LIBRARIES qrs_host)
target_compile_definitions(objectarx_editor_test PRIVATE
    QRS_TEST_PLUGIN="$<TARGET_FILE:ed_plugin>" QRS_TEST_NOENTRY="$<TARGET_FILE:ed_noentry>")
add_dependencies(objectarx_editor_test ed_plugin ed_noentry)
