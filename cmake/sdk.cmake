# QRS_SDK: the module against the editor's own SDK and framework, in place of host/objectarx and host/mfc. The platform
# room goes along as a library of its own; the suite's libraries are those of QRS_SUITE_LIBRARIES. Nothing else of the
# host, and no console, is built.
include(CheckIncludeFileCXX)

foreach(header acdb.h accmd.h aced.h acdocman.h dbmain.h dbsymtb.h rxmfcapi.h rxregsvc.h)
    if(NOT EXISTS ${QRS_SDK}/inc/${header})
        message(FATAL_ERROR "QRS_SDK=${QRS_SDK}: there is no inc/${header}. Give the folder of the editor's SDK, in which inc and lib-... lie.")
    endif()
endforeach()
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(sdk_system win32)
else()
    set(sdk_system x64)
endif()
set(sdk_include ${QRS_SDK}/inc ${QRS_SDK}/inc-${sdk_system})
set(CMAKE_MFC_FLAG 2)

set(CMAKE_REQUIRED_INCLUDES ${sdk_include} ${CMAKE_SOURCE_DIR})
check_include_file_cxx(afxwin.h QRS_HAS_FRAMEWORK)
if(NOT QRS_HAS_FRAMEWORK)
    unset(QRS_HAS_FRAMEWORK CACHE)
    message(FATAL_ERROR "QRS_SDK=${QRS_SDK}: this compiler finds no afxwin.h. The module needs the framework that comes with the editor's own compiler.")
endif()

file(GLOB sdk_libraries ${QRS_SDK}/lib-${sdk_system}/*.lib)
set(QRS_SUITE_LIBRARIES "" CACHE STRING "The suite's libraries: qrs_kernal, qrs_public, qrs_pipewire")

include(host/room.cmake)
add_subdirectory(host/platform)
# Bears the host's name, as what the module links to.
add_library(qrs_host SHARED)
target_link_libraries(qrs_host PRIVATE qrs_options qrs_platform PUBLIC ${QRS_SUITE_LIBRARIES} ${sdk_libraries})
set_target_properties(qrs_host PROPERTIES OUTPUT_NAME qrs_platform LINKER_LANGUAGE CXX)
target_include_directories(qrs_host PUBLIC ${CMAKE_SOURCE_DIR})
target_include_directories(qrs_host SYSTEM PUBLIC ${sdk_include})
foreach(folder kernel public pipewire)
    target_include_directories(qrs_host PUBLIC ${CMAKE_SOURCE_DIR}/host/suite/${folder})
endforeach()

add_subdirectory(module)
set_target_properties(qrs_pipeSystem PROPERTIES SUFFIX .arx)
target_compile_definitions(qrs_pipeSystem_objects PUBLIC UNICODE _UNICODE _AFXEXT)
if(MSVC)
    # The SDK's headers expect the framework's before them.
    target_compile_options(qrs_pipeSystem_objects PRIVATE /FIafxwin.h /FIafxdllx.h)
    # Comes with the SDK's rxapi.lib.
    target_link_options(qrs_pipeSystem PRIVATE /EXPORT:acrxGetApiVersion,PRIVATE)
endif()
if(NOT QRS_SUITE_LIBRARIES)
    message(STATUS "QRS_SUITE_LIBRARIES is empty: the module is compiled, and not linked")
    set_target_properties(qrs_pipeSystem PROPERTIES EXCLUDE_FROM_ALL ON)
endif()
