#ifndef ZELUTIL_JSON_VIEW_H
#define ZELUTIL_JSON_VIEW_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "json/tape.h"

namespace zelutil::json {

class Elements;
class Members;

/// A value in a document, to be read; valid as long as the document. A view of nothing is "absent": a member that is
/// not there is, and whatever is asked of an absent value is absent, false or empty in its turn, as it is when the
/// value has another type. So a path into a document needs no test on the way:
///
///     for (const View section : document.root().member("meta").elements()) ...
class View {
public:
    /// Absent.
    View() = default;

    // For this folder only: nobody else names the tape.
    View(const Tape& tape, std::uint32_t place) : tape_(&tape), place_(place) {}
    const Tape* tape() const { return tape_; }
    std::uint32_t place() const { return place_; }

    /// False when absent. The value null is a value.
    explicit operator bool() const { return tape_ != nullptr; }

    /// Whether both are one and the same value of a document, or both absent; equal values are not looked at.
    bool isSame(View other) const { return tape_ == other.tape_ && place_ == other.place_; }

    bool isArray() const { return is(Node::Kind::Array); }
    bool isObject() const { return is(Node::Kind::Object); }
    /// Whether this is the literal `true`.
    bool isTrue() const { return is(Node::Kind::True); }
    /// Whether this is one of the literals `true` and `false`.
    bool isTruth() const { return isTrue() || is(Node::Kind::False); }

    /// The bytes of a string, zeros inside included, valid as long as the document.
    std::optional<std::string_view> text() const;

    /// An integer that fits 32 bits with a sign. 3.0 is no integer.
    std::optional<std::int32_t> integer() const;

    /// The first member of an object with that name.
    View member(std::string_view name) const;

    /// The elements of an array, in order.
    Elements elements() const;

    /// The members of an object, in order.
    Members members() const;

private:
    bool is(Node::Kind kind) const { return tape_ != nullptr && (*tape_)[place_].kind() == kind; }
    bool isText() const { return is(Node::Kind::Text) || is(Node::Kind::EscapedText); }

    const Tape* tape_ = nullptr;
    std::uint32_t place_ = 0;
};

/// The elements of an array.
class Elements {
public:
    class Iterator {
    public:
        Iterator() = default;
        Iterator(const Tape* tape, std::uint32_t place) : tape_(tape), place_(place) {}

        View operator*() const { return {*tape_, place_}; }
        Iterator& operator++() {
            place_ = tape_->behind(place_);
            return *this;
        }
        bool operator==(Iterator other) const { return place_ == other.place_; }
        bool operator!=(Iterator other) const { return place_ != other.place_; }

    private:
        const Tape* tape_ = nullptr;
        std::uint32_t place_ = 0;
    };

    Elements() = default;
    Elements(Iterator begin, Iterator end) : begin_(begin), end_(end) {}

    Iterator begin() const { return begin_; }
    Iterator end() const { return end_; }
    bool empty() const { return begin_ == end_; }
    /// Counts them, from the first to the last.
    std::size_t size() const;

private:
    Iterator begin_;
    Iterator end_;
};

struct Member {
    std::string_view key;
    View value;
};

/// The members of an object.
class Members {
public:
    class Iterator {
    public:
        Iterator() = default;
        /// The place is that of the key.
        Iterator(const Tape* tape, std::uint32_t place) : tape_(tape), place_(place) {}

        Member operator*() const { return {tape_->text(place_), View(*tape_, place_ + 1)}; }
        Iterator& operator++() {
            place_ = tape_->behind(place_ + 1);
            return *this;
        }
        bool operator==(Iterator other) const { return place_ == other.place_; }
        bool operator!=(Iterator other) const { return place_ != other.place_; }

    private:
        const Tape* tape_ = nullptr;
        std::uint32_t place_ = 0;
    };

    Members() = default;
    Members(Iterator begin, Iterator end) : begin_(begin), end_(end) {}

    Iterator begin() const { return begin_; }
    Iterator end() const { return end_; }

private:
    Iterator begin_;
    Iterator end_;
};

inline std::optional<std::string_view> View::text() const {
    return isText() ? std::optional<std::string_view>(tape_->text(place_)) : std::nullopt;
}

inline View View::member(std::string_view name) const {
    for (const Member member : members()) {
        if (member.key == name) {
            return member.value;
        }
    }
    return {};
}

inline Elements View::elements() const {
    return isArray() ? Elements({tape_, place_ + 1}, {tape_, tape_->behind(place_)}) : Elements();
}

inline Members View::members() const {
    return isObject() ? Members({tape_, place_ + 1}, {tape_, tape_->behind(place_)}) : Members();
}

}  // namespace zelutil::json

#endif
