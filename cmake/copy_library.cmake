# cmake -D LIBRARY=file -D DIRECTORY=directory -P copy_library.cmake: copies a file, and where that is a link, all of the
# links up to the file they lead to.
file(COPY "${LIBRARY}" DESTINATION "${DIRECTORY}" FOLLOW_SYMLINK_CHAIN)
