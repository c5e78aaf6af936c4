# Everything that targets share: flags, the precompiled header, one helper for each kind of target.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
include(GNUInstallDirs)
set(POBBLEWIG_MODULE_DIRECTORY ${CMAKE_INSTALL_LIBEXECDIR}/pobblewig/modules)
file(RELATIVE_PATH POBBLEWIG_MODULES_FROM_PROGRAM
    ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_PREFIX}/${POBBLEWIG_MODULE_DIRECTORY})
file(RELATIVE_PATH POBBLEWIG_MEMES_FROM_PROGRAM
    ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_DATADIR}/pobblewig/memes)
# Executables and libraries must be compiled alike to share one precompiled header.
set(CMAKE_CXX_COMPILE_OPTIONS_PIE -fPIC)

find_program(POBBLEWIG_CCACHE ccache)
if(POBBLEWIG_CCACHE)
    set(sloppiness pch_defines,time_macros,include_file_mtime,include_file_ctime)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=${sloppiness} ${POBBLEWIG_CCACHE})
endif()

add_custom_target(pobblewig_modules)

add_library(pobblewig_flags INTERFACE)
target_compile_options(pobblewig_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Werror)
target_compile_definitions(pobblewig_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)
target_include_directories(pobblewig_flags INTERFACE
    ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/PobblewigCore)
target_link_libraries(pobblewig_flags INTERFACE Qt6::Core QCoro6::Core tl::expected)
target_link_options(pobblewig_flags INTERFACE -Wl,--gc-sections)
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    target_compile_options(pobblewig_flags INTERFACE -fpch-preprocess)
    target_link_options(pobblewig_flags INTERFACE -fuse-ld=lld)
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Release")
    # Each library and page that a program does without is time until its first frame.
    target_compile_options(pobblewig_flags INTERFACE -ffunction-sections -fdata-sections)
    target_link_options(pobblewig_flags INTERFACE -Wl,--as-needed -Wl,-O2 -Wl,--icf=safe)
endif()
if(POBBLEWIG_SANITIZERS)
    target_compile_options(pobblewig_flags INTERFACE
        -fsanitize=${POBBLEWIG_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer -O1
        -fsanitize-ignorelist=${PROJECT_SOURCE_DIR}/cmake/sanitizers-ignore.txt)
    target_link_options(pobblewig_flags INTERFACE -fsanitize=${POBBLEWIG_SANITIZERS})
endif()
if(POBBLEWIG_FUZZING)
    target_compile_options(pobblewig_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/precompiled.cpp
    CONTENT "// Compiled for the sake of the header that is compiled with it.\n")
add_library(pobblewig_precompiled STATIC ${PROJECT_BINARY_DIR}/precompiled.cpp)
set_target_properties(pobblewig_precompiled PROPERTIES AUTOMOC OFF)
target_link_libraries(pobblewig_precompiled PUBLIC pobblewig_flags)
target_precompile_headers(pobblewig_precompiled PRIVATE
    <QCoroTask> <QDir> <QJsonArray> <QJsonDocument> <QJsonObject> <QObject> <QString> <QUuid>
    <chrono> <functional> <map> <memory> <optional> <string> <tl/expected.hpp> <variant> <vector>)

function(pobblewig_prepare target)
    target_link_libraries(${target} PUBLIC pobblewig_flags)
    target_precompile_headers(${target} REUSE_FROM pobblewig_precompiled)
endfunction()

# A folder of the house: a static library with the alias pobblewig::<name>.
function(pobblewig_add_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
    add_library(pobblewig_${name} STATIC ${arg_SOURCES})
    add_library(pobblewig::${name} ALIAS pobblewig_${name})
    pobblewig_prepare(pobblewig_${name})
    target_link_libraries(pobblewig_${name} PUBLIC ${arg_LINKS})
endfunction()

# What the program loads by ModuleLoader when it is first asked for. A DOUBLE is for tests alone.
function(pobblewig_add_module name)
    cmake_parse_arguments(arg "DOUBLE" "" "SOURCES;LINKS" ${ARGN})
    add_library(pobblewig_module_${name} MODULE ${arg_SOURCES})
    pobblewig_prepare(pobblewig_module_${name})
    target_link_libraries(pobblewig_module_${name} PRIVATE ${arg_LINKS})
    # It keeps what it shares with the program to itself.
    target_link_options(pobblewig_module_${name} PRIVATE -Wl,--exclude-libs,ALL)
    set_target_properties(pobblewig_module_${name} PROPERTIES
        PREFIX "" OUTPUT_NAME ${name} DEFINE_SYMBOL ""
        LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/modules)
    if(arg_DOUBLE)
        set_property(TARGET pobblewig_module_${name} PROPERTY
            LIBRARY_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/modules)
    else()
        add_dependencies(pobblewig_modules pobblewig_module_${name})
        install(TARGETS pobblewig_module_${name} DESTINATION ${POBBLEWIG_MODULE_DIRECTORY})
    endif()
endfunction()

function(pobblewig_add_executable name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    pobblewig_prepare(${name})
    target_link_libraries(${name} PRIVATE ${arg_LINKS})
endfunction()

# A QtTest program of one file. ON_SCREEN tests need an X server, one at a time; all others run
# offscreen.
function(pobblewig_add_test name)
    cmake_parse_arguments(arg "ON_SCREEN" "" "LINKS" ${ARGN})
    pobblewig_add_executable(${name} SOURCES ${name}.cpp LINKS Qt6::Test ${arg_LINKS})
    add_test(NAME ${name} COMMAND ${name})
    pobblewig_prepare_test(${name} 120)
    if(arg_ON_SCREEN)
        set_property(TEST ${name} PROPERTY RESOURCE_LOCK screen)
    else()
        set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT QT_QPA_PLATFORM=offscreen)
    endif()
endfunction()

# A libFuzzer program of one file, with seeds in fuzz/corpus/<name>.
function(pobblewig_add_fuzzer name)
    cmake_parse_arguments(arg "" "" "LINKS" ${ARGN})
    pobblewig_add_executable(${name} SOURCES ${name}.cpp LINKS ${arg_LINKS})
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    add_dependencies(fuzzers ${name})
endfunction()

function(pobblewig_prepare_test name seconds)
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${seconds}
        ENVIRONMENT "ASAN_OPTIONS=abort_on_error=0;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/leaks.supp:print_suppressions=0;UBSAN_OPTIONS=print_stacktrace=1;TSAN_OPTIONS=ignore_noninstrumented_modules=1")
endfunction()
