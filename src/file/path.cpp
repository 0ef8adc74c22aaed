#include <zelutil/file/path.h>

#include <cstring>
#include <optional>
#include <utility>

#include "file/path_text.h"
#include "platform/files.h"

namespace ZelU {
namespace File {
namespace {

std::string orEmpty(const char* text) { return text == nullptr ? std::string() : std::string(text); }

}  // namespace

Path::Path(const char* dir, const char* name) {
    // Kept deliberately: without a directory there is no path, even when the name is a whole path by itself. A
    // directory that a look-up did not find must not make the name a file of the current directory.
    if (dir == nullptr || *dir == '\0') {
        return;
    }
    text_ = dir;
    if (name != nullptr) {
        text_ += '/';
        text_ += name;
    }
    fix(0);
}

Path::Path(const std::string& text) : text_(text) { fix(0); }

Path::Path(const char* text) : text_(orEmpty(text)) { fix(0); }

Path::Path(Path&& other) noexcept
    : text_(std::move(other.text_)),
      hasSpace_(std::exchange(other.hasSpace_, false)),
      absolute_(std::exchange(other.absolute_, false)) {
    other.text_.clear();
}

Path& Path::operator=(Path&& other) noexcept {
    // By way of another object, so that a path moved to itself stays.
    Path taken(std::move(other));
    text_.swap(taken.text_);
    hasSpace_ = taken.hasSpace_;
    absolute_ = taken.absolute_;
    return *this;
}

Path& Path::operator=(const char* text) {
    if (text == nullptr || *text == '\0') {
        return *this = Path();
    }
    // In an object of its own: the text may lie in this one's, which stays as it is where memory runs out.
    Path path;
    // Kept deliberately: the memory of the current directory in front stays, and so a relative text assigned to such a
    // path stays relative: its file is looked for in what is the current directory by then.
    path.absolute_ = absolute_;
    path.text_ = text;
    path.fix(0);
    return *this = std::move(path);
}

Path& Path::operator+=(const char* component) {
    if (component != nullptr) {
        *this = *this + component;
    }
    return *this;
}

Path& Path::operator+=(const std::string& component) { return *this += component.c_str(); }

Path Path::operator+(const char* component) const {
    if (component == nullptr) {
        return *this;
    }
    Path joined;
    joined.hasSpace_ = hasSpace_;
    joined.absolute_ = absolute_;
    const std::size_t length = std::strlen(component);
    joined.text_.reserve(text_.size() + 1 + length);
    joined.text_ += text_;
    joined.text_ += '/';
    joined.text_.append(component, length);
    joined.fix(text_.size());
    return joined;
}

Path Path::operator+(const std::string& component) const { return *this + component.c_str(); }

bool Path::operator==(const Path& other) const { return text_ == other.text_; }

bool Path::operator!=(const Path& other) const { return !(*this == other); }

bool Path::operator<(const Path& other) const { return text_ < other.text_; }

Path::operator const char*() const { return text_.c_str(); }

bool Path::Empty() const { return text_.empty(); }

std::string Path::Name() const {
    const std::size_t separator = text_.rfind(zelutil::file::kSeparator);
    return separator == std::string::npos ? text_ : text_.substr(separator + 1);
}

Path Path::Parent() const {
    // Kept deliberately: the parent is a path of its own, made from text. That of a text that was left relative gets
    // the current directory in front; only one without a separator is copied with what it remembers.
    const std::size_t separator = text_.rfind(zelutil::file::kSeparator);
    if (separator == std::string::npos) {
        return *this;
    }
    Path parent;
    parent.text_ = std::string(text_, 0, separator);
    parent.fix(0);
    return parent;
}

std::string Path::Extension() const {
    const std::string name = Name();
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos ? std::string() : name.substr(dot + 1);
}

bool Path::Exists() const { return !Empty() && zelutil::platform::fileStatus(text_.c_str()).has_value(); }

bool Path::IsDirectory() const {
    const auto status = zelutil::platform::fileStatus(text_.c_str());
    return status && status->directory;
}

bool Path::IsExecutable() const {
    const auto status = zelutil::platform::fileStatus(text_.c_str());
    return status && status->ownerExecute;
}

bool Path::IsWriteable() const {
    const auto status = zelutil::platform::fileStatus(text_.c_str());
    return status && status->ownerWrite;
}

std::int64_t Path::Size() const {
    const auto status = zelutil::platform::fileStatus(text_.c_str());
    return status ? status->size : 0;
}

std::string Path::GetURI(bool noQuotes) const {
    const std::string quote = hasSpace_ && !noQuotes ? "\"" : "";
    std::string uri = quote + "file:///" + text_;
    for (char& c : uri) {
        c = c == zelutil::file::kSeparator ? '/' : c;
    }
    return uri + quote;
}

std::string Path::GetPath4Shell() const { return hasSpace_ ? '"' + text_ + '"' : text_; }

void Path::fix(std::size_t start) {
    zelutil::file::PathFlags flags{hasSpace_, absolute_};
    zelutil::file::normalise(text_, flags, start, zelutil::platform::namedCurrentDirectory);
    hasSpace_ = flags.hasSpace;
    absolute_ = flags.absolute;
}

}  // namespace File
}  // namespace ZelU
