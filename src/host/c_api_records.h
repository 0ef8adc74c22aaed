#ifndef ZELUTIL_HOST_C_API_RECORDS_H
#define ZELUTIL_HOST_C_API_RECORDS_H

#include <zelutil/host/actions.h>
#include <zelutil/host/c_api.h>
#include <zelutil/host/result.h>
#include <zelutil/host/settings.h>
#include <zelutil/host/start.h>

#include <memory>
#include <string>

#include "host/c_api_lists.h"

/// The records of `zelutil::host` as those of the C interface. Each owns the C++ record that its texts belong to, and
/// is therefore neither copied nor moved.
namespace zelutil::host::c {

/// A record of C made of one of C++. `fill` is an overload for each kind.
template <typename Record, typename Source>
class Entry : public Record {
public:
    explicit Entry(Source source) : Record(), source_(std::move(source)) { fill(*this, source_); }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;
    ~Entry() = default;

private:
    Source source_;
};

void fill(zelutil_action& record, const ActionInfo& source);
void fill(zelutil_warning& record, const StartWarning& source);
void fill(zelutil_not_restored& record, const NotRestored& source);
void fill(zelutil_conflict& record, const Conflict& source);

/// A setting with the names in it.
class SettingEntry : public zelutil_setting {
public:
    explicit SettingEntry(SettingInfo source);
    SettingEntry(const SettingEntry&) = delete;
    SettingEntry& operator=(const SettingEntry&) = delete;
    ~SettingEntry() = default;

private:
    SettingInfo source_;
    Names bareNames_;
};

using Settings = Records<zelutil_setting_list, zelutil_setting, SettingEntry>;
using Actions = Records<zelutil_action_list, zelutil_action, Entry<zelutil_action, ActionInfo>>;
using Warnings = Records<zelutil_warning_list, zelutil_warning, Entry<zelutil_warning, StartWarning>>;
using NotRestoredList =
    Records<zelutil_not_restored_list, zelutil_not_restored, Entry<zelutil_not_restored, NotRestored>>;
using Conflicts = Records<zelutil_conflict_list, zelutil_conflict, Entry<zelutil_conflict, Conflict>>;

/// A text as C sees it.
class Text {
public:
    explicit Text(std::string text) : text_(std::move(text)) {}
    zelutil_text view() const { return {text_.c_str()}; }

private:
    std::string text_;
};

using TextHandedOut = HandedOut<zelutil_text, Text>;

}  // namespace zelutil::host::c

#endif
