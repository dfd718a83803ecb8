# The library of PostgreSQL's clients. CMake's own module asks for headers of the server as well.
find_path(LIBPQ_INCLUDE_DIR libpq-fe.h PATH_SUFFIXES postgresql REQUIRED)
find_library(LIBPQ_LIBRARY pq REQUIRED)
mark_as_advanced(LIBPQ_INCLUDE_DIR LIBPQ_LIBRARY)
add_library(PostgreSQL::libpq UNKNOWN IMPORTED)
set_target_properties(
  PostgreSQL::libpq PROPERTIES IMPORTED_LOCATION ${LIBPQ_LIBRARY}
                               INTERFACE_INCLUDE_DIRECTORIES ${LIBPQ_INCLUDE_DIR})
