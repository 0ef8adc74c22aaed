// Files without a fault, and what tells a file.
#include <gtest/gtest.h>

#include <string>

#include "command/lint_findings.h"

namespace zelutil::lint {
namespace {

TEST(LintCleanFiles, TheShippedExamplesHaveNoFinding) {
    for (const char* const product : {"product", "qt_board/product"}) {
        const std::string defaults = shippedFile(product, "tessel_settings.cfg");
        EXPECT_EQ(kindOfText(defaults), FileKind::Defaults);
        EXPECT_EQ(told(lint(defaults)), "") << product;
        const std::string facets = shippedFile(product, "facet_settings.cfg");
        EXPECT_EQ(kindOfText(facets), FileKind::Facets);
        EXPECT_EQ(told(lint(facets)), "") << product;
    }
}

TEST(LintCleanFiles, TheUsersFileOfTheExamplesHasNoFinding) {
    const std::string user =
        test::readTextFile(ZELUTIL_TEST_PROJECT "/examples/home/pcbenv/tessel/tessel_settings.cfg");
    EXPECT_EQ(kindOfText(user), FileKind::User);
    EXPECT_EQ(told(check(user, shippedFile("product", "tessel_settings.cfg"))), "");
}

struct Kind {
    const char* text;
    FileKind kind;
};

TEST(LintCleanFiles, FilesAreToldApartByTheirContent) {
    const Kind rows[] = {
        {R"({"meta": [{"header": "A", "attribute": "a", "tclCommand": "t", "defaultsettings": []}]})",
         FileKind::Defaults},
        {R"({"meta": [{"header": "A", "attribute": "a", "overriddensettings": []}]})", FileKind::User},
        // One misspelt member makes no other file.
        {R"({"meta": [{"header": "A", "attribute": "a", "tclCommand": "t", "defaultsetings": []}]})",
         FileKind::Defaults},
        {R"({"mta": [{"header": "A", "attribute": "a", "overriddensettings": []}]})", FileKind::User},
        {R"({"meta": [{"header": "A", "attribute": "a"}]})", FileKind::User},
        // Neither do settings that are called as members of facet files.
        {R"({"meta": [{"header": "A", "attribute": "a", "overriddensettings": [{"type": "x", "facets": "y"}]}]})",
         FileKind::User},
        {R"({"meta": [{"header": "A", "attribute": "a", "overridensettings": [{"type": "x", "facets": "y"}]}]})",
         FileKind::User},
        {R"({"meta": [{"header": "A", "attribute": "a", "tclCommand": "t", "submanagerId": 7, "defaultsettings":
             {"facets": [{"name": "x", "type": "y"}, {"name": "z", "type": "y"}]}}]})",
         FileKind::Defaults},
        {R"({"meta": [{"header": "A", "facts": [{"name": "x", "type": "y"}]}]})", FileKind::Facets},
        {R"({"meta": [{"header": "A"}]})", FileKind::Facets},
        {R"({"meta": [{"header": "A", "facets": []}]})", FileKind::Facets},
        {R"({"actions": [{"id": 1, "context": "c", "command": "c"}]})", FileKind::Actions},
        {R"({"actions": [{"id": 1, "shortcut": "F1"}]})", FileKind::UserActions},
        {R"([{"actions": [{"id": 1, "shortcut": "F1"}]}])", FileKind::UserActions},
        {R"([{"actions": []}])", FileKind::UserActions},
        // Actions inside a section make no file of actions.
        {R"({"meta": [{"header": "A", "attribute": "a", "overriddensettings": [{"actions": []}]}]})", FileKind::User},
        {"{}", FileKind::Unknown},
        {"[]", FileKind::Unknown},
        {"3", FileKind::Unknown},
        {"{", FileKind::Unknown},
    };
    for (const Kind& row : rows) {
        EXPECT_EQ(kindOfText(row.text), row.kind) << row.text;
    }
}

}  // namespace
}  // namespace zelutil::lint
