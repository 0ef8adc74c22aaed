#include <zelutil/util/smart_pointer.h>

namespace Smart {

// Defined here, the destructors give each class one vtable and one type that the library shares with its hosts.

Exceptions::Base::~Base() = default;
Exceptions::Misuse::~Misuse() = default;

PointerExceptions::Base::~Base() = default;
PointerExceptions::UninitializedAccess::~UninitializedAccess() = default;

}  // namespace Smart
