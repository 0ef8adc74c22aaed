#include "command/lint/object_form.h"

#include <algorithm>
#include <bitset>

namespace zelutil::lint {
namespace {

bool isFrom(json::View value, int least) {
    const auto number = value.integer();
    return number && *number >= least;
}

bool isOfType(json::View value, Type type) {
    switch (type) {
        case Type::Text:
            return value.text().has_value();
        case Type::TextNotEmpty:
            return !value.text().value_or(std::string_view()).empty();
        case Type::Integer:
            return value.integer().has_value();
        case Type::IntegerFrom0:
            return isFrom(value, 0);
        case Type::IntegerFrom1:
            return isFrom(value, 1);
        case Type::Truth:
            return value.isTruth();
        case Type::Array:
            return value.isArray();
        case Type::Any:
            break;
    }
    return true;
}

const char* nameOf(Type type) {
    switch (type) {
        case Type::Text:
            return "a string";
        case Type::TextNotEmpty:
            return "a string that is not empty";
        case Type::Integer:
            return "an integer of 32 bits, without a decimal point";
        case Type::IntegerFrom0:
            return "an integer, 0 or more, without a decimal point";
        case Type::IntegerFrom1:
            return "an integer, 1 or more, without a decimal point";
        case Type::Truth:
            return "true or false";
        case Type::Array:
            return "an array";
        case Type::Any:
            break;
    }
    return "a value";
}

std::vector<std::string> keysOf(const ObjectForm& form) {
    std::vector<std::string> keys;
    for (const MemberForm& member : form.members) {
        keys.emplace_back(member.key);
    }
    return keys;
}

/// Goes through the members of an object and remembers which of the form were there. Large files have hundreds of
/// thousands of objects, so none of their members is searched for a second time.
class MemberChecks {
public:
    MemberChecks(json::View object, const ObjectForm& form, Report& report)
        : object_(object), form_(form), report_(report) {}

    void run() {
        for (const json::Member& member : object_.members()) {
            check(member);
        }
        for (std::size_t place = 0; place < form_.members.size(); ++place) {
            if (form_.members[place].need == Need::Required && !isThere_.test(place)) {
                report_.add(Rule::MissingMember, object_,
                            "The member " + inQuotes(form_.members[place].key) + " is missing, without which " +
                                form_.what + " is not read.");
            }
        }
    }

private:
    /// No form has more.
    static constexpr std::size_t kMostMembers = 32;

    /// Most objects have their members in the order of the form.
    std::size_t placeOf(std::string_view key) const {
        const auto& members = form_.members;
        if (next_ < members.size() && members[next_].key == key) {
            return next_;
        }
        const auto known = std::find_if(members.begin(), members.end(),
                                        [&](const MemberForm& candidate) { return candidate.key == key; });
        return static_cast<std::size_t>(known - members.begin());
    }

    void check(const json::Member& member) {
        const std::size_t place = placeOf(member.key);
        if (place == form_.members.size()) {
            report_.addAtKey(Rule::UnknownMember, member.value, member.key,
                             "The member " + inQuotes(member.key) + " means nothing in " + form_.what + '.',
                             nearestHint(member.key, keysOf(form_)));
            return;
        }
        next_ = place + 1;
        if (isThere_.test(place)) {
            report_.addAtKey(Rule::RepeatedMember, member.value, member.key,
                             "The member " + inQuotes(member.key) + " stands twice, and the first counts (" +
                                 report_.lineOf(object_.member(member.key)) + ").");
            return;
        }
        isThere_.set(place);
        const MemberForm& known = form_.members[place];
        checkType(member.value, member.key, known.type, report_, known.ofAnotherType);
    }

    json::View object_;
    const ObjectForm& form_;
    Report& report_;
    /// The place behind that of the last member.
    std::size_t next_ = 0;
    std::bitset<kMostMembers> isThere_;
};

}  // namespace

void checkType(json::View value, std::string_view key, Type type, Report& report, const char* sentence) {
    if (value && !isOfType(value, type)) {
        const std::string blank = *sentence == '\0' ? "" : " ";
        report.add(Rule::WrongType, value, inQuotes(key) + " must be " + nameOf(type) + '.' + blank + sentence);
    }
}

bool checkObject(json::View value, const ObjectForm& form, Report& report) {
    if (!value.isObject()) {
        report.add(Rule::WrongType, value, std::string("Here ") + form.what + " must stand, which is an object.");
        return false;
    }
    MemberChecks(value, form, report).run();
    return true;
}

}  // namespace zelutil::lint
