# What an installation consists of, and the Debian package that CPack makes of it.
include(GNUInstallDirs)

install(TARGETS velmora-cli)
install(TARGETS velmora-cli-mp3 DESTINATION "${CMAKE_INSTALL_LIBEXECDIR}/velmora")
if(VELMORA_GUI)
    install(TARGETS velmora)
    install(TARGETS velmora-cli-image DESTINATION "${CMAKE_INSTALL_LIBEXECDIR}/velmora")
endif()

if(WIN32 OR APPLE OR NOT VELMORA_GUI)
    return() # packaging/windows/package.sh adds on Windows what the programs need
endif()

install(FILES packaging/linux/velmora.desktop packaging/linux/velmora-workspace.desktop
    DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
# Where software centres look for the pictures of docs/images; whoever publishes the program names the true place.
set(VELMORA_HOMEPAGE "https://velmora.invalid" CACHE STRING "Home page, with the pictures below images/")
configure_file(packaging/linux/velmora.metainfo.xml.in invalid.velmora.velmora.metainfo.xml @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/invalid.velmora.velmora.metainfo.xml"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
install(FILES packaging/linux/velmora.xml DESTINATION "${CMAKE_INSTALL_DATADIR}/mime/packages")
install(FILES resources/icons/app.svg RENAME velmora.svg
    DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps")
install(FILES resources/icons/app.png RENAME velmora.png
    DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/256x256/apps")
install(FILES packaging/debian/copyright DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/velmora")

# velmora_install_compressed(FILE NAME FOLDER): installs FILE, compressed, as NAME.gz; the same bytes for the same input.
function(velmora_install_compressed file name folder)
    set(compressed "${CMAKE_CURRENT_BINARY_DIR}/${name}.gz")
    add_custom_command(OUTPUT "${compressed}"
        COMMAND gzip --best --no-name --stdout "${file}" > "${compressed}"
        DEPENDS "${file}"
        VERBATIM)
    add_custom_target(velmora_compressed_${name} ALL DEPENDS "${compressed}")
    install(FILES "${compressed}" DESTINATION "${folder}")
endfunction()

# velmora_self_description(PROGRAM SWITCH FILE): makes FILE in the build folder out of what PROGRAM says of itself.
function(velmora_self_description program switch file)
    add_custom_command(OUTPUT "${file}"
        COMMAND ${program} ${switch} > "${file}"
        DEPENDS ${program}
        VERBATIM)
endfunction()

# A program for another machine cannot be asked, unless something here runs it.
if(CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
    message(STATUS "The manual pages and completions are left out: the programs do not run here")
else()
    foreach(program velmora velmora-cli)
        set(page "${CMAKE_CURRENT_BINARY_DIR}/${program}.1")
        velmora_self_description(${program} --man "${page}")
        velmora_install_compressed("${page}" ${program}.1 "${CMAKE_INSTALL_MANDIR}/man1")
    endforeach()
    set(completion "${CMAKE_CURRENT_BINARY_DIR}/velmora-cli.bash")
    velmora_self_description(velmora-cli --bash-completion "${completion}")
    add_custom_target(velmora_completion ALL DEPENDS "${completion}")
    install(FILES "${completion}" RENAME velmora-cli
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
endif()
velmora_install_compressed("${CMAKE_SOURCE_DIR}/CHANGELOG.md" changelog "${CMAKE_INSTALL_DATADIR}/doc/velmora")
velmora_install_compressed("${CMAKE_SOURCE_DIR}/packaging/debian/changelog" changelog.Debian
    "${CMAKE_INSTALL_DATADIR}/doc/velmora")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME velmora)
set(CPACK_PACKAGE_VENDOR "The Velmora developers")
set(CPACK_PACKAGE_CONTACT "The Velmora developers <developers@velmora.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "compare files and folders side by side")
set(CPACK_PACKAGE_DESCRIPTION
    "Velmora compares texts line by line and folders with all that is in them,
shows the differences beside each other, and copies them over. It is one
window with a tab for each comparison.

velmora-cli does the same comparisons on the command line, for scripts and
servers.")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1) # the number in packaging/debian/changelog
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-image-formats-plugins, libarchive13 | libarchive13t64") # which no program links
# Wayland desktops show it through their X server; Qt brings a font with Latin letters along.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-wayland, fonts-wqy-microhei")
include(CPack)
