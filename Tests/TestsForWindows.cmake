# The tests that are built for Windows, and run under Wine against the DLLs.

# The framework, whose sources Debian has: it builds it for its own compiler only.
set(framework /usr/src/googletest)
add_library(ov-test-framework STATIC ${framework}/googletest/src/gtest-all.cc ${framework}/googlemock/src/gmock-all.cc
    ${framework}/googlemock/src/gmock_main.cc)
target_include_directories(ov-test-framework SYSTEM PUBLIC ${framework}/googletest/include ${framework}/googlemock/include
    PRIVATE ${framework}/googletest ${framework}/googlemock)

# What cannot be built or would say nothing there: a pattern of the folder or of what a source includes, and why.
set(OV_LEFT_OUT
    "^/(PipelineHost|Samples)/" "tests what is not built for Windows"
    "^/Platform/([^CIL]|Com/[^C]|Imaging/[^G]|Locale/[^D])"
        "tests what stands for Windows' own elsewhere: pointers serve both, and dates, times and what a picture says are compared"
    "[<\"]Support/FailureSweep\\.h" "sweeps over the platform's calls, and no call of Windows' own can be let fail"
    "[<\"](Spooler/|Support/FilterJob\\.h)" "asks a queue folder, which stands for the spooler elsewhere"
    "[<\"]FilterUtilities/PrintSchema/(Ticket|Capabilities)Support\\.h"
        "loads tickets, and the DOM of Wine leaves the declarations of namespaces out when it lists attributes"
    "[<\"](libxml/|dlfcn\\.h)" "uses libraries of other systems"
    "[<\"]Fonts/" "looks into fonts by what stands for Windows' own elsewhere"
    "[<\"]Support/AllocationCount\\.h" "counts what is allocated, and a program cannot replace operator new for a DLL"
    "GrowthTest\\.cpp$" "measures algorithms that are the same on every system"
    "[<\"]Xml/DocumentBound\\.h" "goes to the bounds of the DOM that stands for Windows' own elsewhere")

# ov_leave_out_for_windows(<variable>): keeps of a room's sources those that are built for Windows.
function(ov_leave_out_for_windows variable)
    set(found ${${variable}})
    set(${variable} "")
    foreach(source IN LISTS found)
        string(REPLACE ${CMAKE_CURRENT_SOURCE_DIR} "" name ${source})
        file(STRINGS ${source} includes REGEX "^#include ")
        set(left ${OV_LEFT_OUT})
        set(kept TRUE)
        while(left AND kept)
            list(POP_FRONT left pattern reason)
            if("${name}" MATCHES "${pattern}" OR "${includes}" MATCHES "${pattern}")
                message(VERBOSE "Left out: ${name} ${reason}")
                set(kept FALSE)
            endif()
        endwhile()
        if(kept)
            list(APPEND ${variable} ${source})
        endif()
    endforeach()
    set(${variable} ${${variable}} PARENT_SCOPE)
endfunction()

# ov_build_test_for_windows(<target>): how it is compiled.
function(ov_build_test_for_windows test)
    target_compile_options(${test} PRIVATE -O0) # what is tested are the DLLs, and those are optimised
    target_link_libraries(${test} PRIVATE ov-build-options ov-FilterUtilities ov-test-framework)
endfunction()

# ov_test_for_windows(<target>): one test of CTest for the whole program, since Wine is slow to start one.
function(ov_test_for_windows test)
    target_include_directories(${test} BEFORE PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/Support/Windows)
    ov_build_test_for_windows(${test})
    add_test(NAME ${test} COMMAND ${CMAKE_SOURCE_DIR}/scripts/run-windows $<TARGET_FILE:${test}>)
    set_tests_properties(${test} PROPERTIES TIMEOUT 300)
endfunction()
