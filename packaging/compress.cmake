# Before a package is packed: pages of the manual and changelogs are compressed, as Debian has them.
set(share ${CPACK_TEMPORARY_DIRECTORY}/*/usr/share)
file(GLOB texts ${share}/man/man*/* ${share}/doc/*/changelog*)
execute_process(COMMAND gzip -9nf ${texts} COMMAND_ERROR_IS_FATAL ANY)
