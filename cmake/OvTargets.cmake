# How every target of the house is built: warnings, sanitizers, exports, rooms found by folder.

find_program(OV_CCACHE ccache)
if(OV_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${OV_CCACHE})
endif()

add_library(ov-build-options INTERFACE)
# Clang counts changes of sign to -Wconversion, GCC does not in C++: both check the same here.
target_compile_options(ov-build-options INTERFACE
    -Wall -Wextra -Wconversion -Wno-sign-conversion -Werror)
if(OV_BUILD_FUZZERS)
    target_compile_options(ov-build-options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(OV_SANITIZE)
    target_compile_options(ov-build-options INTERFACE
        -fsanitize=${OV_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(ov-build-options INTERFACE -fsanitize=${OV_SANITIZE})
endif()

# ov_sources(<variable>): all sources of the rooms below the current folder.
function(ov_sources variable)
    file(GLOB_RECURSE found CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    set(${variable} ${found} PARENT_SCOPE)
endfunction()

# ov_floor(<target> <export macro> [LINK libraries...]): a shared library out of the rooms below the current folder.
function(ov_floor target export_macro)
    cmake_parse_arguments(floor "" "" "PUBLIC;PRIVATE" ${ARGN})
    ov_sources(sources)
    if(NOT sources)
        file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/empty.cpp "")
        set(sources ${CMAKE_CURRENT_BINARY_DIR}/empty.cpp)
    endif()
    add_library(${target} SHARED ${sources})
    target_compile_definitions(${target} PRIVATE ${export_macro}_BUILD)
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>)
    target_link_libraries(${target} PUBLIC ${floor_PUBLIC}
        PRIVATE $<BUILD_INTERFACE:ov-build-options> ${floor_PRIVATE})
endfunction()
