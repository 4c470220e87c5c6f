# cmake --install: the program, the module, the host, their headers, the system folder, and a package for
#     find_package(qrs_pipeSystem CONFIG)   ->   qrs::pipeSystem, qrs::host
include(CMakePackageConfigHelpers)

set(plugin_folder lib/qrs_pipeSystem)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/qrs_pipeSystem)
set(header_folder ${CMAKE_INSTALL_INCLUDEDIR}/qrs_pipeSystem)

if(UNIX)
    file(RELATIVE_PATH host_from_plugin /${plugin_folder} /${CMAKE_INSTALL_LIBDIR})
    file(RELATIVE_PATH host_from_program /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
    set_target_properties(qrs_pipeSystem PROPERTIES INSTALL_RPATH "$ORIGIN/${host_from_plugin}")
    set_target_properties(qrs_audit PROPERTIES INSTALL_RPATH "$ORIGIN/${host_from_plugin};$ORIGIN")
    if(TARGET qrsconsole)
        set_target_properties(qrsconsole PROPERTIES INSTALL_RPATH "$ORIGIN/${host_from_program}")
    endif()
endif()

install(TARGETS qrs_host EXPORT qrs_pipeSystemTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS qrs_pipeSystem EXPORT qrs_pipeSystemTargets
    LIBRARY DESTINATION ${plugin_folder}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${plugin_folder})
install(TARGETS qrs_audit
    LIBRARY DESTINATION ${plugin_folder}
    RUNTIME DESTINATION ${plugin_folder})
if(TARGET qrs_pictures)
    install(TARGETS qrs_pictures LIBRARY DESTINATION ${plugin_folder})
endif()
if(TARGET qrsconsole)
    install(TARGETS qrsconsole RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

# The headers that plug-ins and programs may use, as host/faces.txt lists them; the workings below them stay home.
file(STRINGS ${CMAKE_SOURCE_DIR}/host/faces.txt faces REGEX "^[^#].* (plugins|programs)$")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/host/faces.txt)
foreach(face ${faces})
    string(REGEX REPLACE " .*" "" pattern ${face})
    file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${pattern})
    get_filename_component(folder ${pattern} DIRECTORY)
    if(folder STREQUAL "module/include")
        set(folder "")
    endif()
    install(FILES ${headers} DESTINATION ${header_folder}/${folder})
endforeach()

# The pages, which the headers refer to, and the examples, which the pages refer to.
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN "*.md" PATTERN "*.png" PATTERN man EXCLUDE)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} USE_SOURCE_PERMISSIONS
    PATTERN source EXCLUDE PATTERN __pycache__ EXCLUDE PATTERN ".*" EXCLUDE)
if(UNIX AND TARGET qrsconsole)
    install(FILES docs/man/qrsconsole.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    install(FILES docs/man/zh_CN/qrsconsole.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/zh_CN/man1)
    install(FILES console/qrsconsole.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME qrsconsole)
endif()

install(EXPORT qrs_pipeSystemTargets NAMESPACE qrs:: DESTINATION ${package_folder})
configure_package_config_file(cmake/qrs_pipeSystemConfig.cmake.in ${CMAKE_BINARY_DIR}/qrs_pipeSystemConfig.cmake
    INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/qrs_pipeSystemConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/qrs_pipeSystemConfig.cmake ${CMAKE_BINARY_DIR}/qrs_pipeSystemConfigVersion.cmake
    DESTINATION ${package_folder})
