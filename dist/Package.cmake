# "make package": a Debian package of everything "cmake --install" puts in place,
# under /usr. Its dependencies are read from the binaries; the desktop's menu,
# file types, icon and manual caches are refreshed by Debian's own triggers, so
# the package has no maintainer scripts.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vornosc)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CONTACT ${VORNOSC_MAINTAINER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "editor for OSC control-surface layouts")
set(CPACK_PACKAGE_DESCRIPTION [[
Musicians and installers design pages of labels, faders, knobs, toggles and
push buttons for a phone or tablet screen, give each control the OSC address
and the host's device and control numbers it stands for, try them in test
mode, keep them in .VornOsc files and export them for the TouchOSC and Lemur
touch apps.]])
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${VORNOSC_HOMEPAGE})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Qt finds its display plugins at run time, so the binaries do not name them.
set(CPACK_DEBIAN_PACKAGE_DEPENDS qt6-qpa-plugins)
# The canvas names these faces; others draw with other widths. Layout sync and
# OSC input are announced on the network through the Avahi daemon.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-liberation2, avahi-daemon")
# The manual page compressed and the binaries trimmed, as Debian keeps them.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/DebianFiles.cmake)
include(CPack)
