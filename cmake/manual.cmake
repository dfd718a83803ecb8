# Writes a manual page with the tables of a database in it, as the program itself tells them:
#   cmake -DPAGE=... -DPROGRAM=.../brantiwell-database -DRESULT=... -P manual.cmake
execute_process(COMMAND ${PROGRAM} tables --man OUTPUT_VARIABLE TABLES COMMAND_ERROR_IS_FATAL ANY)
string(STRIP "${TABLES}" TABLES)
configure_file(${PAGE} ${RESULT} @ONLY)
