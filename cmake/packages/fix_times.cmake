# Before it packs, cpack runs this: what was built just now gets the time that SOURCE_DATE_EPOCH names, where it is set.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(
        COMMAND find "${CPACK_TEMPORARY_DIRECTORY}" -exec touch --no-dereference "--date=@$ENV{SOURCE_DATE_EPOCH}" "{}" +
        COMMAND_ERROR_IS_FATAL ANY)
endif()
