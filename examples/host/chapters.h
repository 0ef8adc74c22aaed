#ifndef ZELUTIL_EXAMPLES_HOST_CHAPTERS_H
#define ZELUTIL_EXAMPLES_HOST_CHAPTERS_H

/// The chapters of the demonstration, in the order in which they are shown. Each prints what it finds on standard
/// output.

/// Where the installation tree and the user's files were found.
void showPlaces();

/// Settings by full and by bare name, the user's values beside the defaults.
void showSettings();

/// The catalogue of actions and what the user changed in it.
void showActions();

#endif
