#ifndef ZELUTIL_COMMAND_SECTION_OWNERS_H
#define ZELUTIL_COMMAND_SECTION_OWNERS_H

#include <map>
#include <string>

#include "command/sections.h"
#include "json/view.h"

namespace zelutil::command {

/// Tells from the defaults whom the sections of a user's file belong to. A catalogue tells it too, but takes more time
/// to read than all else that the doctor does: see "doctor on 10,000 settings" of bench/doctor_bench.cpp.
class SectionOwners {
public:
    explicit SectionOwners(json::View defaults);

    SectionOwner ownerOf(const std::string& attributePath) const;

private:
    std::map<std::string, prefs::SubManagerType> owners_;
};

}  // namespace zelutil::command

#endif
