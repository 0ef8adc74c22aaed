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
        visit_(VisitedSection{element, names.header, headers.outer(), attributes_.text()});
        walk(element.member(kChildren));
    }

    SectionVisit visit_;
    JoinedNames headers_;
    JoinedNames attributes_;
};

}  // namespace

void walkSections(json::View array, SectionVisit visit) { SectionWalk(visit).walk(array); }

}  // namespace zelutil::prefs
