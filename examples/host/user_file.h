#ifndef ZELUTIL_EXAMPLES_HOST_USER_FILE_H
#define ZELUTIL_EXAMPLES_HOST_USER_FILE_H

#include <string>

/// The text of the user's preference file; empty when there is none.
std::string readUserFile();

#endif
