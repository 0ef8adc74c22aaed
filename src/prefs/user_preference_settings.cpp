// Nothing in the library implements this class. A DLL exports what a source of it has seen, and a host that compiles
// without optimisation takes the class's table of functions from there.
#include <zelutil/prefs/user_preference_settings.h>
