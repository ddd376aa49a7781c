# How every target of the house is built: warnings, sanitizers, exports, rooms found by folder.

set(OV_INSTALL_HEADERS ${CMAKE_INSTALL_INCLUDEDIR}/ov-FilterUtilities)

find_program(OV_CCACHE ccache)
if(OV_CCACHE)
    # What it must overlook, so that sources with precompiled headers are found in it.
    set(CMAKE_CXX_COMPILER_LAUNCHER env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        ${OV_CCACHE})
endif()

# A hundred programs of tests are linked in a quarter of the time.
find_program(OV_LLD ld.lld)
if(OV_LLD AND NOT WIN32)
    add_link_options(-fuse-ld=lld)
endif()

# Symbols are looked up once, at the start, and not again in the process of each job.
if(NOT WIN32)
    add_link_options(LINKER:-z,relro,-z,now)
endif()

add_library(ov-build-options INTERFACE)
include(CheckCXXSourceCompiles)
check_cxx_source_compiles("#include <source_location>
int main() { return static_cast<int>(std::source_location::current().line()) * 0; }" OV_HAS_SOURCE_LOCATION)
if(NOT OV_HAS_SOURCE_LOCATION)
    target_include_directories(ov-build-options SYSTEM BEFORE INTERFACE ${CMAKE_CURRENT_LIST_DIR}/compatibility)
endif()
# Clang counts changes of sign to -Wconversion, GCC does not in C++: both check the same here.
target_compile_options(ov-build-options INTERFACE
    -Wall -Wextra -Wconversion -Wno-sign-conversion -Werror)
# GCC 12 warns of overlapping copies and of overruns inside std::string where there are none, when it optimises. Clang
# and the sanitizers look at the same sources.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(ov-build-options INTERFACE -Wno-restrict
        $<$<NOT:$<CONFIG:Debug>>:-Wno-stringop-overflow -Wno-stringop-overread -Wno-array-bounds>)
endif()
if(OV_BUILD_FUZZERS)
    define_property(TARGET PROPERTY OV_IS_TEST INITIALIZE_FROM_VARIABLE OV_IS_TEST)
    target_compile_options(ov-build-options INTERFACE
        $<$<NOT:$<BOOL:$<TARGET_PROPERTY:OV_IS_TEST>>>:-fsanitize=fuzzer-no-link>)
endif()
if(OV_SANITIZE)
    target_compile_options(ov-build-options INTERFACE
        -fsanitize=${OV_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(ov-build-options INTERFACE -fsanitize=${OV_SANITIZE})
endif()

# ov_precompile(<target> [headers...]): the standard headers that most sources share, and those of the platform that
# are named, are parsed once for each floor. Not in the release build, where a source that does not include what it uses
# is to be noticed. ccache looks into what the preprocessor leaves of them, by these options.
option(OV_PRECOMPILE "Precompile the headers that most sources of a library share" OFF)
set(OV_PRECOMPILED_OPTIONS $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>
    "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
function(ov_precompile target)
    if(OV_PRECOMPILE)
        target_precompile_headers(${target} PRIVATE <algorithm> <functional> <map> <memory> <optional> <string>
            <string_view> <utility> <vector> ${ARGN})
        target_compile_options(${target} PRIVATE ${OV_PRECOMPILED_OPTIONS})
    endif()
endfunction()

# ov_sources(<variable>): all sources of the rooms below the current folder.
function(ov_sources variable)
    file(GLOB_RECURSE found CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    set(${variable} ${found} PARENT_SCOPE)
endfunction()

# ov_floor(<target> <export macro> [DESCRIPTION text] [PUBLIC libraries...] [PRIVATE libraries...]): a shared library
# out of the rooms below the current folder; on Windows of just that name, with a version resource.
function(ov_floor target export_macro)
    cmake_parse_arguments(floor "" "DESCRIPTION" "PUBLIC;PRIVATE" ${ARGN})
    ov_sources(sources)
    add_library(${target} SHARED ${sources})
    if(NOT WIN32)
        set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
    else()
        configure_file(${PROJECT_SOURCE_DIR}/cmake/Version.rc.in ${target}.rc @ONLY)
        target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
        set_target_properties(${target} PROPERTIES PREFIX "") # the import library keeps the toolchain's
    endif()
    target_compile_definitions(${target} PRIVATE ${export_macro}_BUILD)
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>)
    target_link_libraries(${target} PUBLIC ${floor_PUBLIC}
        PRIVATE $<BUILD_INTERFACE:ov-build-options> ${floor_PRIVATE})
    ov_precompile(${target} <atlcomcli.h> <msxml6.h> <windows.h>)
endfunction()

# ov_install(<targets>): the libraries, for find_package(ov-FilterUtilities).
function(ov_install)
    install(TARGETS ${ARGN} EXPORT ov-FilterUtilities
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)
endfunction()

# ov_compiler_runtime(<variable>): the DLLs of the compiler that programs for Windows need beside them.
function(ov_compiler_runtime variable)
    foreach(name libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
            OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE)
        if(NOT IS_ABSOLUTE ${file}) # the bare name comes back of what is not there
            message(FATAL_ERROR "${CMAKE_CXX_COMPILER} has no ${name}.")
        endif()
        list(APPEND files ${file})
    endforeach()
    set(${variable} ${files} PARENT_SCOPE)
endfunction()

# ov_install_rooms(<target>): the headers of a floor, each in its room.
function(ov_install_rooms target)
    target_include_directories(${target} PUBLIC $<INSTALL_INTERFACE:${OV_INSTALL_HEADERS}/${target}>)
    install(DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}/ DESTINATION ${OV_INSTALL_HEADERS}/${target} COMPONENT dev
        FILES_MATCHING PATTERN "*.h" PATTERN "*.inc")
endfunction()
