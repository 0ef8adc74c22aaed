# Installs the build tree `build` to `first` and moves the result to `second`, whatever was there before.
file(REMOVE_RECURSE "${first}" "${second}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${build}" --prefix "${first}" COMMAND_ERROR_IS_FATAL ANY)
file(RENAME "${first}" "${second}")
