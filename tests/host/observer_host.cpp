// A host in small whose subscriptions last until it ends, or longer:
//
//     observer_host static    a static object that was there before the first use of the library
//     observer_host local     a function-local static object, which goes first
//     observer_host function  an exit function ends them and begins new ones
//     observer_host never     nobody ends them
#include <cstdlib>
#include <memory>
#include <optional>

#include "host/observers_of_all.h"

namespace {

using zelutil::test::changeAll;
using zelutil::test::ObserversOfAll;
using zelutil::test::say;

/// Says that it goes, and has all told before and after its observers do.
struct Holder {
    ~Holder() {
        if (observers) {
            say("end");
            changeAll(2);
            observers.reset();
            changeAll(3);
        }
    }

    std::optional<ObserversOfAll> observers;
};

Holder staticHolder;

void renew() {
    say("end");
    changeAll(2);
    staticHolder.observers.reset();
    changeAll(3);
    const ObserversOfAll again;
    changeAll(4);
}

}  // namespace

int main(int, char** arguments) {
    const std::string who = arguments[1];
    if (who == "local") {
        static Holder localHolder;
        localHolder.observers.emplace();
    } else if (who == "never") {
        static const ObserversOfAll* const kept = new ObserversOfAll;
        static_cast<void>(kept);
    } else {
        staticHolder.observers.emplace();
    }
    if (who == "function") {
        std::atexit(renew);
    }
    changeAll(1);
    return 0;
}
