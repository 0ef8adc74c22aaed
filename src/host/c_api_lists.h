#ifndef ZELUTIL_HOST_C_API_LISTS_H
#define ZELUTIL_HOST_C_API_LISTS_H

#include <zelutil/host/c_api.h>

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Records that the C interface hands out, together with the C++ values that their pointers lead into.
namespace zelutil::host::c {

inline int countOf(std::size_t size) { return static_cast<int>(size); }

/// Texts as C sees them. What `view` returns is valid as long as this, and follows it nowhere else: neither copied nor
/// moved.
class Names {
public:
    /// Takes any range of strings over.
    template <typename Range>
    explicit Names(const Range& texts) : texts_(texts.begin(), texts.end()) {
        pointers_.reserve(texts_.size());
        for (const std::string& text : texts_) {
            pointers_.push_back(text.c_str());
        }
    }
    Names(const Names&) = delete;
    Names& operator=(const Names&) = delete;
    ~Names() = default;

    zelutil_names view() const { return {countOf(pointers_.size()), pointers_.data()}; }

private:
    std::vector<std::string> texts_;
    std::vector<const char*> pointers_;
};

/// A list of records as C sees it: `List` has the members `count` and `items`, and `Entry` is a `Record` that owns what
/// it points to and is made of a `Source`.
template <typename List, typename Record, typename Entry>
class Records {
public:
    template <typename Source>
    explicit Records(std::vector<Source> sources) {
        entries_.reserve(sources.size());
        pointers_.reserve(sources.size());
        for (Source& source : sources) {
            entries_.push_back(std::make_unique<Entry>(std::move(source)));
            pointers_.push_back(entries_.back().get());
        }
    }

    List view() const { return {countOf(pointers_.size()), pointers_.data()}; }

private:
    std::vector<std::unique_ptr<Entry>> entries_;
    std::vector<const Record*> pointers_;
};

/// Something that is handed out by itself: a `View`, which C sees, and the `Contents` that it leads into.
template <typename View, typename Contents>
class HandedOut : public View {
public:
    template <typename... Sources>
    explicit HandedOut(Sources&&... sources) : View(), contents_(std::forward<Sources>(sources)...) {
        static_cast<View&>(*this) = contents_.view();
    }
    HandedOut(const HandedOut&) = delete;
    HandedOut& operator=(const HandedOut&) = delete;
    ~HandedOut() = default;

    /// Frees what `new HandedOut` has made. Null does nothing.
    static void free(const View* view) { delete static_cast<const HandedOut*>(view); }

private:
    Contents contents_;
};

}  // namespace zelutil::host::c

#endif
