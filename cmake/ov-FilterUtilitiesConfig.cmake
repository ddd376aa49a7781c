# find_package(ov-FilterUtilities): targets ov::FilterUtilities and ov::Utilities.
include(CMakeFindDependencyMacro)
if(NOT WIN32)
    find_dependency(Threads)
endif()
include(${CMAKE_CURRENT_LIST_DIR}/ov-FilterUtilitiesTargets.cmake)
