# The library that writes reports for programs: the system's, or its sources.
if(QRS_LIBRARY_SOURCES)
    add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED GLOBAL)
    target_include_directories(nlohmann_json::nlohmann_json SYSTEM INTERFACE ${QRS_LIBRARY_SOURCES}/include)
else()
    find_package(nlohmann_json REQUIRED)
endif()
