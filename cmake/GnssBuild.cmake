# SPDX-License-Identifier: MIT
# Compiler settings and the two helpers that keep the folders' lists short.

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual
    -Wformat=2 -Wundef -fno-omit-frame-pointer)
if(GNSS_WERROR)
    add_compile_options(-Werror)
endif()
add_compile_definitions(QT_NO_FOREACH QT_NO_URL_CAST_FROM_STRING QT_DEPRECATED_WARNINGS
    QT_DISABLE_DEPRECATED_BEFORE=0x050F00)

if(GNSS_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -O1 -g)
    add_link_options(-fsanitize=address,undefined)
endif()
if(GNSS_COVERAGE)
    add_compile_options(--coverage -O0 -g)
    add_link_options(--coverage)
endif()

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

# Qt's headers are most of what a window costs to compile. The sanitizer build and the checks go without, so that a
# missing include is found.
option(GNSS_PRECOMPILE "Precompile Qt's headers (GCC only)" ON)
if(GNSS_PRECOMPILE AND NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(GNSS_PRECOMPILE OFF)
endif()

find_program(GNSS_CCACHE ccache)
if(GNSS_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${GNSS_CCACHE}")
    if(GNSS_PRECOMPILE)
        # It keeps results that used a precompiled header only when it may overlook these.
        set(CMAKE_CXX_COMPILER_LAUNCHER env CCACHE_SLOPPINESS=pch_defines,time_macros "${GNSS_CCACHE}")
    endif()
endif()

# gnss_precompiled(TARGET): lets a target with Qt's widgets use the one precompiled header.
function(gnss_precompiled target)
    if(NOT GNSS_PRECOMPILE)
        return()
    endif()
    if(NOT TARGET gnss_precompiled)
        file(WRITE "${CMAKE_BINARY_DIR}/precompiled/Empty.cpp" "")
        add_library(gnss_precompiled STATIC "${CMAKE_BINARY_DIR}/precompiled/Empty.cpp")
        set_target_properties(gnss_precompiled PROPERTIES
            ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/precompiled"
            CXX_VISIBILITY_PRESET hidden
            VISIBILITY_INLINES_HIDDEN ON)
        target_compile_options(gnss_precompiled PRIVATE -fpch-preprocess)
        target_link_libraries(gnss_precompiled PRIVATE Qt5::Widgets)
        target_precompile_headers(gnss_precompiled PRIVATE
            <QDateTime> <QDebug> <QFile> <QLayout> <QMap> <QPainter> <QPointer> <QPushButton> <QString> <QStringList>
            <QTimer> <QVector> <QWidget> <algorithm> <functional> <memory>)
    endif()
    target_compile_options(${target} PRIVATE -fpch-preprocess)
    target_precompile_headers(${target} REUSE_FROM gnss_precompiled)
endfunction()

# gnss_room(NAME [QT] [LINKS target...] [WITHOUT file...])
#
# A room is a folder and the static library gnss_NAME of all sources in it. What it links is what it may include.
# Headers are included by the room's name: "protocol/Records.h", "views/log/NMEAViewWin.h". Rooms with QT lie in
# plugin/ and have moc and uic; their classes are hidden but for the plug-in's own. Rooms without Qt, and the programs
# that their folders make after the room, say every conversion that may change a value; Qt's int sizes and the
# templates in its headers leave no such use of the warnings with Qt.
function(gnss_room name)
    cmake_parse_arguments(R "QT" "" "LINKS;WITHOUT" ${ARGN})
    if(NOT R_QT)
        add_compile_options("$<$<CXX_COMPILER_ID:GNU>:-Wconversion;-Wsign-conversion>")
    endif()
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS "*.cpp" "*.h" "*.ui")
    foreach(other IN LISTS R_WITHOUT)
        list(FILTER sources EXCLUDE REGEX "/${other}$")
    endforeach()
    add_library(gnss_${name} STATIC ${sources})
    set_target_properties(gnss_${name} PROPERTIES
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    target_include_directories(gnss_${name} PUBLIC "${CMAKE_SOURCE_DIR}")
    target_link_libraries(gnss_${name} PUBLIC ${R_LINKS})
    if(R_QT)
        set_target_properties(gnss_${name} PROPERTIES AUTOMOC ON AUTOUIC ON)
        target_include_directories(gnss_${name} PUBLIC "${CMAKE_SOURCE_DIR}/plugin")
        gnss_precompiled(gnss_${name})
    else()
        # Unique symbols would keep a library that is loaded at run time from being unloaded.
        target_compile_options(gnss_${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
    endif()
endfunction()

# gnss_test(TOPIC [LINKS target...] [NEEDS target...] [DEFINES name=value...] [ENV name=value...] [TIMEOUT seconds]
#           [CODEC] [DECODER] [FAKE_CODEC])
#
# The test program tst_ROOM_TOPIC out of tst_TOPIC.cpp, labelled with its room, which is its folder's name. It links
# the room's library unless LINKS says otherwise. It runs in a folder of its own (so with its own Source-Datas/bin)
# and in an empty current directory of its own. CODEC puts the open codec into that Source-Datas/bin, DECODER the
# open seed decoder; FAKE_CODEC tells where the fake codecs are.
function(gnss_test topic)
    cmake_parse_arguments(T "CODEC;DECODER;FAKE_CODEC" "TIMEOUT" "LINKS;NEEDS;DEFINES;ENV" ${ARGN})
    get_filename_component(room "${CMAKE_CURRENT_SOURCE_DIR}" NAME)
    set(name tst_${room}_${topic})
    set(folder "${CMAKE_BINARY_DIR}/tests/${name}")
    if(NOT T_LINKS)
        set(T_LINKS gnss_${room})
    endif()
    find_package(Qt5 REQUIRED COMPONENTS Test)
    add_executable(${name} tst_${topic}.cpp)
    set_target_properties(${name} PROPERTIES AUTOMOC ON RUNTIME_OUTPUT_DIRECTORY "${folder}/app")
    target_link_libraries(${name} PRIVATE ${T_LINKS} Qt5::Test)
    target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}" "${CMAKE_SOURCE_DIR}/tests/support")
    target_compile_definitions(${name} PRIVATE
        GNSS_CAPTURES="${GNSS_CAPTURES}"
        GNSS_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
        GNSS_BUILD_BIN="${GNSS_BIN}"
        ${T_DEFINES})
    file(MAKE_DIRECTORY "${folder}/cwd")
    if(T_FAKE_CODEC)
        add_dependencies(${name} ${FAKE_CODECS})
        target_compile_definitions(${name} PRIVATE FAKE_CODEC_DIR="${FAKE_CODEC_DIR}")
    endif()
    if(T_CODEC)
        gnss_put_library(${name} GnssUtils "${folder}/app/Source-Datas/bin" GnssUtils.dll)
    endif()
    if(T_DECODER)
        gnss_put_library(${name} pgnss_decoder "${folder}/app/Source-Datas/bin" libpgnss_decoder.dll)
    endif()
    if(T_NEEDS)
        add_dependencies(${name} ${T_NEEDS})
    endif()
    gnss_run_test(${name} ${name} "${T_TIMEOUT}" "${T_ENV}")
endfunction()

# gnss_test_again(TOPIC NAME [ENV name=value...]): runs a test program once more, in another environment.
function(gnss_test_again topic again)
    cmake_parse_arguments(T "" "TIMEOUT" "ENV" ${ARGN})
    get_filename_component(room "${CMAKE_CURRENT_SOURCE_DIR}" NAME)
    gnss_run_test(tst_${room}_${topic} tst_${room}_${topic}_${again} "${T_TIMEOUT}" "${T_ENV}")
endfunction()

function(gnss_run_test target name timeout environment)
    get_filename_component(room "${CMAKE_CURRENT_SOURCE_DIR}" NAME)
    set(folder "${CMAKE_BINARY_DIR}/tests/${target}")
    if(NOT timeout)
        set(timeout 120)
    endif()
    add_test(NAME ${name} COMMAND ${target} WORKING_DIRECTORY "${folder}/cwd")
    set_tests_properties(${name} PROPERTIES TIMEOUT ${timeout} LABELS ${room} ENVIRONMENT
        "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;XDG_CONFIG_HOME=${folder}/config;ASAN_OPTIONS=detect_leaks=0:abort_on_error=0;${environment}")
endfunction()

# Puts a library that is loaded at run time where a test program looks for it.
function(gnss_put_library program library folder name)
    add_dependencies(${program} ${library})
    add_custom_command(TARGET ${program} POST_BUILD
        COMMAND ${CMAKE_COMMAND} -E make_directory "${folder}"
        COMMAND ${CMAKE_COMMAND} -E create_symlink "$<TARGET_FILE:${library}>" "${folder}/${name}"
        VERBATIM)
endfunction()
