# Install layout, desktop integration and the Debian package (cpack -G DEB).
#
# The program goes to <prefix>/games and its data to <prefix>/share/games/vantorix, where it
# looks for them below NORVANE_FS_ROOT; the shared highscores live in
# NORVANE_FS_ROOT/var/games/vantorix, made by the package's postinst or by the "state"
# install component.

# The program finds its data only in /usr/share/games, whatever the prefix.
if(CMAKE_INSTALL_PREFIX_INITIALIZED_TO_DEFAULT)
  set(CMAKE_INSTALL_PREFIX /usr CACHE PATH "Install prefix" FORCE)
elseif(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  message(WARNING "The game reads its data from ${NORVANE_FS_ROOT}/usr/share/games/vantorix; "
                  "installed below ${CMAKE_INSTALL_PREFIX} it will not find it.")
endif()

set(VANTORIX_APP_ID "org.vantorix.Vantorix" CACHE STRING "AppStream id and desktop file name")
set(VANTORIX_HOMEPAGE "https://vantorix.example.org/" CACHE STRING
    "Home page; the AppStream screenshots are below it")
set(VANTORIX_MAINTAINER "The Vantorix developers <vantorix@example.org>" CACHE STRING
    "Maintainer of the Debian package")
set(VANTORIX_RELEASE_DATE "2026-11-23")
set(VANTORIX_RELEASE_DATE_RFC2822 "Mon, 23 Nov 2026 12:00:00 +0000")

set(VANTORIX_GAMES_DIR games)
set(VANTORIX_DATA_DIR share/games/vantorix)
set(VANTORIX_DOC_DIR share/doc/vantorix)
set(VANTORIX_STATE_DIR "${NORVANE_FS_ROOT}/var/games/vantorix")
set(VANTORIX_ICON_SIZES 16 32 48 64 128 256 512)

# Debian's hardening for optimised builds: what dpkg-buildflags adds, but for -Wdate-time, as the
# version text carries the build date on purpose.
set(optimised "$<CONFIG:Release,RelWithDebInfo>")
foreach(target norvane vantorix_core vantorix)
  if(TARGET ${target})
    target_compile_options(${target} PRIVATE
      "$<${optimised}:-fstack-protector-strong;-Wformat;-Werror=format-security>")
    target_compile_definitions(${target} PRIVATE "$<${optimised}:_FORTIFY_SOURCE=2>")
  endif()
endforeach()
if(TARGET vantorix)
  target_link_options(vantorix PRIVATE "$<${optimised}:LINKER:-z,relro,-z,now>")
endif()

set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(generated ${PROJECT_BINARY_DIR}/packaging)

if(TARGET vantorix)
  install(TARGETS vantorix DESTINATION ${VANTORIX_GAMES_DIR} COMPONENT game)
endif()
install(DIRECTORY data/ DESTINATION ${VANTORIX_DATA_DIR} COMPONENT game)

install(FILES ${packaging}/vantorix.desktop DESTINATION share/applications
        RENAME ${VANTORIX_APP_ID}.desktop COMPONENT game)
foreach(size ${VANTORIX_ICON_SIZES})
  install(FILES ${packaging}/icons/vantorix-${size}.png
          DESTINATION share/icons/hicolor/${size}x${size}/apps RENAME vantorix.png COMPONENT game)
endforeach()
configure_file(${packaging}/vantorix.metainfo.xml.in
               ${generated}/${VANTORIX_APP_ID}.metainfo.xml @ONLY)
install(FILES ${generated}/${VANTORIX_APP_ID}.metainfo.xml DESTINATION share/metainfo
        COMPONENT game)

# Debian wants the manual page and the changelog compressed without a time stamp.
configure_file(${packaging}/changelog.in ${generated}/changelog @ONLY)
find_program(GZIP gzip REQUIRED)
foreach(file vantorix.6 changelog)
  if(file STREQUAL changelog)
    set(source ${generated}/changelog)
  else()
    set(source ${packaging}/${file})
  endif()
  add_custom_command(OUTPUT ${generated}/${file}.gz
                     COMMAND ${GZIP} -9nc ${source} > ${generated}/${file}.gz
                     DEPENDS ${source} VERBATIM)
  list(APPEND compressed ${generated}/${file}.gz)
endforeach()
add_custom_target(vantorix_docs ALL DEPENDS ${compressed})
install(FILES ${generated}/vantorix.6.gz DESTINATION share/man/man6 COMPONENT game)
install(FILES ${generated}/changelog.gz ${packaging}/copyright README.md
        DESTINATION ${VANTORIX_DOC_DIR} COMPONENT game)

# A plain `cmake --install` by root also makes the program setgid games and the shared state
# directory; the package leaves both to its postinst.
install(CODE "
  set(program \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${VANTORIX_GAMES_DIR}/vantorix\")
  set(state \"\$ENV{DESTDIR}${VANTORIX_STATE_DIR}\")
  execute_process(COMMAND id -u OUTPUT_VARIABLE uid OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT uid STREQUAL 0)
    message(STATUS \"Not root: \${program} stays without setgid, \${state} is not made\")
  else()
    file(MAKE_DIRECTORY \"\${state}\")
    execute_process(COMMAND chown root:games \"\${state}\" COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND chmod 2775 \"\${state}\" COMMAND_ERROR_IS_FATAL ANY)
    if(EXISTS \"\${program}\")
      execute_process(COMMAND chown root:games \"\${program}\" COMMAND_ERROR_IS_FATAL ANY)
      execute_process(COMMAND chmod 2755 \"\${program}\" COMMAND_ERROR_IS_FATAL ANY)
    endif()
  endif()
" COMPONENT state)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vantorix)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT ${VANTORIX_MAINTAINER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "arcade space shooter")
set(CPACK_PACKAGE_DESCRIPTION
    "Fly one ship, or two side by side, near the bottom of the screen and shoot\n"
    "what comes down from above: asteroids that split when they are large,\n"
    "containers full of power-ups, and pirate ships that cross the screen firing\n"
    "at you. Two single-player modes, a two-player mode and three highscore tables\n"
    "shared by everyone on the computer.")
string(REPLACE ";" "" CPACK_PACKAGE_DESCRIPTION "${CPACK_PACKAGE_DESCRIPTION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_COMPONENTS_ALL game)
set(CPACK_DEBIAN_PACKAGE_NAME vantorix)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${VANTORIX_HOMEPAGE})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${packaging}/postinst ${packaging}/postrm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
