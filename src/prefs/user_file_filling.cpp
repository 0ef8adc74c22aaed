#include "prefs/user_file_filling.h"

#include "json/document.h"
#include "json/writer.h"

namespace zelutil::prefs {
namespace {

constexpr unsigned kListDepth = 1;
constexpr unsigned kEntryDepth = 2;

std::string& appendNewLine(std::string& text, unsigned depth) {
    text += '\n';
    return text.append(std::size_t{depth} * json::kIndent, ' ');
}

}  // namespace

UserFileFilling::UserFileFilling(const UserFileForm& form) : form_(form), whole_(form.text.has_value()) {
    ends_.reserve(form.depths.size());
    fillings_.reserve(form.text ? form.text->size() : 0);
}

void UserFileFilling::beginList() {
    const unsigned depth = form_.depths[ends_.size()];
    whole_ = whole_ && depth + kListDepth <= json::kMaximumDepth;
    if (depth != depth_) {
        layOutLines(depth);
    }
    hasEntries_ = false;
    fillings_ += '[';
}

void UserFileFilling::add(std::string_view name, std::string_view value) {
    whole_ = whole_ && depth_ + kEntryDepth <= json::kMaximumDepth;
    if (hasEntries_) {
        fillings_ += ',';
    }
    hasEntries_ = true;
    fillings_ += beforeEntry_;
    json::appendString(fillings_, name);
    fillings_ += ": ";
    json::appendString(fillings_, value);
    fillings_ += afterEntry_;
}

void UserFileFilling::endList() {
    if (hasEntries_) {
        fillings_ += afterEntries_;
    }
    fillings_ += ']';
    ends_.push_back(fillings_.size());
}

void UserFileFilling::put(json::View subManagerValue) {
    const auto text = json::prettyText(subManagerValue, form_.depths[ends_.size()]);
    whole_ = whole_ && text;
    fillings_ += text.value_or("");
    ends_.push_back(fillings_.size());
}

std::optional<std::string> UserFileFilling::take() const {
    if (!whole_ || form_.text->size() + fillings_.size() > json::kMaximumTextSize) {
        return std::nullopt;
    }
    std::string text;
    text.reserve(form_.text->size() + fillings_.size());
    std::size_t place = 0;
    for (const UserFileForm::Gap& gap : form_.gaps) {
        text.append(*form_.text, place, gap.place - place);
        text += fillingOf(gap.section);
        place = gap.place;
    }
    text.append(*form_.text, place);
    return text;
}

/// Sections of two depths often take turns, so the texts keep their memory.
void UserFileFilling::layOutLines(unsigned depth) {
    depth_ = depth;
    beforeEntry_.clear();
    appendNewLine(beforeEntry_, depth + kListDepth) += '{';
    appendNewLine(beforeEntry_, depth + kEntryDepth);
    afterEntry_.clear();
    appendNewLine(afterEntry_, depth + kListDepth) += '}';
    afterEntries_.clear();
    appendNewLine(afterEntries_, depth);
}

std::string_view UserFileFilling::fillingOf(std::size_t section) const {
    const std::size_t begin = section == 0 ? 0 : ends_[section - 1];
    return std::string_view(fillings_).substr(begin, ends_[section] - begin);
}

}  // namespace zelutil::prefs
