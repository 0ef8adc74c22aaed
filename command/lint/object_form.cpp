#include "command/lint/object_form.h"

#include <algorithm>

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

void checkMember(const json::Member& member, json::View object, const ObjectForm& form, Report& report) {
    const auto known = std::find_if(form.members.begin(), form.members.end(),
                                    [&](const MemberForm& candidate) { return candidate.key == member.key; });
    if (known == form.members.end()) {
        report.addAtKey(Rule::UnknownMember, member.value, member.key,
                        "The member " + inQuotes(member.key) + " means nothing in " + form.what + '.',
                        nearestHint(member.key, keysOf(form)));
        return;
    }
    if (!member.value.isSame(object.member(member.key))) {
        report.addAtKey(Rule::RepeatedMember, member.value, member.key,
                        "The member " + inQuotes(member.key) + " stands twice, and the first counts (" +
                            report.lineOf(object.member(member.key)) + ").");
        return;
    }
    checkType(member.value, member.key, known->type, report, known->ofAnotherType);
}

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
    for (const json::Member& member : value.members()) {
        checkMember(member, value, form, report);
    }
    for (const MemberForm& member : form.members) {
        if (member.need == Need::Required && !value.member(member.key)) {
            report.add(
                Rule::MissingMember, value,
                "The member " + inQuotes(member.key) + " is missing, without which " + form.what + " is not read.");
        }
    }
    return true;
}

}  // namespace zelutil::lint
