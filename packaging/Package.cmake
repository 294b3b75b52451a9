# What is installed, and the Debian packages made of it: a component is a package of the same name.
# The component "portable" is the folder of the archive; only scripts/package asks for it.
include(GNUInstallDirs)
set(CMAKE_SKIP_INSTALL_RPATH ON)

set(packages quillmere quillmere-world)
if(QUILLMERE_PAGE_VIEW)
  list(APPEND packages quillmere-pageview)
endif()
set(page_view_folder ${CMAKE_INSTALL_LIBDIR}/quillmere)

# The program finds its page view from where it stands itself, so that both can be moved together.
file(RELATIVE_PATH page_view_from_program ${CMAKE_INSTALL_FULL_BINDIR}
  ${CMAKE_INSTALL_FULL_LIBDIR}/quillmere)
set_source_files_properties(browser/frmBrowser.cpp PROPERTIES
  COMPILE_DEFINITIONS QUILLMERE_PAGE_VIEW_FOLDER="${page_view_from_program}")

foreach(program IN ITEMS quillmere quillmere-world)
  install(TARGETS ${program} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT ${program})
endforeach()
if(QUILLMERE_PAGE_VIEW)
  install(TARGETS quillmere-pageview DESTINATION ${page_view_folder} COMPONENT quillmere-pageview)
endif()
install(TARGETS ${packages} DESTINATION . COMPONENT portable EXCLUDE_FROM_ALL)
install(FILES packaging/README.txt LICENSE DESTINATION . COMPONENT portable EXCLUDE_FROM_ALL)
install(DIRECTORY DESTINATION Data COMPONENT portable EXCLUDE_FROM_ALL)

install(FILES packaging/quillmere.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications
  COMPONENT quillmere)
install(FILES packaging/localhost.quillmere.client.metainfo.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT quillmere)
foreach(size IN ITEMS 16 22 32 48 128 256)
  install(FILES packaging/icons/${size}.png RENAME quillmere.png
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps COMPONENT quillmere)
endforeach()
install(FILES packaging/quillmere.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT quillmere)

# Zipped without a name or a time in it.
function(install_zipped file name folder component)
  set(zipped ${CMAKE_BINARY_DIR}/zipped/${component}/${name}.gz)
  add_custom_command(OUTPUT ${zipped} COMMAND gzip -9nc ${file} > ${zipped} DEPENDS ${file})
  add_custom_target(${component}-${name}.gz ALL DEPENDS ${zipped})
  install(FILES ${zipped} DESTINATION ${folder} COMPONENT ${component})
endfunction()

file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/zipped/quillmere ${CMAKE_BINARY_DIR}/zipped/quillmere-world)
file(GLOB pages CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/docs/man/*.6) # named after the programs
foreach(page IN LISTS pages)
  cmake_path(GET page STEM program)
  install_zipped(${page} ${program}.6 ${CMAKE_INSTALL_MANDIR}/man6 ${program})
endforeach()
install_zipped(${CMAKE_SOURCE_DIR}/CHANGELOG.md changelog ${CMAKE_INSTALL_DATADIR}/doc/quillmere
  quillmere)
foreach(package IN LISTS packages)
  install(FILES LICENSE RENAME copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package}
    COMPONENT ${package})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "The Quillmere Mud Client authors <quillmere@localhost>" CACHE STRING
  "Maintainer of the packages")
set(CPACK_COMPONENTS_ALL ${packages})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
foreach(package IN LISTS packages)
  string(TOUPPER ${package} component)
  set(CPACK_DEBIAN_${component}_PACKAGE_NAME ${package})
endforeach()

set(CPACK_COMPONENT_QUILLMERE_DESCRIPTION "client for text-based multi-user dungeon games
It connects to a game, shows its text in colour, takes commands with a history
and plays the sounds that the game sends. Aliases, triggers and macros save
typing.")
set(CPACK_DEBIAN_QUILLMERE_PACKAGE_RECOMMENDS
  "quillmere-pageview, timgm6mb-soundfont | sf3-soundfont-gm, ca-certificates")
set(CPACK_DEBIAN_QUILLMERE_PACKAGE_SUGGESTS quillmere-world)

set(CPACK_COMPONENT_QUILLMERE-WORLD_DESCRIPTION "small game world for the Quillmere Mud Client
A town with creatures, things, hunger and fights, served on this machine to
try the client in. It has something for each thing the client can do.")
set(CPACK_DEBIAN_QUILLMERE-WORLD_PACKAGE_SUGGESTS quillmere)

set(CPACK_COMPONENT_QUILLMERE-PAGEVIEW_DESCRIPTION "web pages inside the Quillmere Mud Client
The page view of the client's browser window. Without it the client opens its
web site in the system's browser.")
set(CPACK_DEBIAN_QUILLMERE-PAGEVIEW_PACKAGE_DEPENDS "quillmere (= ${PROJECT_VERSION})")
include(CPack)
