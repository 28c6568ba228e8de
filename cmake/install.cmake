# Where Debian expects things, and the package velaenc_VERSION_ARCH.deb (scripts/make-deb).
include(GNUInstallDirs)
set(docs ${CMAKE_INSTALL_DATADIR}/doc/velaenc)

install(TARGETS velaenc-program carrier-check-program)
install(FILES README.md CHANGELOG.md docs/guide.md docs/metadata-file.md docs/carrier-format.md
              docs/architecture.md
        DESTINATION ${docs})
install(DIRECTORY docs/examples DESTINATION ${docs} USE_SOURCE_PERMISSIONS
        PATTERN __pycache__ EXCLUDE)

find_program(GZIP gzip REQUIRED)
foreach(page velaenc carrier-check)
  set(packed ${CMAKE_BINARY_DIR}/man/${page}.1.gz)
  add_custom_command(OUTPUT ${packed}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/man
    COMMAND ${GZIP} -9nc ${PROJECT_SOURCE_DIR}/docs/man/${page}.1 > ${packed}
    DEPENDS docs/man/${page}.1)
  list(APPEND packed_pages ${packed})
endforeach()
add_custom_target(man-pages ALL DEPENDS ${packed_pages})
install(FILES ${packed_pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

# bash looks for a file with the name of the command, zsh for the commands that a file names.
set(completions ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
foreach(command velaenc carrier-check)
  install(FILES completion/velaenc.bash DESTINATION ${completions} RENAME ${command})
endforeach()
install(FILES completion/_velaenc DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME velaenc)
set(CPACK_PACKAGE_CONTACT "the velaenc developers <velaenc@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "encoder of immersive speaker layouts into smaller carriers")
set(CPACK_PACKAGE_DESCRIPTION
"velaenc takes one 24-bit mono WAV file per channel of a layout such as 9.1 or 13.1
and writes a carrier such as 5.1 or 7.1 that plain equipment plays, with a record in
its low bits from which a decoder takes it apart again. carrier-check verifies
carriers and rebuilds the channels.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "gnuplot-nox, sox, parallel, slurm-wlm")
include(CPack)
