# Install rules and the Debian package.
#
#   bin/                    tavrel-tool, tavrel-host
#   libexec/tavrel/         tavrel-report (a child program, started by its
#                           parent) and tavrel-report-reader (tavrel-tool's)
#   share/tavrel/resources/ the default resource files
#   share/man/man1, man8    the manual pages, made from --help by help2man
#   share/doc/tavrel/       copyright and changelog, as Debian wants them
#
# The programs find their companions in libexec/tavrel/ beside bin/ when
# installed, and in the build tree otherwise (base/program_path.h).

# Installing (and packing) takes what is built; scripts/package builds all
# first, and the package test runs after the build.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

install(TARGETS tavrel-tool tavrel-host RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS tavrel-report tavrel-report-reader
        RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/tavrel)
install(DIRECTORY ${TAVREL_RESOURCE_DIR}/ DESTINATION ${CMAKE_INSTALL_DATADIR}/tavrel/resources
        FILES_MATCHING PATTERN "*.png" PATTERN "*.gif" PATTERN "*.css"
        PATTERN "CMakeFiles" EXCLUDE)

# Manual pages: help2man (found in the top CMakeLists.txt) runs each
# program's --help and --version.
if(HELP2MAN)
  set(man_dir ${PROJECT_BINARY_DIR}/man)
  set(man_pages "")
  foreach(page IN ITEMS
          "tavrel-tool|1|command-line tool of the Tavrel report generator"
          "tavrel-host|1|stand-in parent, scheduler and database of the Tavrel report generator"
          "tavrel-report|8|report generator of the Tavrel monitoring server")
    string(REPLACE "|" ";" fields "${page}")
    list(GET fields 0 program)
    list(GET fields 1 section)
    list(GET fields 2 name)
    set(page_file ${man_dir}/${program}.${section})
    set(out ${page_file}.gz)
    add_custom_command(
      OUTPUT ${out}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${man_dir}
      COMMAND ${HELP2MAN} --no-info --no-discard-stderr --section=${section} --name=${name}
              --output=${page_file} $<TARGET_FILE:${program}>
      COMMAND gzip -9 -n -f ${page_file}
      DEPENDS ${program}
      COMMENT "Manual page of ${program}")
    list(APPEND man_pages ${out})
    install(FILES ${out} DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section})
  endforeach()
  add_custom_target(tavrel_man_pages ALL DEPENDS ${man_pages})
else()
  message(WARNING "help2man not found: no manual pages (apt-get install help2man)")
endif()

# Debian wants both files, the changelog gzipped.
set(doc_dir ${PROJECT_BINARY_DIR}/doc)
configure_file(${PROJECT_SOURCE_DIR}/cmake/copyright ${doc_dir}/copyright COPYONLY)
string(TIMESTAMP changelog_date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(${PROJECT_SOURCE_DIR}/cmake/changelog.in ${doc_dir}/changelog @ONLY)
add_custom_command(
  OUTPUT ${doc_dir}/changelog.gz
  COMMAND gzip -9 -n -c ${doc_dir}/changelog > ${doc_dir}/changelog.gz
  DEPENDS ${doc_dir}/changelog)
add_custom_target(tavrel_changelog ALL DEPENDS ${doc_dir}/changelog.gz)
install(FILES ${doc_dir}/copyright ${doc_dir}/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/tavrel)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tavrel)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Tavrel developers <tavrel@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "report generator of a server-monitoring product")
# The extended description; CPack puts the summary above it and indents it.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "The report process of the Tavrel monitoring server reads the stored\nmonitoring data, computes availability and statistics for a period,\nrenders the reports to HTML and text with charts and mails them.\n.\ntavrel-host runs it on one machine with a database of its own, for\ntrying the product; tavrel-tool reads and exports stored reports.")
set(CPACK_DEBIAN_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
