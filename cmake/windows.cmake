# The compiler's own libraries beside the programs: what was built runs on a Windows without the compiler.
foreach(name libstdc++-6.dll libgcc_s_seh-1.dll libgcc_s_dw2-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name} OUTPUT_VARIABLE library
        OUTPUT_STRIP_TRAILING_WHITESPACE)
    # An unknown name is given back as it is; of the two libgcc each processor has one.
    if(IS_ABSOLUTE "${library}")
        file(REAL_PATH ${library} library)
        file(COPY ${library} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
        list(APPEND runtime_libraries ${library})
    endif()
endforeach()
install(FILES ${runtime_libraries} DESTINATION ${CMAKE_INSTALL_BINDIR})

# A batch file that shows the main job, with what it runs on.
install(FILES scripts/demo.bat DESTINATION .)
install(FILES examples/building.dxf examples/scripts/show-everything.scr DESTINATION examples)
