# Where things are installed. Debian puts games into folders of their own.

include(GNUInstallDirs)

option(ZANTO_DEBIAN "Install as Debian's rules ask: into the folders of games, and with Debian's own typeface" OFF)
if(ZANTO_DEBIAN)
  set(programs_folder games)
  set(data_folder "${CMAKE_INSTALL_DATADIR}/games/zanto")
else()
  set(programs_folder "${CMAKE_INSTALL_BINDIR}")
  set(data_folder "${CMAKE_INSTALL_DATADIR}/zanto")
endif()
set(game_folder "${CMAKE_INSTALL_LIBEXECDIR}/zanto")
if(WIN32)
  set(programs_folder .)
  set(data_folder data)
  set(game_folder game)
endif()

# The programs find everything from where they are, so an installation can be moved as a whole.
foreach(folder IN ITEMS programs game data)
  cmake_path(ABSOLUTE_PATH ${folder}_folder BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}"
    OUTPUT_VARIABLE full_${folder}_folder)
endforeach()
file(RELATIVE_PATH programs_to_game "${full_programs_folder}" "${full_game_folder}/zanto")
file(RELATIVE_PATH programs_to_data "${full_programs_folder}" "${full_data_folder}")
