# SPDX-License-Identifier: MIT
# What lies beside the program: the configuration set and the archiver. The codec and the plug-in come from their
# own folders.
set(GNSS_SET "${GNSS_BIN}/Source-Datas/config/1")
set(tree_files)
foreach(file GnssTree.xml GnssTree_en.xml)
    add_custom_command(OUTPUT "${GNSS_SET}/${file}"
        COMMAND ${CMAKE_COMMAND} -E copy "${CMAKE_CURRENT_SOURCE_DIR}/config/${file}" "${GNSS_SET}/${file}"
        DEPENDS "config/${file}"
        VERBATIM)
    list(APPEND tree_files "${GNSS_SET}/${file}")
endforeach()
add_custom_target(host_tree ALL DEPENDS ${tree_files})
add_dependencies(gnss_workbench_host host_tree)

# The compressor of full logs is the 7zr of the system under the name by which it is started.
file(MAKE_DIRECTORY "${GNSS_BIN}/Source-Datas/bin/config")
find_program(GNSS_7ZR 7zr)  # also used by the install rules
if(GNSS_7ZR)
    file(CREATE_LINK "${GNSS_7ZR}" "${GNSS_BIN}/Source-Datas/bin/7zr.exe" SYMBOLIC)
else()
    message(WARNING "7zr (package p7zip) is missing: full logs will stay uncompressed")
endif()
