# One set of compiler settings for every target of ours.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE RelWithDebInfo)
endif()
# Lines and names for stack traces; the types would double the time that compiling takes.
string(REGEX REPLACE "-g( |$)" "-g1 " CMAKE_CXX_FLAGS_RELWITHDEBINFO "${CMAKE_CXX_FLAGS_RELWITHDEBINFO}")

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # Paths are taken relative to the source folder, so that clones and work trees share what one of them has compiled.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE})
endif()

add_library(commondlg3_settings INTERFACE)
target_compile_options(commondlg3_settings INTERFACE
    -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wunused
    $<$<BOOL:${COMMONDLG3_WERROR}>:-Werror>)
# The oldest desktop that is reached: what is newer there warns, and ends a build that takes warnings for errors.
target_compile_definitions(commondlg3_settings INTERFACE
    GLIB_VERSION_MIN_REQUIRED=GLIB_VERSION_2_50 GLIB_VERSION_MAX_ALLOWED=GLIB_VERSION_2_50
    GDK_VERSION_MIN_REQUIRED=GDK_VERSION_3_22 GDK_VERSION_MAX_ALLOWED=GDK_VERSION_3_22)
if(COMMONDLG3_SANITIZE)
    target_compile_options(commondlg3_settings INTERFACE
        -fsanitize=${COMMONDLG3_SANITIZE} -fno-omit-frame-pointer -g1 -O1)
    target_link_options(commondlg3_settings INTERFACE -fsanitize=${COMMONDLG3_SANITIZE})
    if(COMMONDLG3_SANITIZE MATCHES "undefined")
        target_compile_options(commondlg3_settings INTERFACE -fno-sanitize-recover=undefined)
        # The toolkit's libraries carry no type information for their classes: casts to them cannot be checked.
        target_compile_options(commondlg3_settings INTERFACE -fno-sanitize=vptr)
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # The sanitizers' instrumentation makes this compiler see overflows in third-party inline code.
        target_compile_options(commondlg3_settings INTERFACE -Wno-maybe-uninitialized -Wno-stringop-overflow)
    endif()
else()
    # A fault that gets through ends the program where it is, and not somewhere else. Costs less than the benchmarks see.
    target_compile_options(commondlg3_settings INTERFACE
        -D_GLIBCXX_ASSERTIONS -fstack-protector-strong -fstack-clash-protection
        $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
    target_link_options(commondlg3_settings INTERFACE -Wl,-z,relro,-z,now)
endif()

# Tests are read by their assertions, not by a debugger as a rule, and run no loop that is worth optimizing.
function(commondlg3_set_test_optimization target)
    if(NOT COMMONDLG3_SANITIZE)
        target_compile_options(${target} PRIVATE -O0 -g1 -U_FORTIFY_SOURCE)
    endif()
endfunction()
