#include "prefs/section_walk.h"

#include "prefs/joined_names.h"

namespace zelutil::prefs {
namespace {

class SectionWalk {
public:
    explicit SectionWalk(SectionVisit visit) : visit_(visit) {}

    void walk(json::View array) {
        for (const json::View element : array.elements()) {
            if (const auto names = sectionNames(element)) {
                walkSection(element, *names);
            }
        }
    }

private:
    void walkSection(json::View element, const SectionNames& names) {
        const JoinedNames::Level headers(headers_, names.header);
        const JoinedNames::Level attributes(attributes_, names.attribute);
        visit_(VisitedSection{element, names.header, headers.outer(), attributes_.text(), level_});
        ++level_;
        walk(element.member(kChildren));
        --level_;
    }

    SectionVisit visit_;
    JoinedNames headers_;
    JoinedNames attributes_;
    unsigned level_ = 0;
};

}  // namespace

void walkSections(json::View array, SectionVisit visit) { SectionWalk(visit).walk(array); }

}  // namespace zelutil::prefs
