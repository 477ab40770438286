# Where things lie. The build tree has the layout of an installation: bin/veldrin, and share/veldrin with what a
# program directory is filled from at the first start. So a program run from the build tree behaves as an installed
# one, and keeps the user's photos in the user's pictures directory, where no cleaning of a build can reach them.
include(GNUInstallDirs)

set_target_properties(veldrin PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set_target_properties(veldrin_music PROPERTIES OUTPUT_NAME veldrin-music
  RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/libexec/veldrin)
add_dependencies(veldrin veldrin_music)

file(GLOB_RECURSE help_files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/help/*)
set(help_stamp ${PROJECT_BINARY_DIR}/help_pages.stamp)
add_custom_command(OUTPUT ${help_stamp}
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${PROJECT_BINARY_DIR}/share/veldrin/help
  COMMAND ${CMAKE_COMMAND} -E copy_directory ${PROJECT_SOURCE_DIR}/help ${PROJECT_BINARY_DIR}/share/veldrin/help
  COMMAND ${CMAKE_COMMAND} -E touch ${help_stamp}
  DEPENDS ${help_files} COMMENT "Copying the help pages" VERBATIM)
add_custom_target(help_pages ALL DEPENDS ${help_stamp})

install(TARGETS veldrin RUNTIME)
install(TARGETS veldrin_music RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/veldrin)
install(DIRECTORY ${READY_MADE_DIR} DESTINATION ${CMAKE_INSTALL_DATADIR}/veldrin)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/help DESTINATION ${CMAKE_INSTALL_DATADIR}/veldrin)
install(FILES packaging/veldrin.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES resources/veldrin.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME veldrin)
set(CPACK_PACKAGE_CONTACT "The Veldrin developers <veldrin@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Catalogue for photographs")
set(CPACK_PACKAGE_DESCRIPTION
  "Veldrin keeps photographs in a catalogue of folders and shows them as thumbnail pages, one by one and as a show.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
# The libraries are found by what the program links; these it loads by name.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6, qt6-image-formats-plugins, breeze-icon-theme, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland")
include(CPack)
