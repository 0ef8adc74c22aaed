// A host's plug-in with observers. What it offers to the test are C functions, so that the test itself links nothing of
// the library.
#include <optional>

#include "host/observers_of_all.h"
#include "support/module_export.h"

namespace {

std::optional<zelutil::test::ObserversOfAll> kept;

}  // namespace

/// Begins to observe until the plug-in goes.
ZELUTIL_TEST_EXPORT void observeUntilUnload() { kept.emplace(); }

/// Begins to observe until `endObserving`.
ZELUTIL_TEST_EXPORT void* beginObserving() { return new zelutil::test::ObserversOfAll; }

ZELUTIL_TEST_EXPORT void endObserving(void* observers) {
    delete static_cast<zelutil::test::ObserversOfAll*>(observers);
}

ZELUTIL_TEST_EXPORT void changeEverything(int round) { zelutil::test::changeAll(round); }
