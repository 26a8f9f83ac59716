# The Debian package: cmake --preset package && cmake --build --preset package --target package

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zanto)
set(CPACK_PACKAGE_VENDOR "The Zanto developers")
set(CPACK_PACKAGE_CONTACT "The Zanto developers <zanto@zanto.example>" CACHE STRING "Who answers for the package")
set(CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${ZANTO_HOMEPAGE}")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS ttf-bitstream-vera)
# OpenGL is brought by Mesa's drivers, desktop sound by ALSA's plugins.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libasound2-plugins, libgl1-mesa-dri, pipewire-alsa | pulseaudio")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "music game that listens to what you play")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Pick a song, watch its notes scroll past on a staff, and play them on
whatever you have: recorder, piano, guitar, voice. Zanto listens to the
microphone, hears which notes sound, scores what you play while you play it,
and shows you the spectrum of your own sound.

Twenty traditional songs come with it, and companions that check songs,
render them as sound, grade recordings of them, import sheet music, draw
songs for paper, and test a microphone.")

zanto_compressed(debian/changelog "${documents}" changelog.Debian)
install(FILES debian/lintian-overrides DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides" RENAME zanto)
include(CPack)
