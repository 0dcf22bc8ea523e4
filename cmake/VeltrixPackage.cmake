# SPDX-License-Identifier: GPL-3.0-or-later
# The Debian package: what it has beside an installation (icons as pictures, changelog, copyright, a compressed manual),
# and what `cpack` is told. scripts/package makes it from a tree with VELTRIX_PACKAGE on.
set(VELTRIX_PACKAGE_MAINTAINER "The Veltrix maintainers <support@veltrix.example>"
    CACHE STRING "Maintainer of the Debian package")
set(VELTRIX_PACKAGE_HOMEPAGE "https://veltrix.example/" CACHE STRING "Homepage of the Debian package")

find_program(VELTRIX_RSVG_CONVERT rsvg-convert REQUIRED)
find_program(VELTRIX_GZIP gzip REQUIRED)

set(veltrix_package_files "")

# A picture in each usual size, for desktops that do not draw SVG. The small ones have a drawing of their own.
foreach(size IN ITEMS 16 24 32 48 64 128 256 512)
    set(drawing ${CMAKE_SOURCE_DIR}/resources/icons/veltrix.svg)
    if(size LESS 48)
        set(drawing ${CMAKE_SOURCE_DIR}/resources/icons/veltrix-small.svg)
    endif()
    set(picture ${CMAKE_BINARY_DIR}/icons/${size}/veltrix.png)
    file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/icons/${size})
    add_custom_command(OUTPUT ${picture} DEPENDS ${drawing} VERBATIM
        COMMAND ${VELTRIX_RSVG_CONVERT} --width ${size} --height ${size} --output ${picture} ${drawing})
    list(APPEND veltrix_package_files ${picture})
    install(FILES ${picture}
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
endforeach()

# veltrix_install_compressed(<file> <name> <folder>): without a name or a time inside, so that equal files stay equal.
function(veltrix_install_compressed file name folder)
    set(compressed ${CMAKE_BINARY_DIR}/compressed/${name}.gz)
    file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/compressed)
    add_custom_command(OUTPUT ${compressed} DEPENDS ${file} VERBATIM
        COMMAND sh -c "exec \"$1\" -9nc \"$2\" >\"$3\"" sh ${VELTRIX_GZIP} ${file} ${compressed})
    set(veltrix_package_files ${veltrix_package_files} ${compressed} PARENT_SCOPE)
    install(FILES ${compressed} DESTINATION ${folder})
endfunction()
veltrix_install_compressed(${CMAKE_SOURCE_DIR}/docs/veltrix.1 veltrix.1 ${CMAKE_INSTALL_MANDIR}/man1)
veltrix_install_compressed(${CMAKE_SOURCE_DIR}/packaging/changelog changelog ${CMAKE_INSTALL_DATADIR}/doc/veltrix)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/veltrix)

# Whoever installs the package needs the program, its files and nothing that tests or shows it.
add_custom_target(veltrix-package-files ALL DEPENDS ${veltrix_package_files})
add_dependencies(veltrix-package-files veltrix)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME veltrix)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR Veltrix)
set(CPACK_PACKAGE_CONTACT "${VELTRIX_PACKAGE_MAINTAINER}")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/package)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
# Building before installing is what scripts/package does, by target: the sample services are none of the package.
set(CPACK_CMAKE_GENERATOR Ninja)
set(CPACK_INSTALL_CMAKE_PROJECTS "${CMAKE_BINARY_DIR};veltrix;ALL;/")
set(CPACK_CMAKE_BUILD_CONFIG "")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${VELTRIX_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${VELTRIX_PACKAGE_HOMEPAGE}")
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "follow where apps rank in the App Store")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Veltrix is for people who publish apps: it measures once a day where an app
stands in the App Store's search results, keyword by keyword and country by
country, and keeps the history on the user's machine. It estimates how much
a keyword is searched for, how strong its competition is, and whether it is
worth an effort.
.
It has a window, and commands that work without one.")

# What the program links is found by its symbols; with Qt's own libraries come the plugins for SVG, TLS and X11.
# By symbols nobody sees:
# - the authorities that every HTTPS connection is checked against: nothing works without them;
# - Wayland without X11, the typeface that the window is drawn for, what opens pages and packages, the bus that
#   notifications and the colour scheme come by: the program does without.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS ca-certificates)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "qt6-wayland, fonts-inter, xdg-utils, default-dbus-session-bus | dbus-session-bus")
include(CPack)
