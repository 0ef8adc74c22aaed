#include <zelutil/enums/named_enum.h>

namespace Smart::Enum {

int IRawMap::LookupValue(const char* name) const { return RawLookup(name); }

}  // namespace Smart::Enum
