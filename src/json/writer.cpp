#include "json/writer.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <type_traits>

#include "json/document.h"

namespace zelutil::json {
namespace {

constexpr unsigned kIndent = 4;

/// RapidJSON writes to its own StringBuffer with vector instructions, and then leaves 0x1A to 0x1F unescaped; to a
/// buffer of another type it writes correctly.
struct BufferAllocator : rapidjson::CrtAllocator {};
using Buffer = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, BufferAllocator>;

/// A writer that refuses what the parser would not take back.
template <typename Base>
class BoundedWriter : public Base {
public:
    using Base::Base;

    // A value that is copied calls them by these names.
    // NOLINTBEGIN(readability-identifier-naming)
    bool StartObject() { return ++depth_ <= kMaximumDepth && Base::StartObject(); }
    bool EndObject(rapidjson::SizeType count = 0) {
        --depth_;
        return Base::EndObject(count);
    }
    bool StartArray() { return ++depth_ <= kMaximumDepth && Base::StartArray(); }
    bool EndArray(rapidjson::SizeType count = 0) {
        --depth_;
        return Base::EndArray(count);
    }
    // NOLINTEND(readability-identifier-naming)

private:
    unsigned depth_ = 0;
};

constexpr char kEmpty[] = "";

/// The characters of a text, which RapidJSON wants not to be null.
const char* charactersOf(std::string_view text) { return text.empty() ? kEmpty : text.data(); }

rapidjson::SizeType sizeOf(std::string_view text) { return static_cast<rapidjson::SizeType>(text.size()); }

bool isTooLong(std::string_view text) { return text.size() > kMaximumTextSize; }

}  // namespace

template <Layout kLayout>
struct Writer<kLayout>::Target {
    using Base =
        std::conditional_t<kLayout == Layout::Pretty, rapidjson::PrettyWriter<Buffer>, rapidjson::Writer<Buffer>>;

    Target() : writer(buffer) {
        if constexpr (kLayout == Layout::Pretty) {
            writer.SetIndent(' ', kIndent);
        }
    }

    Buffer buffer;
    BoundedWriter<Base> writer;
};

template <Layout kLayout>
Writer<kLayout>::Writer() : target_(std::make_unique<Target>()) {}

template <Layout kLayout>
Writer<kLayout>::~Writer() = default;

template <Layout kLayout>
void Writer<kLayout>::beginObject() {
    whole_ = whole_ && target_->writer.StartObject();
}

template <Layout kLayout>
void Writer<kLayout>::endObject() {
    whole_ = whole_ && target_->writer.EndObject();
}

template <Layout kLayout>
void Writer<kLayout>::beginArray() {
    whole_ = whole_ && target_->writer.StartArray();
}

template <Layout kLayout>
void Writer<kLayout>::endArray() {
    whole_ = whole_ && target_->writer.EndArray();
}

template <Layout kLayout>
void Writer<kLayout>::key(std::string_view name) {
    whole_ = whole_ && !isTooLong(name) && target_->writer.Key(charactersOf(name), sizeOf(name));
}

template <Layout kLayout>
void Writer<kLayout>::text(std::string_view value) {
    whole_ = whole_ && !isTooLong(value) && target_->writer.String(charactersOf(value), sizeOf(value));
}

template <Layout kLayout>
void Writer<kLayout>::integer(std::int32_t value) {
    whole_ = whole_ && target_->writer.Int(value);
}

template <Layout kLayout>
void Writer<kLayout>::truth(bool value) {
    whole_ = whole_ && target_->writer.Bool(value);
}

template <Layout kLayout>
void Writer<kLayout>::copy(View value) {
    whole_ = whole_ && value && value.value_->Accept(target_->writer);
}

template <Layout kLayout>
std::optional<std::string> Writer<kLayout>::take() {
    const Buffer& buffer = target_->buffer;
    if (!whole_ || !target_->writer.IsComplete() || buffer.GetSize() > kMaximumTextSize) {
        return std::nullopt;
    }
    return std::string(buffer.GetString(), buffer.GetSize());
}

template class Writer<Layout::Compact>;
template class Writer<Layout::Pretty>;

std::optional<std::string> compactText(View value) {
    CompactWriter writer;
    writer.copy(value);
    return writer.take();
}

}  // namespace zelutil::json
