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

find_program(GNSS_CCACHE ccache)
if(GNSS_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${GNSS_CCACHE}")
endif()

# gnss_room(NAME [QT] [LINKS target...] [WITHOUT file...])
#
# A room is a folder and the static library gnss_NAME of all sources in it. What it links is what it may include.
# Headers are included by the room's name: "protocol/Records.h", "views/log/NMEAViewWin.h". Rooms with QT lie in
# plugin/ and have moc and uic; their classes are hidden but for the plug-in's own.
function(gnss_room name)
    cmake_parse_arguments(R "QT" "" "LINKS;WITHOUT" ${ARGN})
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
    else()
        # Unique symbols would keep a library that is loaded at run time from being unloaded.
        target_compile_options(gnss_${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
    endif()
    set_property(GLOBAL APPEND PROPERTY GNSS_ROOMS "${name}|${CMAKE_CURRENT_SOURCE_DIR}")
endfunction()

# gnss_add_test(NAME SOURCES ... LIBS ... [NEEDS target...] [ENV name=value...] [TIMEOUT seconds] [NO_CODEC]
#               [DECODER])
#
# A test program with a folder of its own (so with its own Source-Datas/bin) and an empty current directory
# of its own. The open codec is put into that Source-Datas/bin unless NO_CODEC is given, and with DECODER the
# open seed decoder too.
function(gnss_add_test name)
    cmake_parse_arguments(T "NO_CODEC;DECODER" "TIMEOUT" "SOURCES;LIBS;NEEDS;ENV" ${ARGN})
    set(folder "${CMAKE_BINARY_DIR}/tests/${name}")
    add_executable(${name} ${T_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ON RUNTIME_OUTPUT_DIRECTORY "${folder}/app")
    find_package(Qt5 REQUIRED COMPONENTS Test)
    target_link_libraries(${name} PRIVATE ${T_LIBS} Qt5::Test)
    target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}" "${CMAKE_SOURCE_DIR}/tests")
    target_compile_definitions(${name} PRIVATE
        GNSS_CAPTURES="${GNSS_CAPTURES}"
        GNSS_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
        GNSS_BUILD_BIN="${GNSS_BIN}")
    file(MAKE_DIRECTORY "${folder}/cwd")
    if(NOT T_NO_CODEC)
        list(APPEND T_NEEDS GnssUtils)
        add_custom_command(TARGET ${name} POST_BUILD
            COMMAND ${CMAKE_COMMAND} -E make_directory "${folder}/app/Source-Datas/bin"
            COMMAND ${CMAKE_COMMAND} -E create_symlink "$<TARGET_FILE:GnssUtils>"
                    "${folder}/app/Source-Datas/bin/GnssUtils.dll"
            VERBATIM)
    endif()
    if(T_DECODER)
        list(APPEND T_NEEDS pgnss_decoder)
        add_custom_command(TARGET ${name} POST_BUILD
            COMMAND ${CMAKE_COMMAND} -E make_directory "${folder}/app/Source-Datas/bin"
            COMMAND ${CMAKE_COMMAND} -E create_symlink "$<TARGET_FILE:pgnss_decoder>"
                    "${folder}/app/Source-Datas/bin/libpgnss_decoder.dll"
            VERBATIM)
    endif()
    if(T_NEEDS)
        add_dependencies(${name} ${T_NEEDS})
    endif()
    add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY "${folder}/cwd")
    if(NOT T_TIMEOUT)
        set(T_TIMEOUT 120)
    endif()
    set_tests_properties(${name} PROPERTIES TIMEOUT ${T_TIMEOUT}
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;XDG_CONFIG_HOME=${folder}/config;ASAN_OPTIONS=detect_leaks=0:abort_on_error=0;${T_ENV}")
endfunction()
