#ifndef ZELUTIL_JSON_VIEW_H
#define ZELUTIL_JSON_VIEW_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

// Vector instructions nearly halve the time of a parse. The parser then reads whole aligned blocks of 16 bytes, past
// the end of the text too; Document pads its copy for that.
#if defined(__SSE2__) || defined(_M_X64)
#define RAPIDJSON_SSE2
#endif
#include <rapidjson/document.h>

namespace zelutil::json {

/// Says how numbers that are no integers are read and written.
enum class Numbers {
    Fast,   ///< Up to a few units in the last place off.
    Exact,  ///< So that reading and writing them again and again changes none.
};

class Elements;
class LocatedDocument;
class Members;
enum class Layout;
template <Layout>
class Writer;

/// A value in a document, to be read; valid as long as the document. A view of nothing is "absent": a member that is
/// not there is, and whatever is asked of an absent value is absent, false or empty in its turn, as it is when the
/// value has another type. So a path into a document needs no test on the way:
///
///     for (const View section : document.root().member("meta").elements()) ...
class View {
public:
    /// Absent.
    View() = default;

    /// For this folder only: nobody else names the parser.
    explicit View(const rapidjson::Value& value) : value_(&value) {}

    /// False when absent. The value null is a value.
    explicit operator bool() const { return value_ != nullptr; }

    /// Whether both are one and the same value of a document, or both absent; equal values are not looked at.
    bool isSame(View other) const { return value_ == other.value_; }

    bool isArray() const { return value_ != nullptr && value_->IsArray(); }
    bool isObject() const { return value_ != nullptr && value_->IsObject(); }
    /// Whether this is the literal `true`.
    bool isTrue() const { return value_ != nullptr && value_->IsTrue(); }
    /// Whether this is one of the literals `true` and `false`.
    bool isTruth() const { return value_ != nullptr && value_->IsBool(); }

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
    friend class LocatedDocument;
    template <Layout>
    friend class Writer;

    const rapidjson::Value* value_ = nullptr;
};

/// The elements of an array.
class Elements {
public:
    class Iterator {
    public:
        Iterator() = default;
        explicit Iterator(const rapidjson::Value* element) : element_(element) {}

        View operator*() const { return View(*element_); }
        Iterator& operator++() {
            ++element_;
            return *this;
        }
        bool operator==(Iterator other) const { return element_ == other.element_; }
        bool operator!=(Iterator other) const { return element_ != other.element_; }

    private:
        friend class Elements;

        const rapidjson::Value* element_ = nullptr;
    };

    Elements() = default;
    Elements(Iterator begin, Iterator end) : begin_(begin), end_(end) {}

    Iterator begin() const { return begin_; }
    Iterator end() const { return end_; }
    bool empty() const { return begin_ == end_; }
    std::size_t size() const { return static_cast<std::size_t>(end_.element_ - begin_.element_); }

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
        explicit Iterator(rapidjson::Value::ConstMemberIterator member) : member_(member) {}

        Member operator*() const {
            return {{member_->name.GetString(), member_->name.GetStringLength()}, View(member_->value)};
        }
        Iterator& operator++() {
            ++member_;
            return *this;
        }
        bool operator==(Iterator other) const { return member_ == other.member_; }
        bool operator!=(Iterator other) const { return member_ != other.member_; }

    private:
        rapidjson::Value::ConstMemberIterator member_;
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
    if (value_ == nullptr || !value_->IsString()) {
        return std::nullopt;
    }
    return std::string_view(value_->GetString(), value_->GetStringLength());
}

inline std::optional<std::int32_t> View::integer() const {
    return value_ != nullptr && value_->IsInt() ? std::optional<std::int32_t>(value_->GetInt()) : std::nullopt;
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
    return isArray() ? Elements(Elements::Iterator(value_->Begin()), Elements::Iterator(value_->End())) : Elements();
}

inline Members View::members() const {
    return value_ != nullptr && value_->IsObject()
               ? Members(Members::Iterator(value_->MemberBegin()), Members::Iterator(value_->MemberEnd()))
               : Members();
}

}  // namespace zelutil::json

#endif
