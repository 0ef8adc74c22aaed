// Two versions of the product, with other defaults each, save into one file. Values mean the same to both.
#include <gtest/gtest.h>

#include "host/settings_process.h"
#include "host/settings_texts.h"

namespace zelutil::test {
namespace {

TEST(SettingsVersions, AnEarlierSectionOfTheNextVersionTakesNoValueOver) {
    FileText file;
    SettingsProcess(fileWith({defined("edit", {"grid"})}), file).save(file, {{"grid", "5"}});
    EXPECT_EQ(entriesOf(file.value()), "edit: [{\"edit::grid\":\"5\"}]\n");
    const Catalogue next = catalogueOfTexts(fileWith({defined("view", {"grid"}), defined("edit", {"grid"})}), *file);
    EXPECT_EQ(valueOf(next, "edit::grid"), "5");
    EXPECT_EQ(valueOf(next, "view::grid"), "1");
}

const std::string kOlder = fileWith({defined("display", {"grid"}), defined("edit", {"snap"})});
const std::string kNewer = fileWith({defined("display", {"grid", "snap"}), defined("edit", {"snap"})});

TEST(SettingsVersions, TheOlderOneReadsItsOwnValueAndKeepsTheOther) {
    FileText file;
    SettingsProcess(kNewer, file).save(file, {{"display::snap", "5"}, {"edit::snap", "6"}});
    SettingsProcess older(kOlder, file);
    EXPECT_EQ(valueOf(older.catalogue(), "edit::snap"), "6");
    older.save(file, {{"display::grid", "2"}});
    EXPECT_EQ(entriesOf(file.value()),
              "display: [{\"display::grid\":\"2\"},{\"display::snap\":\"5\"}]\nedit: [{\"edit::snap\":\"6\"}]\n");
}

TEST(SettingsVersions, TheOlderOneTakesNoValueOfASettingItLacks) {
    FileText file;
    SettingsProcess(kNewer, file).save(file, {{"display::snap", "5"}});
    SettingsProcess older(kOlder, file);
    EXPECT_EQ(valueOf(older.catalogue(), "edit::snap"), "1");
    older.save(file, {{"display::grid", "2"}, {"edit::snap", "7"}});
    const Catalogue newer = catalogueOfTexts(kNewer, *file);
    EXPECT_EQ(valueOf(newer, "display::snap"), "5");
    EXPECT_EQ(valueOf(newer, "edit::snap"), "7");
    EXPECT_EQ(valueOf(newer, "display::grid"), "2");
}

}  // namespace
}  // namespace zelutil::test
