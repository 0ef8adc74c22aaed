#include "command/world/identity.h"

#include "command/system/console.h"
#include "command/world/bundled_world.h"
#include "platform/environment.h"

namespace zelutil::command::world {

Identity identityInForce() {
    const Manifest* const bundled = manifestInForce();
    const Account account = bundled == nullptr ? command::account() : bundled->account;
    Identity identity;
    identity.words = {account.user, account.host, account.host.substr(0, account.host.find('.'))};
    for (const char* const name : {"USER", "USERNAME", "LOGNAME", "HOSTNAME", "COMPUTERNAME"}) {
        identity.words.insert(platform::environment(name).value_or(""));
    }
    for (const char* const name : {"HOMEDRIVE", "HOMEPATH", "HOME", "USERPROFILE"}) {
        identity.homes += platform::environment(name).value_or("") + '/';
    }
    return identity;
}

}  // namespace zelutil::command::world
