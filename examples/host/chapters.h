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

/// Rebinds shortcuts under observation, changes settings, saves both and shows what that did to the user's file.
void editAndSave();

/// What a process started after that finds.
void showReadBack();

/// Facets by group and name.
void showFacets();

/// Two editors are registered, and the user goes from one to the other.
void switchApplications();

/// Enumerations of the constraint panels, and one of the host's own, by value and by name.
void showEnumerations();

#endif
