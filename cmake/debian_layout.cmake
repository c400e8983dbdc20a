# Run by CPack between installing and packing: what only Debian wants, and one time for every file, so that the same
# sources make the same package. SOURCE_DATE_EPOCH says which; without it, the time of the change log does.
set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr)
set(source ${CPACK_KESTREL_SOURCE})
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  file(TIMESTAMP ${source}/CHANGELOG.md epoch "%s" UTC)
  set(ENV{SOURCE_DATE_EPOCH} ${epoch})
endif()
execute_process(COMMAND date -u -R -d @$ENV{SOURCE_DATE_EPOCH} OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE)

set(doc ${root}/share/doc/${CPACK_PACKAGE_NAME})
file(MAKE_DIRECTORY ${doc})
file(COPY_FILE ${source}/CHANGELOG.md ${doc}/changelog)
file(WRITE ${doc}/changelog.Debian "${CPACK_PACKAGE_NAME} (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; urgency=medium

  * Version ${CPACK_PACKAGE_VERSION}: see the change log beside this file.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
file(STRINGS ${source}/LICENSE licence)
set(copyright "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: Kestrel
Source: ${CPACK_DEBIAN_PACKAGE_HOMEPAGE}

Files: *
Copyright: 2026 The Kestrel developers
License: Expat
")
foreach(line IN LISTS licence)
  string(STRIP "${line}" line)
  if(line STREQUAL "")
    set(line .)
  endif()
  string(APPEND copyright " ${line}\n")
endforeach()
file(WRITE ${doc}/copyright "${copyright}")

file(GLOB compressed ${root}/share/man/man1/*.1)
execute_process(COMMAND gzip -9nf ${compressed} ${doc}/changelog ${doc}/changelog.Debian COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND find ${root} -type d -exec chmod 755 {} + COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND find ${doc} -type f -exec chmod 644 {} + COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND find ${root} -exec touch -h -d @$ENV{SOURCE_DATE_EPOCH} {} + COMMAND_ERROR_IS_FATAL ANY)
