# What is installed beside the programs, and the two Debian packages. cmake/package builds and
# checks them.

set(shared ${CMAKE_CURRENT_SOURCE_DIR}/share)
set(made ${CMAKE_BINARY_DIR}/packages)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(package_files)

# Compresses a file as Debian wants it, into the folder of the installation tree.
function(install_compressed source name destination component)
  add_custom_command(
    OUTPUT ${made}/${component}/${name}.gz
    COMMAND ${CMAKE_COMMAND} -E make_directory ${made}/${component}
    COMMAND gzip -9nc ${source} > ${made}/${component}/${name}.gz
    DEPENDS ${source}
    VERBATIM)
  install(FILES ${made}/${component}/${name}.gz DESTINATION ${destination} COMPONENT ${component})
  set(package_files ${package_files} ${made}/${component}/${name}.gz PARENT_SCOPE)
endfunction()

# A program's icon, drawn (SVG) and rendered for desktops that take pictures only.
find_program(RSVG_CONVERT rsvg-convert)
function(install_icon source name)
  set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
  install(FILES ${source} DESTINATION ${icons}/scalable/apps RENAME ${name}.svg)
  if(NOT RSVG_CONVERT)
    message(STATUS "Without rsvg-convert (librsvg2-bin) icons are installed as SVG only")
    return()
  endif()
  foreach(size 16 22 24 32 48 64 128 256 512)
    set(picture ${made}/icons/${size}/${name}.png)
    add_custom_command(
      OUTPUT ${picture}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${made}/icons/${size}
      COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} -o ${picture} ${source}
      DEPENDS ${source}
      VERBATIM)
    install(FILES ${picture} DESTINATION ${icons}/${size}x${size}/apps)
    list(APPEND package_files ${picture})
  endforeach()
  set(package_files ${package_files} PARENT_SCOPE)
endfunction()

install(FILES ${shared}/applications/brantiwell.desktop
              ${shared}/applications/brantiwell-review.desktop ${shared}/applications/myviewer.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${shared}/metainfo/com.fenmoor.brantiwell.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${shared}/mime/packages/myviewer.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
install(FILES ${shared}/brantiwell/start.html DESTINATION ${CMAKE_INSTALL_DATADIR}/brantiwell)
install(FILES ${shared}/bash-completion/completions/brantiwell-database
              ${shared}/bash-completion/completions/brantiwell-review
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
# The daily copy, on for every user; whoever does not work with the database makes none.
set(timer ${made}/brantiwell-backup.timer)
file(MAKE_DIRECTORY ${made})
file(CREATE_LINK ../brantiwell-backup.timer ${timer} SYMBOLIC)
install(FILES ${shared}/systemd/user/brantiwell-backup.service
              ${shared}/systemd/user/brantiwell-backup.timer DESTINATION lib/systemd/user)
install(FILES ${timer} DESTINATION lib/systemd/user/timers.target.wants)
install_icon(${CMAKE_CURRENT_SOURCE_DIR}/controls/icons/Brantiwell.svg brantiwell)
install_icon(${shared}/icons/hicolor/scalable/apps/myviewer.svg myviewer)
# Guide and operator's page for web browsers. They lie in the build as they are installed, where F1
# looks for the guide.
set(html ${CMAKE_BINARY_DIR}/share/doc/brantiwell/html)
execute_process(COMMAND /usr/bin/python3 -c "import markdown" RESULT_VARIABLE no_markdown
                OUTPUT_QUIET ERROR_QUIET)
if(no_markdown)
  message(STATUS "Without python3-markdown the guide is not made for F1")
else()
  foreach(page guide operator)
    set(source ${CMAKE_CURRENT_SOURCE_DIR}/docs/${page}.md)
    add_custom_command(
      OUTPUT ${html}/${page}.html
      COMMAND ${CMAKE_COMMAND} -E make_directory ${html}
      COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/cmake/html ${source} ${html}/${page}.html
      DEPENDS ${source} ${CMAKE_CURRENT_SOURCE_DIR}/cmake/html
      VERBATIM)
    list(APPEND package_files ${html}/${page}.html)
    install(FILES ${html}/${page}.html DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/brantiwell/html)
  endforeach()
  file(COPY docs/images DESTINATION ${html} FILES_MATCHING PATTERN "*.png")
  install(DIRECTORY docs/images DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/brantiwell/html
          FILES_MATCHING PATTERN "*.png")
endif()
add_custom_command(
  OUTPUT ${made}/brantiwell-database.1
  COMMAND ${CMAKE_COMMAND} -DPAGE=${shared}/man/man1/brantiwell-database.1
          -DPROGRAM=$<TARGET_FILE:brantiwell-database> -DRESULT=${made}/brantiwell-database.1
          -P ${CMAKE_CURRENT_SOURCE_DIR}/cmake/manual.cmake
  DEPENDS ${shared}/man/man1/brantiwell-database.1 brantiwell-database
          ${CMAKE_CURRENT_SOURCE_DIR}/cmake/manual.cmake
  VERBATIM)
install_compressed(${made}/brantiwell-database.1 brantiwell-database.1
                   ${CMAKE_INSTALL_MANDIR}/man1 brantiwell)
foreach(program brantiwell brantiwell-review myviewer)
  install_compressed(${shared}/man/man1/${program}.1 ${program}.1 ${CMAKE_INSTALL_MANDIR}/man1
                     brantiwell)
endforeach()

set(packages brantiwell)
if(TARGET brantiwell-webpane)
  list(APPEND packages webpane)
endif()
configure_file(${shared}/debian/changelog.in ${made}/changelog.Debian @ONLY)
foreach(component ${packages})
  set(name brantiwell)
  if(component STREQUAL webpane)
    set(name brantiwell-webpane)
  endif()
  set(doc ${CMAKE_INSTALL_DATADIR}/doc/${name})
  install(FILES ${shared}/debian/copyright DESTINATION ${doc} COMPONENT ${component})
  install_compressed(${made}/changelog.Debian changelog.Debian ${doc} ${component})
  configure_file(${shared}/debian/lintian-overrides.in ${made}/overrides/${name} @ONLY)
  install(FILES ${made}/overrides/${name} DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
          COMPONENT ${component})
endforeach()
add_custom_target(package_files ALL DEPENDS ${package_files})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "Fenmoor Systems")
set(CPACK_PACKAGE_CONTACT "Fenmoor Systems <support@fenmoor.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL ${packages})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_BRANTIWELL_PACKAGE_NAME brantiwell)
set(CPACK_DEBIAN_BRANTIWELL_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_BRANTIWELL_PACKAGE_RECOMMENDS "fonts-liberation, libnotify-bin, libpq5")
set(CPACK_DEBIAN_BRANTIWELL_PACKAGE_SUGGESTS "brantiwell-webpane, postgresql-client")
set(CPACK_DEBIAN_BRANTIWELL_PACKAGE_CONTROL_EXTRA ${shared}/debian/postinst)
set(CPACK_COMPONENT_BRANTIWELL_DESCRIPTION
    "charges of a physician's office
Brantiwell keeps the charges of a physician's office with their diagnoses and
procedures, posts them to the insurance companies in numbered lots, prints
them for the biller and archives them. Around the charges stand the register
of patients and the catalogues that a charge is built from.
.
The package holds the program, a second one that only reads (what is missing,
who is due, what happened), the viewer of their reports and the tool that
creates and checks databases.")

set(CPACK_DEBIAN_WEBPANE_PACKAGE_NAME brantiwell-webpane)
set(CPACK_DEBIAN_WEBPANE_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_WEBPANE_PACKAGE_DEPENDS
    "brantiwell (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(CPACK_COMPONENT_WEBPANE_DESCRIPTION
    "web pages in Brantiwell
Lets Brantiwell show web pages in its window. Everything else in the program
works without it.")
include(CPack)
