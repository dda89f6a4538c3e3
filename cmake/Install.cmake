# SPDX-License-Identifier: MIT
# The installed tree is the build tree's bin folder: everything lies beside the program.
#   cmake --install build/release --prefix DIR
install(TARGETS gnss_workbench_host RUNTIME DESTINATION .)
install(TARGETS HostSupport LIBRARY DESTINATION . RUNTIME DESTINATION .)
install(TARGETS Gnss gnss-receiver gnss-log assist-service pgnss-seed LIBRARY DESTINATION . RUNTIME DESTINATION .)
install(TARGETS GnssUtils pgnss_decoder
    LIBRARY DESTINATION Source-Datas/bin RUNTIME DESTINATION Source-Datas/bin)
install(FILES host/config/GnssTree.xml host/config/GnssTree_en.xml DESTINATION Source-Datas/config/1)
install(DIRECTORY "${GNSS_BIN}/translations" DESTINATION . FILES_MATCHING PATTERN "*.qm")
install(CODE "file(MAKE_DIRECTORY \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/Source-Datas/bin/config\")")
install(FILES docs/gnss-log.1 DESTINATION share/man/man1)
install(FILES packaging/completion/gnss-log.bash DESTINATION share/bash-completion/completions RENAME gnss-log)
install(FILES packaging/completion/_gnss-log DESTINATION share/zsh/site-functions)
install(FILES packaging/completion/gnss-log.fish DESTINATION share/fish/vendor_completions.d)
if(GNSS_7ZR)
    install(CODE "file(CREATE_LINK \"${GNSS_7ZR}\"
        \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/Source-Datas/bin/7zr.exe\" SYMBOLIC)")
endif()
