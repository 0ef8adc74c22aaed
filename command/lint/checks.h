#ifndef ZELUTIL_COMMAND_LINT_CHECKS_H
#define ZELUTIL_COMMAND_LINT_CHECKS_H

#include <functional>

#include "command/lint/report.h"
#include "command/sections.h"
#include "json/view.h"

/// The checks of the kinds of files, one source file each.
namespace zelutil::lint {

/// Returns whom a section belongs to.
using OwnerOfSection = std::function<command::SectionOwner(const prefs::VisitedSection& visited)>;

/// Checks that no two sections have one attribute path.
void checkRepeatedPaths(json::View root, const OwnerOfSection& ownerOf, Report& report);

void checkDefaults(json::View root, Report& report);

/// Without the defaults (an absent value) only the form is checked, and what needs no look at them.
void checkUser(json::View root, json::View defaults, Report& report);

/// Returns the object with the shipped actions: of the defaults, or of a file of its own.
json::View shippedActions(json::View root);

/// Checks the object with the shipped actions.
void checkActions(json::View object, Report& report);

/// Checks the user's text for the actions; the object with the shipped ones may be absent.
void checkUserActions(json::View value, json::View shipped, Report& report);

void checkFacets(json::View root, Report& report);

}  // namespace zelutil::lint

#endif
