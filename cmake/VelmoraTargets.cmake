# The project's targets share one set of compile rules; these functions apply them.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
# One folder for all programs, so that a Windows build finds its libraries beside each of them.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

find_program(VELMORA_CCACHE ccache)
if(VELMORA_CCACHE AND NOT MSVC)
    # ccache hashes a precompiled header by its content only when told that macros and times in it may be ignored.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        "CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}" ${VELMORA_CCACHE})
endif()

add_library(velmora_rules INTERFACE)
target_include_directories(velmora_rules INTERFACE "${CMAKE_SOURCE_DIR}/src")
target_compile_definitions(velmora_rules INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
    QT_NO_CONTEXTLESS_CONNECT QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_STRICT_ITERATORS QT_NO_FOREACH QT_NO_KEYWORDS
    QT_NO_JAVA_STYLE_ITERATORS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(MSVC)
    target_compile_options(velmora_rules INTERFACE /W4 /permissive- /Zc:__cplusplus /utf-8 /bigobj
        $<$<BOOL:${VELMORA_WERROR}>:/WX>)
else()
    target_compile_options(velmora_rules INTERFACE
        -Wall -Wextra -Wpedantic -Wold-style-cast -Woverloaded-virtual -Wnon-virtual-dtor
        $<$<BOOL:${VELMORA_WERROR}>:-Werror>
        $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
endif()
if(WIN32)
    target_compile_definitions(velmora_rules INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN
        _WIN32_WINNT=0x0A00)
    enable_language(RC)
endif()

# velmora_windows_resources(PROGRAM DESCRIPTION): gives a program its icon, version and manifest on Windows; nothing elsewhere.
function(velmora_windows_resources program description)
    if(NOT WIN32)
        return()
    endif()
    set(manifest "${CMAKE_SOURCE_DIR}/packaging/windows/program.manifest")
    set(manifest_line "1 24 \"${manifest}\"")
    if(MSVC) # whose linker makes a manifest anyway and merges this one into it
        set(manifest_line "")
        target_sources(${program} PRIVATE "${manifest}")
    endif()
    set(script "${CMAKE_CURRENT_BINARY_DIR}/${program}.rc")
    configure_file("${CMAKE_SOURCE_DIR}/packaging/windows/program.rc.in" "${script}" @ONLY)
    set_source_files_properties("${script}" PROPERTIES
        OBJECT_DEPENDS "${manifest};${CMAKE_SOURCE_DIR}/resources/icons/app.ico")
    target_sources(${program} PRIVATE "${script}")
endfunction()

# Makes the target that owns the precompiled header `header`; libraries and programs of the same kind reuse it.
function(velmora_precompiled_header name header)
    file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp.in" "")
    configure_file("${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp.in" "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp" COPYONLY)
    add_library(${name} OBJECT "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp")
    target_precompile_headers(${name} PRIVATE "${header}")
    target_link_libraries(${name} PRIVATE velmora_rules ${ARGN})
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
endfunction()

# velmora_library(NAME [WIDGETS] SOURCES … [LINKS …]): one folder of src/ as a static library.
# WIDGETS says that it may use Qt Widgets; without it the library sees Qt Core only.
function(velmora_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "WIDGETS" "" "SOURCES;LINKS")
    add_library(${name} STATIC ${arg_SOURCES})
    target_link_libraries(${name} PUBLIC velmora_rules ${arg_LINKS})
    if(arg_WIDGETS)
        target_link_libraries(${name} PUBLIC Qt6::Widgets)
        target_precompile_headers(${name} REUSE_FROM velmora_pch_widgets)
    else()
        target_link_libraries(${name} PUBLIC Qt6::Core)
        target_precompile_headers(${name} REUSE_FROM velmora_pch_core)
    endif()
endfunction()

# Seconds. Wine takes several times as long as the system itself for what tests of files do.
set(velmora_test_limit 300)
if(CMAKE_CROSSCOMPILING)
    set(velmora_test_limit 1500)
endif()

# velmora_test(NAME [WIDGETS] SOURCES … [LINKS …]): one test program, run by CTest without a display.
function(velmora_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "WIDGETS" "" "SOURCES;LINKS")
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LINKS} velmora_core Qt6::Test)
    target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests")
    if(arg_WIDGETS)
        target_link_libraries(${name} PRIVATE velmora_test_support_widgets)
        target_precompile_headers(${name} REUSE_FROM velmora_pch_widgets)
    else()
        target_link_libraries(${name} PRIVATE velmora_test_support)
        target_precompile_headers(${name} REUSE_FROM velmora_pch_core)
    endif()
    target_compile_definitions(${name} PRIVATE VELMORA_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen" TIMEOUT ${velmora_test_limit})
    if(VELMORA_TEST_USER)
        add_test(NAME ${name}_as_user
            COMMAND "${CMAKE_SOURCE_DIR}/scripts/as-user.sh" "${VELMORA_TEST_USER}" $<TARGET_FILE:${name}>)
        set_tests_properties(${name}_as_user PROPERTIES TIMEOUT ${velmora_test_limit} SKIP_RETURN_CODE 77)
    endif()
endfunction()

# velmora_static_libraries(LIBRARY RESULT): LIBRARY and every static library of the project that it links, directly or not.
function(velmora_static_libraries library result)
    set(found ${library})
    get_target_property(links ${library} LINK_LIBRARIES)
    foreach(link IN LISTS links)
        if(NOT link MATCHES "^velmora_" OR NOT TARGET ${link})
            continue()
        endif()
        get_target_property(type ${link} TYPE)
        if(type STREQUAL "STATIC_LIBRARY")
            velmora_static_libraries(${link} deeper)
            list(APPEND found ${deeper})
        endif()
    endforeach()
    list(REMOVE_DUPLICATES found)
    set(${result} ${found} PARENT_SCOPE)
endfunction()
