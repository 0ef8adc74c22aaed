// A notification of many observers: through the application server and the subscriptions of `zelutil::host`, and by a
// plain loop over a vector of functions, which none of them could leave meanwhile.
#include "support/comparison.h"

#include <zelutil/host/observers.h>
#include <zelutil/server/server.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <vector>

namespace {

constexpr std::size_t kObservers = 100;
constexpr int kNotifications = 1000;
constexpr std::size_t kVisits = 100;

/// Adds up all that the observers are told.
std::uint64_t sum = 0;

void add(int appId, bool) { sum += static_cast<std::uint64_t>(appId); }

std::vector<zelutil::host::Subscription> subscribed() {
    std::vector<zelutil::host::Subscription> subscriptions;
    for (std::size_t number = 0; number < kObservers; ++number) {
        subscriptions.push_back(zelutil::host::onActiveApplicationChanged(add));
    }
    return subscriptions;
}

void compareNotifications() {
    using Functions = std::vector<std::function<void(int appId, bool editorSwitch)>>;
    zelutil::bench::Comparison("100 observers are told", kNotifications)
        .zelutil([] {
            static const auto subscriptions = subscribed();
            sum = 0;
            for (int appId = 1; appId <= kNotifications; ++appId) {
                ZelU::Marl::Server::getInstance().setActiveAppId(appId, false);
            }
            return sum;
        })
        .peer("vector<function>", [functions = Functions(kObservers, add)] {
            sum = 0;
            for (int appId = 1; appId <= kNotifications; ++appId) {
                for (const auto& function : functions) {
                    function(appId, false);
                }
            }
            return sum;
        });
}

/// One comes to the others and goes.
void compareVisits() {
    using Functions = std::list<std::function<void(int appId, bool editorSwitch)>>;
    zelutil::bench::Comparison("an observer comes and goes", kVisits)
        .zelutil([] {
            std::uint64_t visits = 0;
            for (std::size_t visit = 0; visit < kVisits; ++visit) {
                const auto subscription = zelutil::host::onActiveApplicationChanged(add);
                visits += subscription ? 1 : 0;
            }
            return visits;
        })
        .peer("list<function>", [functions = Functions(kObservers, add)]() mutable {
            std::uint64_t visits = 0;
            for (std::size_t visit = 0; visit < kVisits; ++visit) {
                const auto place = functions.insert(functions.end(), add);
                visits += *place ? 1 : 0;
                functions.erase(place);
            }
            return visits;
        });
}

}  // namespace

void zelutil::bench::addComparisons() {
    compareNotifications();
    compareVisits();
}
